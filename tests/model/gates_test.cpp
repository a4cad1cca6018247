// The 23 gates, each opened and left closed in the running unit, against a run with all gates closed.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "fmi/fmu_instance.h"
#include "model/plant_driver.h"
#include "model/signals.h"

namespace {

using Outputs = decltype(Tessera_Y);

// The model step of the write, one ahead of a tick of 10 ms, with the stack under load and the fan on.
constexpr std::size_t kWrite = 1209, kTick = 1210, kNextTick = 1220;

/// What n steps leave of a distance that decays with the time constant tau [s], by a Runge-Kutta method of third order.
double decay(double tau, std::size_t n) {
  const double z = -kBaseStep / tau;
  return std::pow(1.0 + z + z * z / 2.0 + z * z * z / 6.0, static_cast<double>(n));
}

class Gates : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    start();
    reference.clear();
    while (reference.size() <= kNextTick) {
      rtOneStep(Tessera_M);
      reference.push_back(Tessera_Y);
    }
  }

  /// Goes on through the given model steps. Up to the step `same` they must be the reference's to the bit.
  static void go(std::size_t from, std::size_t to, std::size_t same) {
    for (std::size_t n = from; n <= to; ++n) {
      rtOneStep(Tessera_M);
      if (n <= same) {
        EXPECT_EQ(first_difference(Tessera_Y, n), "") << "model step " << n;
      }
    }
  }

  static std::string_view first_difference(const Outputs& y, std::size_t n) {
    for (std::size_t vr = 0; vr < kOutputCount; ++vr) {
      if (std::memcmp(&y[vr], &reference[n][vr], sizeof y[vr]) != 0) return kOutputs[vr].name;
    }
    return "";
  }

  static inline std::vector<Outputs> reference;  // by model step
};

TEST_F(Gates, EachShowsItsParameterByScaleRateAndLag) {
  using namespace input;
  struct Case {
    input::Index k;
    double value;
    std::size_t same;      // model step up to which nothing may show
    output::Index output;  // the first that takes the value
    std::size_t at;        // in this model step
    double in_force;       // the parameter in the output's unit
    double tau = 0.0;      // of the lag ahead of the output [s]
  };
  const Case cases[] = {
      // Read on the tick alone: a step earlier, and valve or compressor had moved.
      {compressor_speed, 6000, kTick, output::compressor_speed_command_lagged, kNextTick, 100 * 6000.0, 1.0},
      {back_pressure_valve_command, 0.25, kTick, output::back_pressure_valve_position, kNextTick, 0.25, 1 / 60.0},
      // Read and seen in every step.
      {hv_auxiliary_power, 2500, kWrite - 1, output::inputs_hv_auxiliary_power, kWrite, 2500},
      {lv_load_power, 700, kWrite - 1, output::inputs_lv_load_power, kWrite, 700},
      {system_command, 0.5, kWrite - 1, output::inputs_system_command, kWrite, 0.5},
      {fc_converter_enable, 0.4, kWrite - 1, output::fc_converter_stack_current, kWrite, 0},
      {lv_converter_enable, 0.4, kWrite - 1, output::lv_converter_hv_current, kWrite, 0},
      {fan_command, 30, kWrite - 1, output::radiator_air_flow, kWrite,
       0.3 * reference[kWrite][output::radiator_air_flow]},  // the vehicle stands, the fan ran in full
      // At work at once, and displayed on the tick.
      {fc_converter_enable, 0.4, kWrite - 1, output::fc_converter_enable, kTick, 0.4},
      {lv_converter_enable, 0.4, kWrite - 1, output::lv_converter_enable, kTick, 0.4},
      {fan_command, 30, kWrite - 1, output::fan_command, kTick, 30},
      {radiator_command, 40, kWrite - 1, output::radiator_command, kTick, 40},
      // Seen on the tick.
      {compressor_converter_enable, 0.4, kWrite, output::compressor_converter_enable, kTick, 0.4},
      {supply_valve_command, 0.9, kWrite, output::supply_valve_command, kTick, 0.9},
      {bleed_valve_command, 0.5, kWrite, output::bleed_valve_command, kTick, 0.5},
      {heater_command, 50, kWrite, output::heater_power, kTick, 1500},
      {pump_command, 60, kWrite, output::pump_command, kTick, 60},
      // Behind a lag: one step later, which here is the tick.
      {ambient_temperature, 10, kWrite, output::inputs_ambient_temperature, kTick, 10, 1.0},
      {ambient_temperature, 10, kWrite, output::ambient_temperature, kTick, 10, 1.0},
      {ambient_pressure, 0.9, kWrite, output::ambient_pressure, kTick, 0.9, 1.0},
      {ambient_humidity, 70, kWrite, output::ambient_humidity, kTick, 70, 1.0},
      {road_slope, -3, kWrite, output::inputs_road_slope, kTick, -3, 1.0},
      {wind_speed, 36, kWrite, output::inputs_wind_speed, kTick, 10, 1.0},  // km/h to m/s
      {cathode_pressure, 1.6, kWrite, output::cathode_pressure_setpoint, kTick, 1.6, 1.0},
      {power_demand, 12, kWrite, output::power_balance_demand, kTick, 12000, 1.0},
      {vehicle_speed, 90, kWrite, output::inputs_vehicle_speed, kTick, 90, 1.0},
      {coolant_temperature, 330, kWrite, output::inputs_coolant_temperature_setpoint, kTick, 330 - 273.15, 1.0},
  };
  std::array<bool, kInputCount> shown{};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(kInputs[c.k].parameter) + " at " + std::string(kOutputs[c.output].name));
    start();
    go(0, kWrite - 1, kWrite - 1);
    open({c.k, c.value});
    go(kWrite, c.at, c.same);
    const std::size_t lagged = c.at == kNextTick ? 10 : 1;  // steps since the gate was read
    const double before = reference[c.at - lagged][c.output];
    const double expected = c.in_force + (c.tau > 0.0 ? (before - c.in_force) * decay(c.tau, lagged) : 0.0);
    EXPECT_NEAR(Tessera_Y[c.output], expected, 1e-11 * (1.0 + std::fabs(c.in_force)));
    EXPECT_NE(Tessera_Y[c.output], reference[c.at][c.output]);
    shown[c.k] = true;
  }
  for (std::size_t k = 0; k < kInputCount; ++k) EXPECT_TRUE(shown[k]) << kInputs[k].parameter;
}

TEST_F(Gates, AClosedGateLetsNoBitOfItsParameterThrough) {
  constexpr double kValues[] = {std::numeric_limits<double>::quiet_NaN(), -1e300, 0.0, 1.0, 1e300};
  for (std::size_t k = 0; k < kInputCount; ++k) {
    SCOPED_TRACE(kInputs[k].parameter);
    start();
    for (std::size_t n = 0; n <= kNextTick; ++n) {
      Tessera_P.real[k] = kValues[n / 3 % std::size(kValues)];  // each on ticks of 10 ms and between them
      go(n, n, n);
    }
  }
}

}  // namespace
