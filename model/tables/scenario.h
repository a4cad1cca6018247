#pragma once

#include <array>
#include <cstddef>

#include "model/tables/drive_cycle.h"

// The built-in scenario: one sample a second from 0 to 1998 s, read by straight lines between the samples; behind the
// last sample its value holds.

inline constexpr std::size_t kScenarioSamples = 1999;
inline constexpr double kScenarioEnd_s = kScenarioSamples - 1;  ///< time of the last sample
using ScenarioTable = std::array<double, kScenarioSamples>;

/// A sample from which a value holds.
struct ScenarioStep {
  std::size_t from_s;
  double value;
};

/// The table that holds each step's value from its sample to the next step's.
template <std::size_t n>
constexpr ScenarioTable held(const ScenarioStep (&steps)[n]) {
  ScenarioTable table{};
  for (std::size_t k = 0; k < n; ++k) {
    const std::size_t end = k + 1 < n ? steps[k + 1].from_s : kScenarioSamples;
    for (std::size_t i = steps[k].from_s; i < end; ++i) table[i] = steps[k].value;
  }
  return table;
}

constexpr ScenarioTable held(double value) { return held({{0, value}}); }

inline constexpr ScenarioTable kSystemCommand           = held(1.0);
inline constexpr ScenarioTable kPowerDemand_kW          = held({{0, 20.0}, {197, 15.0}, {312, 20.0}, {423, 10.0}, {576, 20.0}});
inline constexpr ScenarioTable kStoichiometry           = held(2.0);
inline constexpr ScenarioTable kCathodePressure_bar     = held(1.4);
inline constexpr ScenarioTable kCoolantTemperature_degC = held(65.0);

inline constexpr ScenarioTable kAmbientTemperature_degC = held(40.0);
inline constexpr ScenarioTable kAmbientPressure_bar     = held(1.0);
inline constexpr ScenarioTable kAmbientHumidity_percent = held(30.0);
inline constexpr ScenarioTable kWindSpeed_m_per_s       = held(0.0);
inline constexpr ScenarioTable kRoadSlope_percent       = held(0.0);

inline constexpr ScenarioTable kHvAuxiliaryPower_W      = held(1500.0);
inline constexpr ScenarioTable kLvLoadPower_W           = held(1000.0);
