#pragma once

#include <array>
#include <cstddef>

/// A corner of the speed trace; the speed runs straight from one knot to the next.
struct DriveCycleKnot {
  int time;           // s
  double speed_km_h;  // at most two decimals
};

// 33 minutes from a side street to a motorway: 23.6 km, 432 samples at rest, 133.31 km/h at the most.
// A stop is the pair of knots at 0.0 that ends one row and begins the next.
inline constexpr DriveCycleKnot kDriveCycleKnots[] = {
  // parked, then a side street with a turn
  {   0,   0.0 }, {  11,   0.0 }, {  14,   9.8 }, {  19,  23.6 }, {  26,  31.2 }, {  33,  28.4 }, {  40,  32.7 },
  {  46,  26.1 }, {  50,  14.8 }, {  53,  15.6 }, {  58,  27.3 }, {  63,  24.9 }, {  67,  11.5 }, {  70,   0.0 },
  // collector road, up to a red light
  {  84,   0.0 }, {  87,  11.4 }, {  92,  23.8 }, { 100,  28.96}, { 108,  34.3 }, { 117,  31.6 }, { 125,  38.2 },
  { 134,  41.5 }, { 142,  39.3 }, { 149,  30.7 }, { 156,  13.9 }, { 160,   0.0 },
  // main street
  { 191,   0.0 }, { 194,  12.3 }, { 199,  27.5 }, { 206,  40.8 }, { 214,  46.1 }, { 223,  43.7 }, { 231,  48.6 },
  { 238,  45.2 }, { 244,  37.9 }, { 250,  32.51}, { 255,  28.6 }, { 261,  35.4 }, { 268,  41.8 }, { 275,  38.3 },
  { 281,  24.7 }, { 286,   6.2 }, { 288,   0.0 },
  // stop and go
  { 317,   0.0 }, { 320,   7.6 }, { 324,  13.9 }, { 328,  10.8 }, { 332,   0.0 },
  { 341,   0.0 }, { 344,   8.2 }, { 349,  17.6 }, { 354,  12.1 }, { 358,   0.0 },
  { 372,   0.0 }, { 376,  13.5 }, { 382,  25.7 }, { 388,  22.4 }, { 394,   9.6 }, { 397,   0.0 },
  // town street into a 20 km/h zone
  { 418,   0.0 }, { 421,  11.9 }, { 427,  29.8 }, { 435,  43.3 }, { 444,  49.7 }, { 453,  47.2 }, { 462,  50.4 },
  { 470,  46.5 }, { 477,  33.1 }, { 482,  19.4 }, { 490,  17.8 }, { 500,  16.7 }, { 507,  19.9 }, { 514,  15.2 },
  { 518,   0.0 },
  // ring road between two lights
  { 544,   0.0 }, { 547,  12.6 }, { 552,  28.1 }, { 559,  41.9 }, { 568,  48.8 }, { 578,  51.6 }, { 587,  47.9 },
  { 596,  50.2 }, { 604,  43.4 }, { 610,  27.2 }, { 615,   8.4 }, { 618,   0.0 },
  // through a roundabout to a give-way line
  { 655,   0.0 }, { 658,  11.2 }, { 663,  25.3 }, { 670,  34.6 }, { 677,  30.9 }, { 683,  16.4 }, { 687,  12.7 },
  { 692,  22.8 }, { 699,  36.7 }, { 707,  42.5 }, { 715,  39.1 }, { 721,  24.3 }, { 725,   7.1 }, { 727,   0.0 },
  // arterial road, last light of the town
  { 735,   0.0 }, { 738,  12.4 }, { 743,  27.2 }, { 750,  36.39}, { 758,  44.7 }, { 767,  50.1 }, { 776,  52.3 },
  { 785,  48.4 }, { 793,  51.2 }, { 801,  45.8 }, { 807,  29.9 }, { 812,  11.3 }, { 815,   0.0 },
  // out of town, rural road with a bend, closed level crossing
  { 852,   0.0 }, { 855,  12.8 }, { 860,  29.6 }, { 867,  43.1 }, { 876,  50.7 }, { 886,  47.8 }, { 895,  52.6 },
  { 903,  57.4 }, { 912,  65.2 }, { 922,  70.6 }, { 933,  73.8 }, { 944,  70.1 }, { 955,  72.5 }, { 966,  67.9 },
  { 975,  61.3 }, { 983,  55.2 }, { 991,  58.7 }, {1000,  63.84}, {1010,  68.1 }, {1021,  66.4 }, {1033,  69.2 },
  {1044,  65.7 }, {1054,  60.8 }, {1062,  49.9 }, {1068,  36.4 }, {1073,  21.7 }, {1077,   8.3 }, {1080,   0.0 },
  // village
  {1133,   0.0 }, {1136,  11.6 }, {1142,  30.1 }, {1150,  47.3 }, {1159,  57.8 }, {1169,  52.4 }, {1177,  48.9 },
  {1187,  50.1 }, {1197,  46.6 }, {1207,  49.8 },
  // open country road, up to the light of the next town
  {1216,  56.3 }, {1226,  63.9 }, {1237,  69.4 }, {1250,  67.05}, {1257,  63.8 }, {1266,  66.9 }, {1277,  72.5 },
  {1289,  76.4 }, {1301,  78.1 }, {1312,  75.2 }, {1323,  76.6 }, {1333,  71.8 }, {1342,  61.7 }, {1350,  48.9 },
  {1356,  34.5 }, {1361,  18.2 }, {1364,   7.0 }, {1366,   0.0 },
  // bypass to the motorway junction
  {1395,   0.0 }, {1398,  12.1 }, {1404,  30.7 }, {1412,  46.2 }, {1421,  55.4 }, {1430,  58.7 }, {1438,  52.3 },
  {1445,  32.4 }, {1450,  14.1 }, {1454,   0.0 },
  // slip road and merging
  {1471,   0.0 }, {1474,  11.3 }, {1480,  27.9 }, {1487,  39.6 }, {1494,  34.8 }, {1500,  36.45}, {1506,  41.2 },
  {1514,  55.9 }, {1523,  71.7 }, {1533,  83.4 },
  // motorway, held up behind lorries, then in the fast lane
  {1545,  86.1 }, {1557,  81.9 }, {1569,  84.3 }, {1582,  80.7 }, {1593,  83.2 }, {1606,  95.4 }, {1620, 107.8 },
  {1635, 116.6 }, {1650, 122.96}, {1662, 126.2 }, {1674, 123.8 }, {1686, 125.4 },
  // road works, then a free road up to the top speed
  {1694, 114.7 }, {1703,  97.3 }, {1711,  83.1 }, {1722,  79.4 }, {1733,  82.2 }, {1742,  93.6 }, {1753, 104.8 },
  {1766, 115.9 }, {1780, 125.3 }, {1791, 130.7 }, {1802, 133.31},
  // exit and feeder road, down to the light at its end
  {1809, 125.2 }, {1818, 110.6 }, {1826,  94.3 }, {1833,  77.8 }, {1841,  63.6 }, {1849,  55.1 }, {1858,  57.3 },
  {1866,  52.8 }, {1873,  36.4 }, {1879,  15.7 }, {1884,   0.0 },
  // last metres to the car park
  {1936,   0.0 }, {1939,   9.6 }, {1945,  23.4 }, {1952,  29.7 }, {1958,  24.6 }, {1964,  15.8 }, {1968,   6.0 },
  {1970,   0.0 }, {1998,   0.0 },
};

/// Samples of the trace at 0, 1, ... 1998 s [km/h], each the double nearest to its two-decimal number: the
/// interpolation runs in whole hundredths, so every rounding is exact and a standstill is exactly 0.
constexpr std::array<double, 1999> expand_drive_cycle() {
  // std::lround is not constexpr before C++23.  NOLINTNEXTLINE(bugprone-incorrect-roundings)
  const auto hundredths = [](double speed_km_h) { return static_cast<int>(speed_km_h * 100.0 + 0.5); };
  std::array<double, 1999> speed_km_h{};
  for (std::size_t k = 1; k < std::size(kDriveCycleKnots); ++k) {
    const DriveCycleKnot &from = kDriveCycleKnots[k - 1], &to = kDriveCycleKnots[k];
    const int v0 = hundredths(from.speed_km_h), v1 = hundredths(to.speed_km_h);
    const int duration = to.time - from.time;
    for (int time = from.time; time <= to.time; ++time) {
      const int v = (v0 * (to.time - time) + v1 * (time - from.time) + duration / 2) / duration;
      speed_km_h[static_cast<std::size_t>(time)] = v / 100.0;
    }
  }
  return speed_km_h;
}

inline constexpr std::array<double, 1999> kDriveCycle_km_h = expand_drive_cycle();
