#pragma once

/// Maps of the plant: tables over one or two inputs. Element (i, j) of a table over x and y lies at z[i + nx * j].

#include <array>
#include <cstddef>

template <std::size_t n>
struct Curve {
  std::array<double, n> x, y;
};

template <std::size_t nx, std::size_t ny>
struct Map {
  std::array<double, nx> x;
  std::array<double, ny> y;
  std::array<double, nx * ny> z;
};

/// A map that does not depend on y.
template <std::size_t nx, std::size_t ny>
constexpr Map<nx, ny> same_for_all_y(const std::array<double, nx>& x, const std::array<double, ny>& y, const std::array<double, nx>& row) {
  Map<nx, ny> map{x, y, {}};
  for (std::size_t j = 0; j < ny; ++j) {
    for (std::size_t i = 0; i < nx; ++i) map.z[i + nx * j] = row[i];
  }
  return map;
}

// ---- Hydrogen supply -----------------------------------------------------------------------------------------------

/// Pressure behind the reducer at a flow of 1 g/s [Pa] over the tank's [Pa].
inline constexpr Curve<7> kReducerPressure = {
    {0,      1000000, 10000000, 20000000, 30000000, 50000000, 70000000},
    {100000, 1000000, 1300000,  1400000,  1430000,  1470000,  1500000}};

// ---- Power control -------------------------------------------------------------------------------------------------

/// Ceiling of the stack current [A] over the power asked for [kW].
inline constexpr Curve<6> kCurrentCeiling = {{0, 15, 20, 22, 23, 23.5}, {0, 80, 120, 140, 160, 180}};

// ---- Cooling -------------------------------------------------------------------------------------------------------

/// Coolant flow of the pump [kg/s] over the radiator's share (x) and the pump command (y), from the loop's hydraulics.
inline constexpr Map<9, 3> kPumpFlow = {
    {0.0, 0.4, 0.45, 0.5, 0.6, 0.7, 0.75, 0.8, 1.0},
    {0.2, 0.5, 1.0},
    {0.06,               0.06,               0.08333333333333333, 0.08333333333333333, 0.08333333333333333, 0.075, 0.04666666666666667, 0.016666666666666666, 0.006166666666666667,
     0.4666666666666667, 0.4666666666666667, 0.5166666666666667,  0.5,                 0.48333333333333334, 0.45,  0.275,               0.125,                0.1,
     0.8933333333333333, 0.9366666666666666, 0.95,                0.9433333333333334,  0.9283333333333333,  0.91,  0.9016666666666666,  0.8833333333333333,   0.8666666666666667}};

/// Air velocity at the radiator's face [m/s] over the air speed (x) [km/h] and the fan command (y).
inline constexpr Map<3, 2> kFaceVelocity = {
    {0, 50, 130},
    {0, 1},
    {0.0, 1.8, 6.0,
     1.9, 3.0, 6.5}};

/// UA of the radiator [W/K] over the air flow (x) and the coolant flow (y) [kg/s]. The 55.1 is the model's figure.
inline constexpr Map<4, 4> kRadiatorUA = {
    {0.375, 0.75, 1.5, 2.0},
    {0.4375, 1.2, 1.75, 2.4},
    {545.9, 712.1,  831.6,  915.4,
     666.5, 995.1,  1310.8, 1410.6,
     689.7, 1075.6, 1470.8, 1607.1,
     55.1,  1102.7, 1539.9, 1696.8}};

/// Heating power [W] over the heater command.
inline constexpr Curve<2> kHeaterPower = {{0, 1}, {0, 3000}};

// ---- Electrical network --------------------------------------------------------------------------------------------

/// Efficiencies of the converters over a current [A].
inline constexpr Curve<7> kConverterEfficiency = {{-50, -1, -0.001, 0, 0.001, 1, 50}, {1, 1, 1, 1, 1, 1, 1}};
inline constexpr Curve<7> kCompressorConverterEfficiency = {{-20, -0.001, -0.0009, 0, 0.0009, 0.001, 20}, {1, 1, 1, 1, 1, 1, 1}};

// Batteries over the state of charge (x) [percent] and the temperature (y) [degC].

inline constexpr std::array<double, 12> kOpenCircuitSoc = {0, 2, 3, 6, 11, 23, 39, 55, 68, 80, 92, 100};
inline constexpr std::array<double, 4> kSoc = {0, 10, 20, 100};
inline constexpr std::array<double, 3> kCold = {-20, 0, 20};

/// Open circuit voltage of a cell [V].
inline constexpr auto kHvOpenCircuit = same_for_all_y(kOpenCircuitSoc, kCold, {2.7, 3.0, 3.2, 3.3, 3.4, 3.5, 3.6, 3.7, 3.8, 3.9, 4.0, 4.2});
inline constexpr auto kLvOpenCircuit = same_for_all_y(kSoc, kCold, {1.931, 1.9532, 1.9753, 2.1525});

/// Series resistance of a cell [ohm].
inline constexpr Map<4, 4> kHvSeriesResistance = {
    kSoc,
    {-20, 0, 20, 80},
    {0.1728, 0.072, 0.0432, 0.0432,
     0.192,  0.08,  0.048,  0.048,
     0.192,  0.08,  0.048,  0.048,
     0.2112, 0.088, 0.0528, 0.0528}};
inline constexpr Map<4, 3> kLvSeriesResistance = {
    kSoc,
    kCold,
    {0.12, 0.02,  0.006, 0.006,
     0.06, 0.01,  0.003, 0.003,
     0.04, 0.002, 0.002, 0.002}};

/// Capacitance [F] and resistance [ohm] of the RC element.
inline constexpr auto kRcCapacitance = same_for_all_y(kSoc, kCold, {100, 400, 600, 600});
inline constexpr auto kHvRcResistance = same_for_all_y(kSoc, kCold, {0.3, 0.1, 0.05, 0.05});
inline constexpr auto kLvRcResistance = same_for_all_y(kSoc, kCold, {0.003, 0.001, 0.0005, 0.0005});
