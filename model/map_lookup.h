#pragma once

/// Lookups of the plant's maps that extrapolate beyond the ends.

#include "model/tables/maps.h"
#include "runtime/lookup.h"

template <std::size_t n>
double interpolate(const Curve<n>& curve, double x) {
  return rt_Lookup(curve.x.data(), static_cast<int>(n), x, curve.y.data());
}

template <std::size_t nx, std::size_t ny>
double interpolate(const Map<nx, ny>& map, double x, double y) {
  return rt_Lookup2D_Normal(map.x.data(), static_cast<int>(nx), map.y.data(), static_cast<int>(ny), map.z.data(), x, y);
}

/// The interval of a value among breakpoints; maps that have them in common share it.
template <std::size_t n>
constexpr LookupInterval interval(const std::array<double, n>& breakpoints, double u) {
  return rt_LookupInterval(breakpoints.data(), static_cast<int>(n), u);
}

/// A map's value in intervals of its own breakpoints.
template <std::size_t nx, std::size_t ny>
double interpolate(const Map<nx, ny>& map, LookupInterval x, LookupInterval y) {
  return rt_Lookup2D_at(x, y, map.z.data(), static_cast<int>(nx));
}
