#pragma once

/// The properties that a model asks at every evaluation, for fluids that are known where the call is compiled.
///
/// Same limits, operations and bits as fl_prop_calc, but nothing is looked up: with a constant vector the compiler
/// folds what depends on the fluid alone, and results that nobody asks for are not computed.

#include <array>
#include <cstddef>
#include <utility>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide_vector.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine_laws.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG_vectors.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/quintic.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_prop_calc.h"

namespace Vk_fl_prop_lib::direct {

/// Heat capacity at constant pressure [J/(kg K)] of an ideal gas at T [K]: code 5.
constexpr double gas_Cp(const GasVector& gas, double T) { return quintic(gas.cp, clip(T, gas.tMin, gas.tMax)); }

/// Specific enthalpy [J/kg] of an ideal gas at T [K]: code 2.
constexpr double gas_enthalpy(const GasVector& gas, double T) {
  return quintic_integral(gas.hRef, gas.cp, clip(T, gas.tMin, gas.tMax), gas.tRef);
}

/// Heat capacity at constant pressure of moist air [J/(K kg of dry air)] at the humidity ratio w [kg/kg]: code 5.
constexpr double air_Cp(double w) { return CAirHumide::CpW(0 >= w ? 0 : w); }

/// Heat capacity at constant volume of moist air, of the vector kMoist_Air, [J/(K kg of dry air)] at T [K], P [Pa] and
/// the humidity ratio w [kg/kg]: code 6. One air serves the process: not re-entrant.
inline double air_Cv(double T, double P, double w) {
  static CAirHumide air(kMoist_Air);
  const AirPoint at = limited_air(T, P, w);
  air.SetFluidState(air.wSatT(at.T, at.P) > at.w ? 1 : 0);
  return air.CvTW(at.T, at.w, at.P, 0, 0);
}

/// Those of a brine's values that its balances need.
struct BrineValues {
  double v;      ///< specific volume [m3/kg]: code 1
  double h, u;   ///< specific enthalpy and internal energy [J/kg]: codes 2 and 4
  double Cp;     ///< heat capacity at constant pressure [J/(kg K)]: code 5
  double alpha;  ///< isobaric expansion coefficient [1/K]: code 9
  double kappa;  ///< isothermal compressibility (negative) [1/Pa]: code 10
};

/// Of several temperatures at one pressure, law by law, so that the compiler computes the polynomials of several at
/// once and none waits for the logarithm of another.
/// @tparam brine  with the concentration in force
/// @param T, P    K, Pa
template <const BrineVector& brine, std::size_t n>
std::array<BrineValues, n> brine_values(const std::array<double, n>& T, double P) {
  P = 0 >= P ? kLowest : P;
  std::array<double, n> held, rho, alpha, Cp, integral;
  std::array<std::pair<double, double>, n> v;
  for (std::size_t i = 0; i < n; ++i) {
    held[i] = 0 >= T[i] ? kLowest : T[i];
    rho[i] = brine_laws::poly(brine, brine_laws::kDensity, held[i]);
  }
  for (std::size_t i = 0; i < n; ++i) v[i] = brine_laws::volumes(brine, rho[i], P);
  for (std::size_t i = 0; i < n; ++i) {
    alpha[i] = brine_laws::alpha(brine, held[i], rho[i]);
    Cp[i] = brine_laws::poly(brine, brine_laws::kCp, held[i]);
    integral[i] = brine_laws::intCpdT(brine, held[i]);
  }
  std::array<BrineValues, n> values;
  for (std::size_t i = 0; i < n; ++i) {
    const LiquidPoint p = {held[i], P, brine.kappa, alpha[i], v[i].first, v[i].second, Cp[i]};
    const double h = brine_laws::h(brine, p, integral[i]);
    values[i] = {.v = p.v, .h = h, .u = h - p.v * P, .Cp = p.Cp, .alpha = p.alfa_t() / p.v, .kappa = p.alfa_p() / p.v};
  }
  return values;
}

}  // namespace Vk_fl_prop_lib::direct
