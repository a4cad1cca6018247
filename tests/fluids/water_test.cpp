// Water: published values, its saturation, and the rules for mixtures of two phases.

#include "Vk_lib/Vk_fl_prop_lib/fl_class/Eau.h"
#include "fluids/fluid_test.h"

namespace Vk_fl_prop_lib {
namespace {

class Water : public QuietTest {
 protected:
  const CEau water;
};

TEST_F(Water, AgreesWithTheIfc67CheckTables) {
  // Density [kg/m3] and internal energy [J/kg] from an independent implementation of IFC-67. The last state lies
  // outside of sub-region 2, where row 9 of B and the polynomial beta_L weigh most.
  const struct {
    double x, T, P, rho, u;
  } rows[] = {{0, 300, 3e6, 997.95721560998174, 112247.43313085975},
              {0, 300, 8e7, 1029.7256888266911, 106310.47344628950},
              {0, 500, 3e6, 831.84196191567298, 971985.91117384087},
              {1, 300, 3500, 2.5316826343790743e-2, 2412405.0932077002},
              {1, 700, 3500, 1.0834441421293962e-2, 3012229.4965919587},
              {1, 700, 3e7, 183.90041953968711, 2474981.3799304822}};
  for (const auto& [x, T, P, rho, u] : rows) {
    EXPECT_NEAR(1 / water.vTP(T, P, x), rho, 1e-11 * rho) << T;
    EXPECT_NEAR(water.uTP(T, P, x), u, 1e-11 * u) << T;
  }
  // The same source, 9 digits, and their slip of one part in 1e8 at 300 K.
  for (const auto& [T, P] : {std::pair{300, 3532.3426}, {500, 2639615.72}, {600, 12349390.2}}) {
    EXPECT_NEAR(water.pSat(T, 0), P, 2e-8 * P) << T;
  }
}

TEST_F(Water, AgreesWithSteamTables) {
  // Smith, Van Ness and Abbott, Introduction to Chemical Engineering Thermodynamics, appendix F (from the formulation):
  // saturated water and steam by temperature. The entropies fix the two constants that no volume and enthalpy feels.
  const struct {
    double t, p_bar, v_gas, h_gas_kJ, s_liquid_kJ, s_gas_kJ;
  } rows[] = {{0.01, 0.006112, 206.163, 2501.6, 0, 9.1575}, {4, 0.008129, 157.272, 2508.9, 0.0611, 9.0526}};
  for (const auto& [t, p_bar, v_gas, h_gas_kJ, s_liquid_kJ, s_gas_kJ] : rows) {
    const double T = t + 273.15, P = water.pSat(T, 0);
    EXPECT_NEAR(P, p_bar * 1e5, 0.055) << t;
    EXPECT_NEAR(water.vTX(T, 1), v_gas, 6e-4) << t;
    EXPECT_NEAR(water.hTX(T, 1), h_gas_kJ * 1e3, 55) << t;
    EXPECT_NEAR(water.sTP(T, P, 0), s_liquid_kJ * 1e3, 0.055) << t;
    EXPECT_NEAR(water.sTP(T, P, 1), s_gas_kJ * 1e3, 0.055) << t;
  }
  EXPECT_NEAR(water.hTX(140 + 273.15, 1), 2733.1e3, 50);
  EXPECT_NEAR(water.vTPgaz(550 + 273.15, 8e5), 472.49e-3, 5e-6);
}

TEST_F(Water, TransportPropertiesAgreeWithReferenceValues) {
  // IAPWS reference values at 0.1 MPa, 20 degC and 25 degC, and of saturated steam at 100 degC.
  EXPECT_NEAR(water.muTV(293.15, 1 / 998.2), 1.0016e-3, 5e-6);
  EXPECT_NEAR(water.muTV(298.15, 1 / 997.05), 0.8900e-3, 5e-6);
  EXPECT_NEAR(water.muTV(373.15, 1 / 0.598), 12.23e-6, 1e-7);
  EXPECT_NEAR(water.lambdaTPliq(298.15, 1e5), 0.6065, 0.012);  // a fit of 2 percent
  EXPECT_NEAR(water.lambdaTPgaz(373.15, 1e5), 0.0246, 0.0012);
}

TEST_F(Water, SaturationSlopeBelongsToTheSaturationLine) {
  for (const double T : {253.15, 273.16, 373.15, 500.0, 645.0}) {
    const double dp = water.dpsat_dt(T);
    EXPECT_NEAR(slope([&](double x) { return water.pSat(x, 0); }, T, 1e-3), dp, 1e-7 * dp) << T;
    const double P = water.pSat(T, 0);
    EXPECT_NEAR(P < 611 ? T : water.tSat(P), T, 1e-6 * T);
  }
  // At the critical point it is Pc / Tc (1 / k9 - k1), and it has no guard above, where the pressure stays.
  EXPECT_DOUBLE_EQ(water.dpsat_dt(647.3), 2.212e7 / 647.3 * (1.0 / 6 + 7.691234564));
  EXPECT_GT(water.dpsat_dt(700), water.dpsat_dt(647.3));
  for (const double T : {647.3, 1000.0}) EXPECT_EQ(water.pSat(T, 5e5), 2.212e7);
  EXPECT_LT(water.pSat(647.29, 0), 2.212e7);
  EXPECT_EQ(water.tSat(600), 647.3);  // below the triple point, silently
}

TEST_F(Water, PhasesMeetOnTheSaturationLine) {
  // Three separate fits: g of both phases agrees to 9e-5 of the evaporation enthalpy, Clapeyron's slope to 3.2e-3.
  for (int step = 0; step < 35; ++step) {
    const double T = 273.16 + 10 * step, P = water.pSat(T, 0), hl = water.hTPliq(T, P), hg = water.hTPgaz(T, P);
    EXPECT_NEAR(hl - T * water.sTPliq(T, P), hg - T * water.sTPgaz(T, P), 9e-5 * (hg - hl)) << T;
    const double clapeyron = (hg - hl) / (T * (water.vTPgaz(T, P) - water.vTPliq(T, P)));
    EXPECT_NEAR(clapeyron, water.dpsat_dt(T), 3.2e-3 * clapeyron) << T;
  }
}

TEST_F(Water, BetweenThePhasesEveryInversionReturnsToTheState) {
  for (const double P : {1e3, 1e5, 1e7}) {
    const double Ts = water.tSat(P), x = 0.3;
    const double h = water.hTP(Ts, P, x), s = water.sTP(Ts, P, x), v = water.vTP(Ts, P, x);
    EXPECT_EQ(water.tHP(h, P), Ts);
    EXPECT_EQ(water.tPS(P, s), Ts);
    EXPECT_EQ(water.tPV(P, v), Ts);
    EXPECT_NEAR(water.sPH(P, h), s, 1e-6);
    EXPECT_NEAR(water.hPS(P, s), h, 1e-3);
    EXPECT_NEAR(water.hPV(P, v), h, 1e-3);
    EXPECT_NEAR(water.vPH(P, h), v, 1e-9 * v);
    EXPECT_NEAR(water.CpPH(P, h), water.CpTP(Ts, P, x), 1e-6);
    EXPECT_NEAR(water.xPH(P, h), x, 1e-6);
    // The rules for any fluid of two phases go by the enthalpy.
    EXPECT_NEAR(water.CMultiPhase::tPS(P, s), Ts, 1e-6 * Ts);
    EXPECT_NEAR(water.CMultiPhase::tPV(P, v), Ts, 1e-6 * Ts);
  }
  const double P = 1e7, v = water.vTX(water.tSat(P), 0.3);  // far below, such steam starts beyond 2500 K
  EXPECT_NEAR(water.pUV(water.uPV(P, v), v), P, 1e-4 * P);
}

TEST_F(Water, FromTheCriticalPressureOnEntropyNeedsNoSaturation) {
  const double P = 3e7, T = 900, s = water.sTPgaz(T, P);
  EXPECT_NEAR(water.tPS(P, s), T, 1e-6 * T);
  EXPECT_NEAR(water.hPS(P, s), water.hTPgaz(T, P), 10);
  EXPECT_EQ(complaints(), "");
  water.tHP(water.hTPgaz(T, P), P);  // this one looks for a saturation, which is not there
  EXPECT_EQ(complaints(), kNoConvergence);
}

// ---- the rules for any two phases ----

TEST_F(Water, QualitySelectsThePhase) {
  using M = CMultiPhase;
  const struct {
    double (M::*law)(double, double, double) const;
    double (M::*liquid)(double, double) const;
    double (M::*gas)(double, double) const;
  } laws[] = {{&M::hTP, &M::hTPliq, &M::hTPgaz},          {&M::vTP, &M::vTPliq, &M::vTPgaz},
              {&M::sTP, &M::sTPliq, &M::sTPgaz},          {&M::CpTP, &M::CpTPliq, &M::CpTPgaz},
              {&M::alfa_t, &M::alfa_tliq, &M::alfa_tgaz}, {&M::alfa_p, &M::alfa_pliq, &M::alfa_pgaz}};
  for (const double T : {300.0, 450.0}) {
    const double P = water.pSat(T, 0), ps_T = water.dpsat_dt(T), x = 0.3;
    for (const double other_P : {P, 3e5}) {  // on the saturation line or not
      for (const auto& [law, liquid, gas] : laws) {
        const double at_0 = (water.*liquid)(T, other_P), at_1 = (water.*gas)(T, other_P);
        for (const double below : {-0.5, 0.0}) EXPECT_EQ((water.*law)(T, other_P, below), at_0);
        for (const double above : {1.0, 1.5}) EXPECT_EQ((water.*law)(T, other_P, above), at_1);
        EXPECT_DOUBLE_EQ((water.*law)(T, other_P, x), 0.7 * at_0 + 0.3 * at_1);
      }
      EXPECT_DOUBLE_EQ(water.uTP(T, other_P, x), water.hTP(T, other_P, x) - water.vTP(T, other_P, x) * other_P);
    }
    const double h = water.hTP(T, P, x), v = water.vTP(T, P, x), hl = water.hTPliq(T, P), vl = water.vTPliq(T, P);
    const double dh = water.hTPgaz(T, P) - hl, dv = water.vTPgaz(T, P) - vl, Cp = water.CpTP(T, P, x);
    EXPECT_DOUBLE_EQ(water.hTX(T, x), h);
    EXPECT_DOUBLE_EQ(water.vTX(T, x), v);
    EXPECT_DOUBLE_EQ(water.uTX(T, x), h - P * v);
    EXPECT_NEAR(water.xTSatH(T, h), x, 1e-14);
    // The share of the gas in the conductivity goes by volume: the liquid's from T and x, the mixture's from P and h.
    const double lambda_l = water.lambdaTPliq(T, P), dlambda = water.lambdaTPgaz(T, P) - lambda_l;
    EXPECT_DOUBLE_EQ(water.lambdaTP(T, P, x), lambda_l + dlambda * x * (vl + dv) / vl);
    EXPECT_NEAR(water.lambdaPH(P, h), lambda_l + dlambda * x * (vl + dv) / v, 1e-9);

    // Derivatives in which the phases feel T alone: at constant h with dx/dP = -Cp / (ps' dh), at constant v with
    // dx/dT = -(dv/dT) / dv. Those of one phase take the gas above half.
    EXPECT_DOUBLE_EQ(water.beta_h2(T, P, x), dv / dh);
    EXPECT_NEAR(water.beta_p2(T, P, x), water.alfa_p(T, P, x) - Cp * dv / (ps_T * dh), 1e-12 * v);
    EXPECT_NEAR(water.CvTP(T, P, x), Cp - water.alfa_t(T, P, x) * dh / dv - ps_T * v, 1e-9 * Cp);
    for (const double y : {0.5, 0.51}) {
      EXPECT_EQ(water.beta_p(T, P, y), water.beta_p(T, P, y > 0.5 ? 1 : 0));
      EXPECT_EQ(water.beta_h(T, P, y), water.beta_h(T, P, y > 0.5 ? 1 : 0));
    }
  }
}

}  // namespace
}  // namespace Vk_fl_prop_lib
