#include "model/power_control.h"

#include <cmath>

#include "model/map_lookup.h"
#include "model/scalar_laws.h"
#include "model/stack.h"

namespace {

constexpr double kPowerRateLimit = 25000.0;           // W per tick of 1 s
constexpr double kPowerGain = 0.05;                   // A/W
constexpr double kAirCapCurrent = 180.0;              // A
constexpr double kAirMassFactor = 88765.83200000001;  // 4 * 96484.6 * 0.23
constexpr double kStopRamp = 0.01;                    // rpm per tick of 10 ms

}  // namespace

SystemFlags system_flags(double command) {
  if (std::isnan(command)) return {0.0, 0.0};
  return command == 1.0 ? SystemFlags{1.0, 0.0} : SystemFlags{0.0, 1.0};
}

double limited_power(double asked, double before) {
  return before + saturated(asked - before, -kPowerRateLimit, kPowerRateLimit);
}

double current_ceiling(double power) { return interpolate(kCurrentCeiling, 0.001 * power); }

double power_pi(double x, double target, double power) { return x + kPowerGain * (target - power); }

double limited_current(double raw, double ceiling) { return larger(0.0, smaller(raw, ceiling)); }

double air_flow_for(double current, double stoichiometry) {
  return ((kStackCells * current * 32.0 * stoichiometry) / kAirMassFactor) * 0.001;
}

double air_flow_setpoint(double current, double stoichiometry, bool battery_full) {
  const double flow = smaller(air_flow_for(current, stoichiometry), air_flow_for(kAirCapCurrent, stoichiometry));
  return larger(0.0, battery_full ? flow * 0.0 : flow);
}

double oxygen_moles(double air_flow) { return 0.03125 * (0.23 * (1000.0 * air_flow)); }

double air_limited_current(double oxygen, double stoichiometry) {
  const double y = 2.0 * (oxygen / stoichiometry);
  return (kFaradayConstant * y + kFaradayConstant * y) / kStackCells;
}

double stack_ready(bool air_flows, double ejector_flow) {
  const bool hydrogen_flows = std::isnan(ejector_flow) || larger(0.0, ejector_flow) != 0.0;
  return air_flows && hydrogen_flows ? 1.0 : 0.0;
}

CommandSet commands_when_off(double run) {
  return {.air_flow = 0.0,
          .cathode_pressure = 130000.0,
          .anode_pressure = 130000.0,
          .coolant_temperature = 45.0,
          .current_ceiling = 0.0,
          .fc_power_target = 0.0,
          .contact_request = 0.0,
          .run = run};
}

double stopping_speed(double before) { return before + saturated(0.0 - before, -kStopRamp, kStopRamp); }
