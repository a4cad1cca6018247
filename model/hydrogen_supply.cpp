#include "model/hydrogen_supply.h"

#include <cmath>

#include "model/map_lookup.h"
#include "model/scalar_laws.h"

namespace {

/// Motive pressure [Pa] of a nozzle: the inlet's, or below twice the outlet's an ellipse that meets it there.
double motive_pressure(double P_in, double P_out) {
  if (P_in >= P_out + P_out) return P_in;
  return 2.0 * std::sqrt(larger(0.0, P_out * (P_in - P_out)));
}

/// Mass flow [kg/s] of a nozzle with the conductance in g/(s bar).
double nozzle_flow(double conductance, double P_motive) { return 0.001 * larger(0.0, conductance * (1e-5 * P_motive)); }

}  // namespace

MoistGasFlow tank_heat_input(const MoistGasState& tank) {
  return {0.0, 0.0 * tank.X1, 0.0 * tank.X2, 0.0 * tank.X3, (313.15 - tank.T) * 10000.0};
}

double reducer_setpoint_bar(double P_tank, double flow) {
  constexpr double kPressureAtRest = 15.500000000000002;  // bar
  const double at_1_g_s = 1e-5 * interpolate(kReducerPressure, P_tank);
  return smaller((at_1_g_s - kPressureAtRest) * flow + kPressureAtRest, 1e-5 * P_tank);
}

double reducer_speed(double x, double P_tank, double P_outlet, double w) {
  const double error_bar = 1.0 * (reducer_setpoint_bar(P_tank, 1000.0 * w) - 1e-5 * P_outlet);
  const double target = saturated(x + error_bar, 0.0, 1.0);
  return (1.0 / 0.05) * (target - x);
}

double entrainment_ratio(double P1, double Ps, double Po) {
  const double reference = floored(Po, 100000.0);
  const double Rp = larger(1.0, P1 / reference);
  const double alpha = 0.01 * (0.0162 * (Rp * Rp) + (0.043 + Rp * -0.0316));
  const double Rs = larger(0.0, Ps / reference);
  const double threshold = Rp * -0.0312 + 1.0374;
  const double delta = larger(0.0, Rs - threshold);
  const double peak = larger(Rp * 0.0468 + -0.072, (Rp * 0.0468) / 2.0);
  const double decay = saturated(std::exp(-delta / peak), 0.0, 1.0);
  return larger(0.0, ((1.0 / alpha) * delta) * decay);
}

EjectorFlows Ejecteur_v1(double P1, double Ps, double Po) {
  const double primary = nozzle_flow(0.03333333333333333, motive_pressure(P1, Po));
  const double entrained = primary * entrainment_ratio(P1, Ps, Po);
  const double direct = nozzle_flow(0.3333333333333333, motive_pressure(Ps, Po));
  return {primary, entrained >= direct ? entrained : direct};
}
