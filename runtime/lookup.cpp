#include "runtime/lookup.h"

namespace {

enum class EndRule { clip, extrapolate };

/// A place among breakpoints: the interval that starts at index left, and how far into it.
struct LookupPlace {
  std::uint32_t left;
  double fraction;
};

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

double look1_at(LookupPlace place, const double* table) {
  return (table[place.left + 1] - table[place.left]) * place.fraction + table[place.left];
}

}  // namespace

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
