#include "Vk_lib/Vk_fl_prop_lib/fl_class/MultiPhase.h"

#include <cmath>

#include "fluids/quiet_test.h"

namespace Vk_fl_prop_lib {
namespace {

/// A fluid whose phases feel T alone, so that along its saturation line every derivative of a phase is the one at
/// constant pressure. h = 2 T and 3 T + 500, v = 1 and 4 + growth T, pSat = T^2 from 10 K to 100 K.
class SimpleFluid : public CMultiPhase {
 public:
  explicit SimpleFluid(double growth_of_gas = 0.0) : growth(growth_of_gas) {
    tMin = 10, pMin = 100, tCrit = 100, pCrit = 10000, vCrit = 3, pMax = pCrit;
  }

  double pSat(double T, double) const override { return T * T; }
  double dpsat_dt(double T) const override { return 2 * T; }
  double hTPliq(double T, double) const override { return 2 * T; }
  double hTPgaz(double T, double) const override { return 3 * T + 500; }
  double CpTPliq(double, double) const override { return 2; }
  double CpTPgaz(double, double) const override { return 3; }
  double vTPliq(double, double) const override { return 1; }
  double vTPgaz(double T, double) const override { return 4 + growth * T; }
  double alfa_tliq(double, double) const override { return 0.125; }
  double alfa_tgaz(double, double) const override { return growth; }
  double alfa_pliq(double, double) const override { return -0.5; }
  double alfa_pgaz(double, double) const override { return -0.25; }
  double lambdaTPliq(double, double) const override { return 10; }
  double lambdaTPgaz(double, double) const override { return 2; }
  double tHP(double h, double P) const override {
    const double Ts = tSat(P);
    return h < 2 * Ts ? h / 2 : h > 3 * Ts + 500 ? (h - 500) / 3 : Ts;
  }
  double hPS(double, double s) const override { return s * 100; }
  double hPV(double P, double v) const override { return 7 * v + P; }

  void loadFile(const char*) override {}
  int Get_fluidType() const override { return 5; }
  double muTV(double, double) const override { return 0; }
  double sPH(double, double) const override { return 0; }
  double muPH(double, double) const override { return 0; }
  double muTP(double, double, double) const override { return 0; }
  double sTP(double, double, double) const override { return 0; }
  double sTPliq(double, double) const override { return 0; }
  using CMultiPhase::sTP;

 private:
  double growth;
};

class MultiPhase : public QuietTest {
 protected:
  SimpleFluid fluid;
};

TEST_F(MultiPhase, QualitySelectsThePhaseAtAnyPressure) {
  struct Row {
    const char* name;
    double (CMultiPhase::*law)(double, double, double) const;
    double liquid, gas, middle;  // at 50 K
  };
  const Row rows[] = {
      {"hTP", &CMultiPhase::hTP, 100, 650, 375},
      {"vTP", &CMultiPhase::vTP, 1, 4, 2.5},
      {"CpTP", &CMultiPhase::CpTP, 2, 3, 2.5},
      {"alfa_t", &CMultiPhase::alfa_t, 0.125, 0, 0.0625},
      {"alfa_p", &CMultiPhase::alfa_p, -0.5, -0.25, -0.375},
      {"lambdaTP", &CMultiPhase::lambdaTP, 10, 2, 2 * 2 - 1 * 10},  // y = 0.5 * 4 / 1, over the liquid's volume
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    for (const double P : {1.0, 2500.0}) {
      for (const double x : {-0.5, 0.0}) EXPECT_EQ((fluid.*row.law)(50, P, x), row.liquid);
      for (const double x : {1.0, 1.5}) EXPECT_EQ((fluid.*row.law)(50, P, x), row.gas);
      EXPECT_EQ((fluid.*row.law)(50, P, 0.5), row.middle);
    }
  }
  EXPECT_EQ(fluid.vTP(50, 1, 0.25), 1.75);
  for (const double x : {0.0, 0.5, 1.0}) {
    EXPECT_EQ(fluid.uTP(50, 2, x), 100 + 550 * x - 2 * (1 + 3 * x));
    EXPECT_EQ(fluid.hTX(50, x), 100 + 550 * x);
    EXPECT_EQ(fluid.vTX(50, x), 1 + 3 * x);
    EXPECT_EQ(fluid.uTX(50, x), 100 + 550 * x - 2500 * (1 + 3 * x));
  }
}

TEST_F(MultiPhase, SaturationTemperatureInvertsThePressure) {
  for (const double T : {10.0, 10.5, 40.0, 99.0, 100.0}) EXPECT_NEAR(fluid.tSat(T * T), T, 1e-7 * T);
  EXPECT_EQ(fluid.tSat(99.9), 100);  // below pMin: the critical temperature, without a warning
}

TEST_F(MultiPhase, QualityFromEnthalpyStaysWithinTheEnds) {
  for (const auto& [h, x] : {std::pair{99.0, 0.0}, {100.0, 0.0}, {237.5, 0.25}, {650.0, 1.0}, {700.0, 1.0}}) {
    EXPECT_EQ(fluid.xTSatH(50, h), x);
    EXPECT_NEAR(fluid.xPH(2500, h), x, 1e-7);
  }
}

TEST_F(MultiPhase, EnthalpySelectsThePhase) {
  EXPECT_EQ(fluid.CpPH(2500, 60), 2);
  EXPECT_EQ(fluid.CpPH(2500, 800), 3);
  EXPECT_NEAR(fluid.CpPH(2500, 237.5), 2.25, 1e-7);
  const SimpleFluid growing(0.01);
  EXPECT_EQ(growing.vPH(2500, 60), 1);
  EXPECT_DOUBLE_EQ(growing.vPH(2500, 800), 4 + 0.01 * 100);  // superheated to 100 K
  EXPECT_NEAR(growing.vPH(2500, 375), (1 + 4.5) / 2, 1e-7);
  EXPECT_EQ(fluid.lambdaPH(2500, 60), 10);
  EXPECT_EQ(fluid.lambdaPH(2500, 800), 2);
  EXPECT_NEAR(fluid.lambdaPH(2500, 375), 0.8 * 2 + 0.2 * 10, 1e-6);  // y = 0.5 * 4 / 2.5, over the mixture's volume
}

TEST_F(MultiPhase, OtherPairsGoThroughTheEnthalpy) {
  EXPECT_EQ(fluid.uPV(2500, 10), 70 + 2500 - 25000);
  EXPECT_EQ(fluid.tPS(2500, 0.6), 30);
  EXPECT_EQ(fluid.tPV(2500, -350), 25);
  EXPECT_NEAR(fluid.pUV(fluid.uPV(2500, 3), 3), 2500, 1e-4);
}

TEST_F(MultiPhase, DerivativesOfOnePhaseTakeTheGasAboveHalf) {
  const SimpleFluid growing(0.01);
  EXPECT_EQ(growing.beta_h(50, 1, 0.5), 0.0625);
  EXPECT_EQ(growing.beta_h(50, 1, 0.5000001), 0.01 / 3);
  EXPECT_EQ(growing.beta_p(50, 1, 0.5), -0.5 - 0.125 * (1 - 0.125 * 50) / 2);
  EXPECT_DOUBLE_EQ(growing.beta_p(50, 1, 0.5000001), -0.25 - 0.01 * (4.5 - 0.5) / 3);
}

TEST_F(MultiPhase, DerivativesOfTheMixtureAreThoseAlongTheSaturationLine) {
  // The volumes are constant in each phase, so the terms of alfa_p are taken out again.
  const double x = 0.3, T = 50, P = 2500, h = fluid.hTX(T, x);
  const auto v_of_h = [&](double enthalpy) { return fluid.vTX(T, fluid.xTSatH(T, enthalpy)); };
  EXPECT_NEAR(fluid.beta_h2(T, P, x), slope(v_of_h, h, 1.0), 1e-12);
  const auto v_of_P = [&](double pressure) {
    const double Ts = std::sqrt(pressure);
    return fluid.vTX(Ts, fluid.xTSatH(Ts, h));
  };
  EXPECT_NEAR(fluid.beta_p2(T, P, x) - (x * -0.25 + (1 - x) * -0.5), slope(v_of_P, P, 1.0), 1e-9);
}

TEST_F(MultiPhase, HeatCapacityAtConstantVolume) {
  // Liquid: Cp + T (dv/dT)^2 / (dv/dP).
  EXPECT_DOUBLE_EQ(fluid.CvTP(50, 2500, 0), 2 + 50 * 0.125 * 0.125 / -0.5);

  // Mixture: du/dT along the saturation line at constant v, for phases that really follow their derivatives.
  class Consistent : public SimpleFluid {
   public:
    Consistent() : SimpleFluid(0.01) {}
    double vTPliq(double T, double) const override { return 1 + 0.125 * T; }
    double vTPgaz(double T, double) const override { return 40 + 0.01 * T; }
  };
  const Consistent consistent;
  const double T = 50, v = consistent.vTX(T, 0.3);
  const auto u = [&](double temperature) {
    const double vl = consistent.vTX(temperature, 0), vg = consistent.vTX(temperature, 1);
    return consistent.uTX(temperature, (v - vl) / (vg - vl));
  };
  EXPECT_NEAR(consistent.CvTP(T, 2500, 0.3), slope(u, T, 0.01), 1e-5);
}

TEST_F(MultiPhase, CoefficientsOfAVolume) {
  // v = 2, h = 100 and P = 2500, in a liquid with bh = 1/16 and bp = -0.5 + 0.328125.
  const double bh = 0.0625, bp = -0.171875;
  const double liquid[] = {0,  bh * 100 - 2,  -bh,           1 - bh * 2500, -(bp / 2 + bh), -(4 + bp * 100),
                           bp, bp * 2500 + 2, -(bp / 2 + bh)};
  fluid.calCoeff(50, 2500, 0, 100, 2, 0);
  for (std::size_t i = 0; i < 9; ++i) EXPECT_EQ(fluid.calcCoeffs[i], liquid[i]) << i;
  fluid.calCoeff(50, 2500, 0.3, 100, 2, 2.0);
  EXPECT_EQ(fluid.calcCoeffs[2], -fluid.beta_h2(50, 2500, 0.3));
  EXPECT_EQ(fluid.calcCoeffs[6], fluid.beta_p2(50, 2500, 0.3));
}

}  // namespace
}  // namespace Vk_fl_prop_lib
