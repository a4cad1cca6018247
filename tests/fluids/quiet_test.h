#pragma once

#include <gtest/gtest.h>

#include <string>

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

/// Derivative of f at x by a central difference of width step.
template <class F>
double slope(const F& f, double x, double step) {
  return (f(x + step) - f(x - step)) / (2 * step);
}
