#pragma once

namespace Vk_fl_prop_lib {

/// A slightly compressible liquid at one temperature and pressure: what its operations share, each computed once, and
/// the laws that follow. The volume falls exponentially with the pressure,
///
///   v(T, P) = v_ref(T) exp(-kappa (P - pRef)),   dv/dT = alpha v,   dv/dP = -kappa v.
struct LiquidPoint {
  double T, P;   ///< [K], [Pa]
  double kappa;  ///< isothermal compressibility [1/Pa]
  double alpha;  ///< thermal expansion coefficient at T [1/K]
  double v;      ///< specific volume at T and P [m3/kg]
  double v_ref;  ///< specific volume at T and the reference pressure [m3/kg]
  double Cp;     ///< heat capacity at constant pressure [J/(kg K)]

  double alfa_t() const { return alpha * v; }
  double alfa_p() const { return v * (-kappa); }
  double beta_h() const { return alfa_t() / Cp; }
  double beta_p() const { return alfa_p() - alfa_t() * (v - alfa_t() * T) / Cp; }
  double Cv() const { return v * alfa_t() / alfa_p() + (beta_p() * alfa_t() / beta_h()) / alfa_p(); }
};

}  // namespace Vk_fl_prop_lib
