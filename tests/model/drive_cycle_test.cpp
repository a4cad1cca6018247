#include "model/tables/drive_cycle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace {

constexpr auto& kSpeed = kDriveCycle_km_h;

TEST(DriveCycle, PassesTheTellingSpeeds) {
  constexpr std::pair<std::size_t, double> kTelling[] = {{0, 0.0},       {100, 28.96},   {250, 32.51},  {500, 16.7},
                                                         {750, 36.39},   {1000, 63.84},  {1250, 67.05}, {1500, 36.45},
                                                         {1650, 122.96}, {1802, 133.31}, {1900, 0.0},   {1998, 0.0}};
  for (const auto& [second, speed_km_h] : kTelling) EXPECT_EQ(kSpeed[second], speed_km_h) << "at " << second << " s";
}

TEST(DriveCycle, StandsFor432SamplesPeaksOnceAndCovers23Point6Kilometres) {
  EXPECT_EQ(std::count(kSpeed.begin(), kSpeed.end(), 0.0), 432);
  EXPECT_EQ(*std::min_element(kSpeed.begin(), kSpeed.end()), 0.0);
  EXPECT_EQ(*std::max_element(kSpeed.begin(), kSpeed.end()), 133.31);
  EXPECT_EQ(std::count(kSpeed.begin(), kSpeed.end(), 133.31), 1);
  const double trapezoids = std::accumulate(kSpeed.begin(), kSpeed.end(), 0.0) - 0.5 * (kSpeed.front() + kSpeed.back());
  EXPECT_NEAR(trapezoids / 3600.0, 23.60, 0.05);
}

}  // namespace
