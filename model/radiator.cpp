#include "model/radiator.h"

#include <cmath>
#include <cstdint>

#include "model/map_lookup.h"
#include "model/scalar_laws.h"

double pump_mass_flow(double radiator_fraction, double pump_command) {
  return larger(0.0, interpolate(kPumpFlow, radiator_fraction, pump_command));
}

double radiator_air_speed(double wind_speed, double vehicle_speed) { return 3.6 * wind_speed + vehicle_speed; }

double radiator_air_flow(double air_speed, double fan_command, double density) {
  constexpr double kFaceArea = 0.3;        // m2
  constexpr double kLeastVelocity = 0.01;  // m/s
  const double velocity = larger(kLeastVelocity, interpolate(kFaceVelocity, air_speed, fan_command));
  return (kFaceArea * velocity) * density;
}

double radiator_UA(double air_flow, double coolant_flow) {
  constexpr auto nx = static_cast<std::uint32_t>(kRadiatorUA.x.size());
  constexpr auto ny = static_cast<std::uint32_t>(kRadiatorUA.y.size());
  constexpr std::uint32_t kLast[] = {nx - 1, ny - 1};
  return larger(0.0, look2_binlxpw(std::fabs(air_flow), std::fabs(coolant_flow), kRadiatorUA.x.data(),
                                   kRadiatorUA.y.data(), kRadiatorUA.z.data(), kLast, nx));
}

double heater_power(double command) {
  return look1_binlxpw(command, kHeaterPower.x.data(), kHeaterPower.y.data(), kHeaterPower.x.size() - 1);
}
