#pragma once

#include <cstdint>

/// Table lookups. They differ in how they treat the ends of a table and in which direction a hit on a breakpoint falls.
///
/// Breakpoints must rise strictly; nothing tests that. A table holds one value a breakpoint; the length argument is the
/// last valid index (maxIndex, iHi), except in rt_GetLookupIndex, rt_Lookup and rt_Lookup2D_Normal, which take the
/// number of breakpoints. None keeps a state or allocates.

/// Interpolates; beyond the ends the end values hold. A not-a-number u answers the last value.
double look1_binlcpw(double u, const double* bp, const double* table, std::uint32_t maxIndex);

/// A place among breakpoints: the interval that starts at index left, and how far into it.
struct LookupPlace {
  std::uint32_t left;
  double fraction;
};

/// look1_binlcpw in two halves, for tables that share their breakpoints: where u lies, and a table's value there.
LookupPlace look1_binlcpw_place(double u, const double* bp, std::uint32_t maxIndex);
double look1_at(LookupPlace place, const double* table);

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
int rt_GetLookupIndex(const double* x, int xlen, double u);

/// Interpolates y over x at u; extrapolates along the end intervals.
double rt_Lookup(const double* x, int xlen, double u, const double* y);

/// Interpolates in two dimensions; extrapolates.
/// @param zVals  element (i, j) lies at zVals[i + numX * j]
double rt_Lookup2D_Normal(const double* xVals, int numX, const double* yVals, int numY, const double* zVals, double x,
                          double y);
