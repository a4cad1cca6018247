#include "model/tables/drive_cycle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

namespace {

constexpr auto& kSpeed = kDriveCycle_km_h;

TEST(DriveCycle, KnotsFollowEachOtherFromTheFirstToTheLastSecond) {
  EXPECT_EQ(std::begin(kDriveCycleKnots)->time, 0);
  EXPECT_EQ(std::rbegin(kDriveCycleKnots)->time, 1998);
  const auto not_later = [](const DriveCycleKnot& a, const DriveCycleKnot& b) { return a.time >= b.time; };
  const auto fault = std::adjacent_find(std::begin(kDriveCycleKnots), std::end(kDriveCycleKnots), not_later);
  EXPECT_TRUE(fault == std::end(kDriveCycleKnots)) << "no later knot after " << fault->time << " s";
}

TEST(DriveCycle, PassesTheTellingSpeeds) {
  constexpr std::pair<std::size_t, double> kTelling[] = {{0, 0.0},       {100, 28.96},   {250, 32.51},  {500, 16.7},
                                                         {750, 36.39},   {1000, 63.84},  {1250, 67.05}, {1500, 36.45},
                                                         {1650, 122.96}, {1802, 133.31}, {1900, 0.0},   {1998, 0.0}};
  for (const auto& [second, speed_km_h] : kTelling) EXPECT_EQ(kSpeed[second], speed_km_h) << "at " << second << " s";
}

TEST(DriveCycle, SamplesAreTheDoublesNearestToHundredths) {
  for (const double v : kSpeed) EXPECT_EQ(v, std::round(v * 100.0) / 100.0);
}

TEST(DriveCycle, StandsFor432SamplesAndPeaksOnce) {
  EXPECT_EQ(std::count(kSpeed.begin(), kSpeed.end(), 0.0), 432);
  EXPECT_EQ(*std::min_element(kSpeed.begin(), kSpeed.end()), 0.0);
  EXPECT_EQ(*std::max_element(kSpeed.begin(), kSpeed.end()), 133.31);
  EXPECT_EQ(std::count(kSpeed.begin(), kSpeed.end(), 133.31), 1);
}

TEST(DriveCycle, Covers23Point6Kilometres) {
  const double trapezoids = std::accumulate(kSpeed.begin(), kSpeed.end(), 0.0) - 0.5 * (kSpeed.front() + kSpeed.back());
  EXPECT_NEAR(trapezoids / 3600.0, 23.60, 0.05);
}

// What a heavy car does without effort: a brisk start in town, gentler above 60 km/h, never an emergency stop.
TEST(DriveCycle, CanBeDriven) {
  for (std::size_t t = 1; t < kSpeed.size(); ++t) {
    const double acceleration = (kSpeed[t] - kSpeed[t - 1]) / 3.6;  // m/s2
    EXPECT_GE(acceleration, -1.5) << "at " << t << " s";
    EXPECT_LE(acceleration, std::max(kSpeed[t], kSpeed[t - 1]) > 60.0 ? 1.0 : 1.7) << "at " << t << " s";
  }
}

}  // namespace
