#include <cmath>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "fluids/fluid_test.h"

namespace Vk_fl_prop_lib {
namespace {

constexpr double kMa = 0.0289645, kMw = 0.01801528;  // molar masses [kg/mol]
constexpr double kP = 101325;                        // Pa

const struct { double T, P; } kStates[] = {{260, 1e5}, {290, 1e5}, {320, 1.5e5}, {350, 3e5}};

class MoistAir : public QuietTest {
 protected:
  void unsaturated() { air.SetFluidState(1); }
  void saturated() { air.SetFluidState(0); }

  CAirHumide air{kMoist_Air};
  const CEau water;
};

// ---- saturation and composition ----

TEST_F(MoistAir, SaturationPressureBlendsTheLawsOverIceAndWater) {
  EXPECT_NEAR(air.pSat(293.15, kP), 2338, 1.5);   // Hyland and Wexler: 2.3388 kPa
  EXPECT_NEAR(air.pSat(253.15, kP), 103.2, 0.1);  // over ice
  EXPECT_NEAR(air.pSat(373.15, kP), 101325, 120);
  for (const double T : {272.9, 273.15, 273.35}) {
    // The laws of Hyland and Wexler.
    const double ice = -5674.5359 / T + 6.3925247 - 0.009677843 * T + 6.2215701e-07 * T * T +
                       2.0747825e-09 * T * T * T - 9.484024e-13 * T * T * T * T + 4.1635019 * std::log(T);
    const double liquid = -5800.2206 / T + 1.3914993 - 0.048640239 * T + 4.1764768e-05 * T * T -
                          1.4452093e-08 * T * T * T + 6.5459673 * std::log(T);
    const double s = 0.5 * (1 + std::tanh(3.14159 * (T - 273.15)));
    EXPECT_NEAR(air.pSat(T, kP), std::exp(s * liquid + (1 - s) * ice), 1e-9);
  }
  // Across the blend the slope changes at 273.15 K, by the ratio of the latent heats of ice and water.
  EXPECT_NEAR(air.dpSatDt(273.15 - 1e-9, kP) / air.dpSatDt(273.15, kP), 2834.0 / 2500.8, 0.002);
}

TEST_F(MoistAir, SaturationHasSlopesAnInverseAndTwoGuards) {
  for (const double T : {200.0, 265.0, 280.0, 330.0, 370.0}) {
    const double dp = air.dpSatDt(T, kP), dw_T = air.dwSatDt(T, 2e5), dw_P = air.dwSatDp(T, 2e5);
    EXPECT_NEAR(slope([&](double x) { return air.pSat(x, kP); }, T, 1e-3), dp, 1e-7 * dp) << T;
    EXPECT_NEAR(slope([&](double x) { return air.wSatT(x, 2e5); }, T, 1e-3), dw_T, 1e-6 * dw_T) << T;
    EXPECT_NEAR(slope([&](double x) { return air.wSatT(T, x); }, 2e5, 10), dw_P, -1e-6 * dw_P) << T;
    EXPECT_NEAR(T < 250 ? T : air.tSat(air.pSat(T, kP), kP), T, 1e-6 * T);
  }
  EXPECT_NEAR(air.wSatT(293.15, kP), 0.01470, 2e-5);  // ASHRAE, without the correction for real gas
  // Between the two laws only one guard holds: at 370 K this class's law is the higher one, at 610 K the water's.
  for (const double T : {370.0, 610.0}) {
    const double of_water = water.pSat(T, 0), own = air.pSat(T, kP), P = 0.5 * (of_water + own);
    ASSERT_EQ(own > of_water, T == 370.0);
    EXPECT_EQ(air.wSatT(T, P), 1e38);
    EXPECT_EQ(air.dwSatDt(T, P), 0);
    EXPECT_EQ(air.dwSatDp(T, P), 0);
  }
}

TEST_F(MoistAir, HumidityInItsForms) {
  for (const double Rh : {0.1, 0.5, 1.0}) EXPECT_NEAR(air.rhTWP(300, air.wTRhP(300, Rh, kP), kP), Rh, 1e-12);
  EXPECT_NEAR(air.pvWP(air.wSatT(300, kP), kP), air.pSat(300, kP), 1e-9);
  EXPECT_DOUBLE_EQ(air.rhTWP(480, 0.1, kP), 0.1 / (kMw / kMa + 0.1));  // no saturation: share of the vapour
  // P below the saturation pressure, and beyond all saturation.
  EXPECT_DOUBLE_EQ(air.wTRhP(300, 0.5, 1000), kMw / kMa);
  EXPECT_EQ(air.wTRhP(380, 0, 1e5), 0);
  EXPECT_EQ(air.wTRhP(380, 0.5, 1e5), 1e36);

  EXPECT_EQ(air.TdewWP(0, kP), 173.15);
  EXPECT_NEAR(air.TdewWP(air.wTRhP(298.15, 0.5, kP), kP), 273.15 + 13.9, 0.1);  // psychrometric chart
  EXPECT_NEAR(air.wTdewP(287, kP), air.wSatT(287, kP), 1e-15);
  EXPECT_NEAR(air.wTTdewP(air.tTdewWP(285, 0.006, kP), 285, kP), 0.006, 1e-12);
  EXPECT_NEAR(air.tTdewWP(285, air.wTdewP(285, kP), kP), 285, 1e-9);  // saturated
}

TEST_F(MoistAir, WetBulbTemperature) {
  unsaturated();
  const double T = 298.15, w = air.wTRhP(T, 0.5, kP), thum = air.thumTWP(T, w, kP, 0);
  const double ps = air.pSat(thum, kP), pv = air.pvWP(w, kP);
  EXPECT_NEAR(thum, 273.15 + 17.9, 0.1);  // psychrometric chart
  EXPECT_NEAR(air.tThumW(thum, w, kP, 0), T, 1e-5);
  EXPECT_NEAR(air.thumTPvPvsat(T, pv, ps, kP), thum, 1e-5);
  EXPECT_DOUBLE_EQ(air.Cphum_TThumW(T, thum, w, kP), air.CpTW(T, w, kP, 0) * air.dTdThum(thum, w, kP));
  saturated();
  const double ws = air.wSatT(T, kP);
  EXPECT_DOUBLE_EQ(air.Cphum_TThumW(T, thum, 0.1, kP), air.CpTW(T, ws, kP, 0) + water.CpTPliq(T, kP) * (0.1 - ws));
  EXPECT_EQ(air.thumTWP(T, w, kP, 0), T);
}

// ---- state functions ----

TEST_F(MoistAir, HeatCapacities) {
  // Cp - Cv is the gas constant of the mixture per kg of dry air, over 1 + w; saturated, only the vapour counts in it.
  const double w = 0.1, Cp = 1006.6 + 0.1 * 1826.6, ws = air.wSatT(300, kP);
  const auto Cv = [&](double vapour) { return Cp - 8.31451 * (1 / kMa + vapour / kMw) / 1.1; };
  for (const bool is_saturated : {false, true}) {
    air.SetFluidState(is_saturated ? 0 : 1);
    EXPECT_DOUBLE_EQ(air.CpTW(300, w, kP, 0), Cp);
    EXPECT_NEAR(air.CvTW(300, w, kP, 0, 0), Cv(is_saturated ? ws : w), 1e-9);
    EXPECT_NEAR(air.CvTW(300, w, kP, 0, 0.05), Cv(is_saturated ? 0.05 : w), 1e-9);
    EXPECT_NEAR(air.CvTW(300, 0, kP, 0.02, 0), 1006.6 - 8.31451 / 0.02, 1e-9);  // with a molar mass of one's own
  }
}

TEST_F(MoistAir, Enthalpy) {
  for (const auto& state : kStates) {
    const double T = state.T, P = state.P, w = 0.004, ws = air.wSatT(T, P), wet = ws + 0.02;
    const auto h = [&](double x) { return air.hTW(T, x, P, 0); };
    unsaturated();
    EXPECT_NEAR(h(w), 100000 + 1000 * (2500.8 * w + (1.8266 * w + 1.0066) * (T - 273.15)), 1e-9);
    EXPECT_NEAR(slope([&](double x) { return air.hTW(x, w, P, 0); }, T, 0.1), air.CpTW(T, w, P, 0), 1e-6);
    // u = h - P v / (1 + w) has the slope dudw below saturation; at saturation dudw is dhdw.
    const auto u = [&](double x) { return h(x) - P * air.vTW(T, x, P, 0) / (1 + x); };
    EXPECT_NEAR(slope(u, w, 1e-4), air.dudw(T, w, P, 0, 0), 1e-7 * air.dudw(T, w, P, 0, 0));
    const double all_vapour = h(wet);
    for (const int fluid_state : {1, 0}) {
      air.SetFluidState(fluid_state);
      EXPECT_NEAR(slope(h, wet, 0.01), air.dhdw(T, wet, P, 0, 0), 1e-7 * std::fabs(air.dhdw(T, wet, P, 0, 0)));
      EXPECT_NEAR(air.wTH(T, h(wet), P), wet, 1e-12);
      EXPECT_EQ(air.hTW2(T, w, P), h(w));
      EXPECT_EQ(air.hTRh(T, 0.5, P), h(air.wTRhP(T, 0.5, P)));
    }
    // Saturated, the surplus is liquid; another saturation may be given.
    EXPECT_EQ(air.dudw(T, wet, P, 0, 0), air.dhdw(T, wet, P, 0, 0));
    EXPECT_NEAR(h(wet), h(ws) + (wet - ws) * water.hTPliq(T, P), 1e-7);
    EXPECT_NEAR(air.hTW(T, wet, P, ws + 0.01), h(ws) + 0.01 * (all_vapour - h(ws)) / 0.02 + 0.01 * water.hTPliq(T, P),
                1e-7);
    EXPECT_EQ(air.hSatTP(T, P), air.hTW(T, ws, kP, 0));  // at normal pressure, on purpose
  }
  EXPECT_EQ(air.dhdw(300, 0.1, 1000, 0, 0), water.hTPliq(300, water.pSat(300, 0)));  // a liquid is under this pressure
  EXPECT_NEAR(air.hl(373.15), 2256.9e3, 500);                                        // steam tables
}

TEST_F(MoistAir, Volume) {
  for (const auto& state : kStates) {
    const double T = state.T, P = state.P, w = 0.004, wet = air.wSatT(T, P) + 0.02;
    unsaturated();
    EXPECT_NEAR(air.vTW(T, w, P, 0), 8.31451 * T / P * (1 / kMa + w / kMw), 1e-14);
    EXPECT_NEAR(air.wTV(T, air.vTW(T, w, P, 0), P), w, 1e-14);
    EXPECT_NEAR(slope([&](double x) { return air.vTW(x, w, P, 0); }, T, 0.1), air.alfa_t(T, w, P), 1e-12);
    EXPECT_NEAR(slope([&](double x) { return air.vTW(T, w, x, 0); }, P, 1.0), air.alfa_p(T, w, P), 1e-13);
    EXPECT_NEAR(slope([&](double x) { return air.vTW(T, x, P, 0); }, w, 1e-3), air.alfa_w(T, w, P), 1e-10);
    saturated();  // gas at wSatT and the surplus as liquid
    const auto v = [&](double t, double p) {
      return air.vTW(t, air.wSatT(t, p), p, 0) + water.vTPliq(t, p) * (wet - air.wSatT(t, p));
    };
    EXPECT_NEAR(slope([&](double x) { return v(x, P); }, T, 1e-2), air.alfa_t(T, wet, P), 1e-9);
    EXPECT_NEAR(slope([&](double x) { return v(T, x); }, P, 1.0), air.alfa_p(T, wet, P), 1e-12);
    EXPECT_EQ(air.wTV(T, 1, P), air.wSatT(T, P));
  }
  EXPECT_DOUBLE_EQ(air.alfa_t(400, 0.1, 1e5), air.vTW(400, 0.1, 1e5, 0) / 400);  // without a saturation as a gas
  EXPECT_DOUBLE_EQ(air.alfa_p(400, 0.1, 1e5), -air.vTW(400, 0.1, 1e5, 0) / 1e5);
}

TEST_F(MoistAir, EntropyHasLawsOfItsOwn) {
  unsaturated();
  const double T = 300, ws = air.wSatT(T, kP);
  const auto s = [&](double t, double w, double p, double wsat) { return air.sTWP(t, w, p, wsat); };
  EXPECT_DOUBLE_EQ(s(273.15, 0, kP, 0), 1000);
  // Not T ds/dT = Cp: the heat capacity of the dry air is 1000 J/(kg K) here and 1006.6 in the enthalpy.
  EXPECT_NEAR(T * slope([&](double x) { return s(x, 0, kP, 0); }, T, 0.01), 1000, 1e-5);
  EXPECT_NEAR(T * slope([&](double x) { return s(x, 0.01, kP, 0); }, T, 0.01), 1018.266, 1e-5);
  EXPECT_NEAR(s(T, 0, 2e5, 0) - s(T, 0, 1e5, 0), -287.055 * std::log(2), 1e-9);
  // Vapour at its reference pressure and at twice that, with the rounded molar mass ratio.
  for (const double pv : {611.2, 1222.4}) {
    const double w = 0.62198 * pv / (kP - pv);
    EXPECT_NEAR(s(273.15, w, kP, 0),
                1000 - 287.055 * std::log((kP - pv) / 101325) + (9155.3 - 461.52 * std::log(pv / 611.2)) * w, 1e-9);
  }
  // Saturated: vapour at pSat, the surplus with the entropy of water; at P below pSat all water is vapour.
  const double all_vapour = s(T, 0.1, 2000, 0);
  saturated();
  EXPECT_NEAR(s(T, 0.1, kP, 0) - s(T, ws, kP, 0), (0.1 - ws) * water.sTPliq(T, kP), 1e-9);
  EXPECT_NEAR(s(T, 0.1, kP, 0.05) - s(T, 0.05, kP, 0.05), 0.05 * water.sTPliq(T, kP), 1e-9);
  EXPECT_EQ(s(T, 0.1, 2000, 0), all_vapour);
}

TEST_F(MoistAir, TransportProperties) {
  unsaturated();
  // Dry air at 300 K: 26.3e-3 W/(m K) and 18.46e-6 Pa s (Incropera, tables of air at normal pressure).
  EXPECT_NEAR(air.lambdaTW(300, 0, kP, 0), 26.3e-3, 0.4e-3);
  EXPECT_NEAR(air.muTW(300, 0, kP, 0), 18.46e-6, 0.1e-6);
  // The polynomials hold for a vapour share y from 0 to 1, of which w reaches epsS only; y = 1 needs this w. Steam at
  // low pressure, 100 and 150 degC: 24.8 and 28.8 mW/(m K), 12.27 and 14.18 uPa s (IAPWS).
  const double vapour = 0.62198 / (0.62198 - 1);
  for (const auto& [T, lambda, mu] : {std::tuple{373.15, 24.8e-3, 12.27e-6}, {423.15, 28.8e-3, 14.18e-6}}) {
    EXPECT_NEAR(air.lambdaTW(T, vapour, kP, 0), lambda, 1e-3);
    EXPECT_NEAR(air.muTW(T, vapour, kP, 0), mu, 0.3e-6);
  }
  const double T = 300, w = 0.1, ws = air.wSatT(T, kP), lambda = air.lambdaTW(T, ws, kP, 0),
               mu = air.muTW(T, ws, kP, 0);
  saturated();
  EXPECT_DOUBLE_EQ(air.lambdaTW(T, w, kP, 0), lambda + water.lambdaTPliq(T, kP) * (w - ws));
  EXPECT_DOUBLE_EQ(air.muTW(T, w, kP, 0), mu + water.muTV(T, water.vTPliq(T, kP)) * (w - ws));
}

TEST_F(MoistAir, TemperatureFromEnthalpyAndInversionsThatFail) {
  unsaturated();
  double wsat = 0;
  EXPECT_NEAR(air.tsatHWP(air.hTW(320, 0.02, kP, 0), 0.02, kP, &wsat), 320, 1e-8);
  EXPECT_NEAR(wsat, air.wSatT(320, kP), 1e-9);
  EXPECT_EQ(complaints(), "");
  EXPECT_EQ(air.tsatHWP(1e9, 0.02, kP, &wsat), 373.15);  // beyond the upper limit
  air.thumTWP(300, 0.5, kP, 0);                          // far above saturation: the wet bulb would lie above T
  EXPECT_EQ(complaints(),
            "Warning - Moist Air fluid properties: Tsat=f(h,w,P) calculation dit not converge "
            "(h=1e+09 ; w=0.02 ; P=101325)\n"
            "Warning - Moist Air fluid properties: Wet bulb temperature = f(T,w,P) calculation dit not converge "
            "(T=300 ; w=0.5 ; P=101325)\n");
  EXPECT_EQ(air.Get_M(), kMw);  // of the water, on purpose
  EXPECT_EQ(air.Get_fluidType(), 6);
}

}  // namespace
}  // namespace Vk_fl_prop_lib
