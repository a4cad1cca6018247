#pragma once

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <string>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"

namespace Vk_fl_prop_lib {

/// A test that fails on any line on standard error which it has not asked for.
class QuietTest : public ::testing::Test {
 protected:
  void SetUp() override { testing::internal::CaptureStderr(); }
  void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

  /// What was written on standard error since the start or the last call.
  static std::string complaints() {
    std::string text = testing::internal::GetCapturedStderr();
    testing::internal::CaptureStderr();
    return text;
  }
};

inline const std::string kNoConvergence = "Warning : Thermodynamical function <invertion_x> dit not converge\n\n";

/// Derivative of f at x by a central difference of width step.
template <class F>
double slope(const F& f, double x, double step) {
  return (f(x + step) - f(x - step)) / (2 * step);
}

/// The values of a vector as the array that a block carries.
template <class Vector>
constexpr auto values(const Vector& vector) {
  return std::bit_cast<std::array<double, sizeof(Vector) / sizeof(double)>>(vector);
}

inline CBrine brine(const BrineVector& vector, double concentration) {
  CBrine result(vector);
  result.SetConc(concentration);
  return result;
}

// A made-up oil with every coefficient in use.
// clang-format off
inline constexpr LiquidVector kOil = {
    .kappa = 6e-10, .tMin = 200, .tMax = 450, .pRef = 1e5, .tRef = 290, .hRef = 5000, .sRef = 20,
    .rho = {1000, -0.3, -4e-4, 2e-7, -3e-10, 4e-13}, .cp = {1500, 2, -1e-3, 3e-6, -2e-9, 1e-12},
    .lambda = {0.15, -1e-4, 1e-7, -2e-10, 1e-13, -1e-16}, .mu = {2, -0.03, 4e-5, -1e-8, 1e-11, -1e-14}};
// clang-format on

}  // namespace Vk_fl_prop_lib
