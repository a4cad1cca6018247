#pragma once

#include <cmath>

#include "fluids/quiet_test.h"

namespace Vk_fl_prop_lib {

/// What holds for every slightly compressible liquid at (T, P). Cp depends on T alone in these models, so that the
/// slopes of enthalpy and entropy over T are those of Cp at the reference pressure only.
template <class Liquid>
void expect_liquid_identities(const Liquid& f, double T, double P, double kappa) {
  const double v = f.vTP(T, P), Cp = f.CpTP(T, P, 0), at = f.alfa_t(T, P, 0), ap = f.alfa_p(T, P, 0);
  EXPECT_NEAR(slope([&](double t) { return f.vTP(t, P); }, T, 0.01), at, 1e-6 * std::fabs(at) + 1e-13 * v);
  EXPECT_NEAR(ap, -kappa * v, 1e-15 * kappa * v);
  const double step = 1e6;  // Pa; large beside the rounding of h and s, small beside 1 / kappa
  EXPECT_NEAR(slope([&](double p) { return f.vTP(T, p); }, P, step), ap, -1e-6 * ap);
  EXPECT_NEAR(slope([&](double p) { return f.hTP(T, p); }, P, step), v - T * at, 1e-6 * v);
  EXPECT_NEAR(slope([&](double p) { return f.sTP(T, p); }, P, step), -at, 1e-6 * std::fabs(at) + 1e-12 * v);
  EXPECT_NEAR(f.uTP(T, P, 0), f.hTP(T, P) - P * v, 1e-12 * P * v);
  EXPECT_NEAR(f.CvTP(T, P, 0), Cp + T * at * at / ap, 1e-13 * Cp);  // Cp - Cv = -T (dv/dT)^2 / (dv/dP)
  EXPECT_NEAR(f.beta_h(T, P, 0), at / Cp, 1e-15 * std::fabs(at / Cp));
  // Along constant h the temperature changes by dT = -(v - T dv/dT) / Cp dP.
  const double dT_dP = -(v - T * at) / Cp;
  const double along_h = slope([&](double p) { return f.vTP(T + dT_dP * (p - P), p); }, P, 0.1 * step);
  EXPECT_NEAR(f.beta_p(T, P, 0), along_h, 1e-6 * std::fabs(ap));
}

/// Every operation that takes another pair than T and P leads back to the state. h must not be 0: the inversions
/// measure their error relative to it.
template <class Liquid>
void expect_liquid_round_trips(const Liquid& f, double T, double P) {
  const double h = f.hTP(T, P), s = f.sTP(T, P), v = f.vTP(T, P), u = f.uTP(T, P, 0), Cp = f.CpTP(T, P, 0);
  EXPECT_NEAR(f.tHP(h, P), T, 1e-7 * T);
  EXPECT_NEAR(f.tPS(P, s), T, 1e-7 * T);
  EXPECT_NEAR(f.tPV(P, v), T, 1e-5 * T);  // v hardly depends on T
  EXPECT_NEAR(f.vPH(P, h), v, 1e-9 * v);
  EXPECT_NEAR(f.sPH(P, h), s, 1e-7 * Cp);
  EXPECT_NEAR(f.hPS(P, s), h, 1e-7 * Cp * T);
  EXPECT_NEAR(f.hPV(P, v), h, 1e-5 * Cp * T);
  EXPECT_NEAR(f.uPV(P, v), u, 1e-5 * Cp * T);
  EXPECT_NEAR(f.lambdaPH(P, h), f.lambdaTP(T, P, 0), 1e-6 * f.lambdaTP(T, P, 0));
  EXPECT_NEAR(f.muPH(P, h), f.muTP(T, P, 0), 1e-6 * f.muTP(T, P, 0));
  EXPECT_NEAR(f.pUV(u, v), P, 1e-3 * P);  // u hardly depends on P at constant v
  EXPECT_EQ(f.muTV(T, v), f.muTP(T, P, 0));
}

}  // namespace Vk_fl_prop_lib
