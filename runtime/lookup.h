#pragma once

#include <cstdint>

/// Table lookups. They differ in how they treat the ends of a table and in which direction a hit on a breakpoint falls.
///
/// Breakpoints must rise strictly; nothing tests that. A table holds one value a breakpoint; the length argument is the
/// last valid index (maxIndex, iHi), except in rt_GetLookupIndex, rt_Lookup and rt_Lookup2D_Normal, which take the
/// number of breakpoints. None keeps a state or allocates.

/// Interpolates; beyond the ends the end values hold. A not-a-number u answers the last value.
double look1_binlcpw(double u, const double* bp, const double* table, std::uint32_t maxIndex);

/// Interpolates; beyond the ends the line through the two outermost points goes on.
double look1_binlxpw(double u, const double* bp, const double* table, std::uint32_t maxIndex);

/// Interpolates in two dimensions with the end rule of look1_binlxpw in each.
/// @param table     element (i0, i1) lies at table[i1 * stride + i0]
/// @param maxIndex  last valid index of each dimension
double look2_binlxpw(double u0, double u1, const double* bp0, const double* bp1, const double* table,
                     const std::uint32_t maxIndex[2], std::uint32_t stride);

/// Breakpoints around u: left and right are neighbours inside the table, and both the end index beyond or at its ends.
void BINARYSEARCH_real_T(std::uint32_t* left, std::uint32_t* right, double u, const double* data, std::uint32_t iHi);

/// Interpolates into *y; beyond the ends the end values hold.
void LookUp_real_T_real_T(double* y, const double* table, double u, const double* data, std::uint32_t iHi);

/// The same function under the name that says so.
void LookUp_real_T_real_T_SAT(double* y, const double* table, double u, const double* data, std::uint32_t iHi);

/// Interpolates into *y over the evenly spaced points valueLo + i * spacing, i = 0 to iHi; beyond the ends the end
/// values hold. A not-a-number u answers a not-a-number.
void LookUpEven_real_T_real_T(double* y, const double* table, double u, double valueLo, std::uint32_t iHi,
                              double spacing);

/// Index i of the interval x[i] .. x[i + 1] of u, 0 to xlen - 2. A u that hits an inner breakpoint falls into the
/// interval above it when negative and into the interval below it otherwise.
constexpr int rt_GetLookupIndex(const double* x, int xlen, double u) {
  int top = xlen - 1;
  if (x[0] >= u) return 0;
  if (u >= x[top]) return top - 1;
  for (int bottom = 0;;) {
    const int i = (bottom + top) / 2;
    const bool too_high = u < 0.0 ? x[i] > u : x[i] >= u;
    const bool too_low = u < 0.0 ? u >= x[i + 1] : u > x[i + 1];
    if (too_high) {
      top = i - 1;
    } else if (too_low) {
      bottom = i + 1;
    } else {
      return i;
    }
  }
}

/// Interpolates y over x at u; extrapolates along the end intervals.
inline double rt_Lookup(const double* x, int xlen, double u, const double* y) {
  const int i = rt_GetLookupIndex(x, xlen, u);
  const double slope = (y[i + 1] - y[i]) / (x[i + 1] - x[i]);
  return (u - x[i]) * slope + y[i];
}

/// The interval of a value among breakpoints, as rt_GetLookupIndex finds it.
struct LookupInterval {
  int i;            ///< its index
  double d, width;  ///< distance of the value from the interval's start; width of the interval
};

constexpr LookupInterval rt_LookupInterval(const double* x, int xlen, double u) {
  const int i = rt_GetLookupIndex(x, xlen, u);
  return {i, u - x[i], x[i + 1] - x[i]};
}

/// rt_Lookup2D_Normal in two halves, for tables that share breakpoints: the value of a table in intervals of x and y.
inline double rt_Lookup2D_at(LookupInterval x, LookupInterval y, const double* zVals, int numX) {
  const double* lower_row = zVals + numX * y.i;
  const double* upper_row = lower_row + numX;
  const double bottom = x.d * ((lower_row[x.i + 1] - lower_row[x.i]) / x.width) + lower_row[x.i];
  const double upper = x.d * ((upper_row[x.i + 1] - upper_row[x.i]) / x.width) + upper_row[x.i];
  return y.d * ((upper - bottom) / y.width) + bottom;
}

/// Interpolates in two dimensions; extrapolates.
/// @param zVals  element (i, j) lies at zVals[i + numX * j]
inline double rt_Lookup2D_Normal(const double* xVals, int numX, const double* yVals, int numY, const double* zVals,
                                 double x, double y) {
  return rt_Lookup2D_at(rt_LookupInterval(xVals, numX, x), rt_LookupInterval(yVals, numY, y), zVals, numX);
}
