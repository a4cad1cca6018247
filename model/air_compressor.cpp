#include "model/air_compressor.h"

#include <cmath>

#include "model/scalar_laws.h"
#include "runtime/nonfinite.h"

namespace {

constexpr double kDisplacement = 0.00015;  // m3 per revolution
constexpr double kEfficiencyBase = 0.95;
constexpr double kShapeGain = 0.0, kShapeRatio = 0.0, kShapeSpeed = 0.0;
constexpr double kEnthalpyShare = 0.9;
constexpr double kDriveEfficiency = 0.95;

double pressure_ratio(const MoistGasState& inlet, double P_outlet) { return (1.0 / inlet.P) * P_outlet; }

double volumetric_efficiency(double ratio, double speed) {
  const double shape = kShapeGain * std::exp(floored(ratio, 1.0) * kShapeRatio - speed * kShapeSpeed);
  return saturated(kEfficiencyBase * (1.0 - shape), 0.0, 1.0);
}

}  // namespace

double compressor_duty(double command, double free_speed) {
  return saturated(command * free_speed / (kEpsilon + free_speed * free_speed), 0.0, 1.0);
}

double compressor_free_speed(double U) { return (U / 30.0) * 15000.0; }

double compressor_speed(double duty, double free_speed) {
  return saturated(duty, 0.0, 1.0) * (9.549296585513721 * (0.104719755 * free_speed));
}

double compressor_mass_flow(const MoistGasState& inlet, double P_outlet, double speed) {
  const double revolutions = 0.016666666666666666 * speed;  // per second
  const double efficiency = volumetric_efficiency(pressure_ratio(inlet, P_outlet), speed);
  return larger(0.0, ((efficiency * inlet.rho) * revolutions) * kDisplacement);
}

MoistGasFlow compressor_outflow(const MoistGas& inlet, const MoistGas& outlet, double Cv_inlet, double Cv_outlet,
                                double w) {
  const double Cp = 0.5 * (outlet.Cp + inlet.Cp);
  const double Cv = 0.5 * (Cv_outlet + Cv_inlet);
  const double k = Cp / Cv;
  const double ratio = pressure_ratio(inlet.state, outlet.state.P);
  const double rise = inlet.state.T * rt_powd_snf(ratio, (k - 1.0) / k) - inlet.state.T;
  MoistGasFlow flow = flow_of(inlet, w);
  flow.Hdot = ((Cp * rise) * w) * kEnthalpyShare + inlet.h * w;
  return flow;
}

double compressor_enthalpy_temperature(const MoistGasState& inlet, const MoistGasState& outlet) {
  return 273.15 + pressure_ratio(inlet, outlet.P) * (outlet.T - 273.15);
}

double compressor_power(const MoistGasState& outlet, double h_inlet, double h1, double h2, double w) {
  const double h_outlet = mixture_enthalpy(outlet, h1, h2, vapour_enthalpy_law(outlet.T));
  return larger(0.0, w * (h_outlet - h_inlet)) / kDriveEfficiency;
}

double compressor_current(double U, double power) { return safe_reciprocal(U) * power; }
