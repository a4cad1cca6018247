#include "runtime/lookup.h"

namespace {

enum class EndRule { clip, extrapolate };

double fraction_in(const double* bp, std::uint32_t left, double u) {
  return (u - bp[left]) / (bp[left + 1] - bp[left]);
}

template <EndRule ends>
LookupPlace find(double u, const double* bp, std::uint32_t maxIndex) {
  if (bp[0] >= u) return {0, ends == EndRule::clip ? 0.0 : fraction_in(bp, 0, u)};
  if (bp[maxIndex] > u) {
    std::uint32_t left = 0, right = maxIndex, mid = maxIndex >> 1U;
    while (right - left > 1) {
      (bp[mid] > u ? right : left) = mid;
      mid = (left + right) >> 1U;
    }
    return {left, fraction_in(bp, left, u)};
  }
  return {maxIndex - 1, ends == EndRule::clip ? 1.0 : fraction_in(bp, maxIndex - 1, u)};
}

}  // namespace

LookupPlace look1_binlcpw_place(double u, const double* bp, std::uint32_t maxIndex) {
  return find<EndRule::clip>(u, bp, maxIndex);
}

double look1_at(LookupPlace place, const double* table) {
  return (table[place.left + 1] - table[place.left]) * place.fraction + table[place.left];
}

double look1_binlcpw(double u, const double* bp, const double* table, std::uint32_t maxIndex) {
  return look1_at(find<EndRule::clip>(u, bp, maxIndex), table);
}

double look1_binlxpw(double u, const double* bp, const double* table, std::uint32_t maxIndex) {
  return look1_at(find<EndRule::extrapolate>(u, bp, maxIndex), table);
}

double look2_binlxpw(double u0, double u1, const double* bp0, const double* bp1, const double* table,
                     const std::uint32_t maxIndex[2], std::uint32_t stride) {
  const LookupPlace at0 = find<EndRule::extrapolate>(u0, bp0, maxIndex[0]);
  const LookupPlace at1 = find<EndRule::extrapolate>(u1, bp1, maxIndex[1]);
  const double* row = table + at1.left * stride;
  const double y0 = look1_at(at0, row);
  const double y1 = look1_at(at0, row + stride);
  return (y1 - y0) * at1.fraction + y0;
}

void BINARYSEARCH_real_T(std::uint32_t* left, std::uint32_t* right, double u, const double* data, std::uint32_t iHi) {
  *left = 0;
  *right = iHi;
  if (data[0] >= u) {
    *right = 0;
  } else if (u >= data[iHi]) {
    *left = iHi;
  } else {
    while (*right - *left >= 2) {
      const std::uint32_t mid = (*left + *right) >> 1U;
      (data[mid] > u ? *right : *left) = mid;
    }
  }
}

void LookUp_real_T_real_T(double* y, const double* table, double u, const double* data, std::uint32_t iHi) {
  std::uint32_t left = 0, right = 0;
  BINARYSEARCH_real_T(&left, &right, u, data, iHi);
  const double lambda = data[right] > data[left] ? (u - data[left]) / (data[right] - data[left]) : 0.0;
  *y = (table[right] - table[left]) * lambda + table[left];
}

void LookUp_real_T_real_T_SAT(double* y, const double* table, double u, const double* data, std::uint32_t iHi) {
  LookUp_real_T_real_T(y, table, u, data, iHi);
}

void LookUpEven_real_T_real_T(double* y, const double* table, double u, double valueLo, std::uint32_t iHi,
                              double spacing) {
  if (valueLo >= u) {
    *y = table[0];
    return;
  }
  const double a = u - valueLo;
  const double q = a / spacing;
  const bool beyond_uint32 = q >= 4294967296.0;
  const std::uint32_t i = !beyond_uint32 && q >= 0.0 ? static_cast<std::uint32_t>(q) : 0U;
  if (beyond_uint32 || i >= iHi) {
    *y = table[iHi];
    return;
  }
  const double lambda = (a - i * spacing) / spacing;
  *y = (table[i + 1] - table[i]) * lambda + table[i];
}

int rt_GetLookupIndex(const double* x, int xlen, double u) {
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

double rt_Lookup(const double* x, int xlen, double u, const double* y) {
  const int i = rt_GetLookupIndex(x, xlen, u);
  const double slope = (y[i + 1] - y[i]) / (x[i + 1] - x[i]);
  return (u - x[i]) * slope + y[i];
}

double rt_Lookup2D_Normal(const double* xVals, int numX, const double* yVals, int numY, const double* zVals, double x,
                          double y) {
  const int i = rt_GetLookupIndex(xVals, numX, x);
  const int j = rt_GetLookupIndex(yVals, numY, y);
  const double* lower_row = zVals + numX * j;
  const double* upper_row = lower_row + numX;
  const double d = x - xVals[i];
  const double w = xVals[i + 1] - xVals[i];
  const double bottom = d * ((lower_row[i + 1] - lower_row[i]) / w) + lower_row[i];
  const double upper = d * ((upper_row[i + 1] - upper_row[i]) / w) + upper_row[i];
  return (y - yVals[j]) * ((upper - bottom) / (yVals[j + 1] - yVals[j])) + bottom;
}
