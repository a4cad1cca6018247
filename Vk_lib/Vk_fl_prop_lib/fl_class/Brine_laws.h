#pragma once

/// Laws of a brine over its vector, for CBrine and for whoever knows the fluid where a call is compiled: the compiler
/// then folds what depends on the concentration alone. Temperatures in K, concentration in percent.

#include <cmath>
#include <utility>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine_vectors.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/LiquidPoint.h"

namespace Vk_fl_prop_lib::brine_laws {

enum Polynomial { kFreezing, kDensity, kCp, kConductivity, kLogViscosity };

/// Polynomial i of BrineVector::c; the freezing one does not depend on T.
constexpr double poly(const BrineVector& c, int i, double T) {
  const auto& a = c.c[i];
  const double dT = i == kFreezing ? 1.0 : T - c.tRef;
  const double dT2 = dT * dT, dT3 = dT2 * dT;
  const double dc = c.conc - c.concRef;
  const double dc2 = dc * dc, dc3 = dc2 * dc, dc4 = dc3 * dc, dc5 = dc4 * dc;
  return a[0] + a[1] * dT + a[2] * dT2 + a[3] * dT3 + dc * (a[4] + a[5] * dT + a[6] * dT2 + a[7] * dT3) +
         dc2 * (a[8] + a[9] * dT + a[10] * dT2 + a[11] * dT3) + dc3 * (a[12] + a[13] * dT + a[14] * dT2) +
         dc4 * (a[15] + a[16] * dT) + dc5 * a[17];
}

/// Thermal expansion coefficient [1/K], with the density at T [kg/m3].
constexpr double alpha(const BrineVector& c, double T, double rho) {
  const auto& a = c.c[kDensity];
  const double dT = T - c.tRef, dT2 = dT * dT;
  const double dc = c.conc - c.concRef;
  const double dc2 = dc * dc, dc3 = dc2 * dc, dc4 = dc3 * dc;
  const double density_slope = a[1] + 2 * dT * a[2] + 3 * dT2 * a[3] + dc * (a[5] + 2 * dT * a[6] + 3 * dT2 * a[7]) +
                               dc2 * (a[9] + 2 * dT * a[10] + 3 * dT2 * a[11]) + dc3 * (a[13] + 2 * dT * a[14]) +
                               dc4 * a[16];
  return -density_slope / rho;
}

/// Integral of Cp from tRef to T [J/kg].
constexpr double intCpdT(const BrineVector& c, double T) {
  const auto& a = c.c[kCp];
  const double dT = T - c.tRef;
  const double dT2 = dT * dT, dT3 = dT2 * dT, dT4 = dT3 * dT;
  const double dc = c.conc - c.concRef;
  const double dc2 = dc * dc, dc3 = dc2 * dc, dc4 = dc3 * dc, dc5 = dc4 * dc;
  return a[0] * dT + a[1] * dT2 / 2 + a[2] * dT3 / 3 + a[3] * dT4 / 4 +
         dc * (a[4] * dT + a[5] * dT2 / 2 + a[6] * dT3 / 3 + a[7] * dT4 / 4) +
         dc2 * (a[8] * dT + a[9] * dT2 / 2 + a[10] * dT3 / 3 + a[11] * dT4 / 4) +
         dc3 * (a[12] * dT + a[13] * dT2 / 2 + a[14] * dT3 / 3) + dc4 * (a[15] * dT + a[16] * dT2 / 2) +
         dc5 * a[17] * dT;
}

/// Volumes of the liquid with the reference volume 1 / rho [m3/kg]: at P and at the reference pressure.
inline std::pair<double, double> volumes(const BrineVector& c, double rho, double P) {
  const double log_v_ref = std::log(1 / rho);
  return {std::exp(log_v_ref - (P - c.pRef) * c.kappa), std::exp(log_v_ref - (c.pRef - c.pRef) * c.kappa)};
}

/// What the properties at T and P share.
inline LiquidPoint at(const BrineVector& c, double T, double P) {
  const double rho = poly(c, kDensity, T);
  const auto [v, v_ref] = volumes(c, rho, P);
  return {.T = T, .P = P, .kappa = c.kappa, .alpha = alpha(c, T, rho), .v = v, .v_ref = v_ref, .Cp = poly(c, kCp, T)};
}

/// Specific enthalpy [J/kg], with the integral of Cp from tRef to T.
constexpr double h(const BrineVector& c, const LiquidPoint& p, double integral) {
  return integral - (1 - p.alpha * p.T) * p.v / c.kappa + (1 - p.alpha * p.T) * p.v_ref / c.kappa;
}

}  // namespace Vk_fl_prop_lib::brine_laws
