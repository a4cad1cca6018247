// What ideal gases, brines and liquids have of their own.

#include <cmath>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "fluids/fluid_test.h"

namespace Vk_fl_prop_lib {
namespace {

// ---- ideal gases ----

// Published values at 1 bar. Cp, enthalpy and entropy: NIST-JANAF Thermochemical Tables, 4th edition (1998), in
// J/(mol K) and J/mol; conductivity [W/(m K)] and viscosity [Pa s]: CRC Handbook of Chemistry and Physics, tables of
// the viscosity and the thermal conductivity of gases, 300 K. The tolerances are what the polynomials, fitted over 800
// K, leave: hydrogen is the worst.
TEST_F(QuietTest, GasesHavePublishedProperties) {
  const struct {
    const GasVector& vector;
    double Cp_300, h_600_minus_300, s_600_minus_300, lambda_300, mu_300;
  } rows[] = {{kO2_IDG, 29.385, 9244 - 54, 226.451 - 205.329, 0.0263, 20.8e-6},
              {kN2_IDG, 29.125, 8894 - 54, 212.176 - 191.789, 0.0260, 17.9e-6},
              {kH2_IDG, 28.849, 8811 - 53, 151.077 - 130.858, 0.1869, 9.0e-6}};
  for (const auto& [vector, Cp, dh, ds, lambda, mu] : rows) {
    const CIdG gas(vector);
    const double M = gas.Get_M();
    EXPECT_NEAR(gas.CpTP(300, 1e5, 1) * M, Cp, 0.01 * Cp);
    EXPECT_NEAR((gas.hTP(600, 1e5) - gas.hTP(300, 1e5)) * M, dh, 0.003 * dh);
    EXPECT_NEAR((gas.sTP(600, 1e5) - gas.sTP(300, 1e5)) * M, ds, 0.003 * ds);
    EXPECT_NEAR(gas.lambdaTP(300, 1e5, 1), lambda, 0.04 * lambda);
    EXPECT_NEAR(gas.muTP(300, 1e5, 1), mu, 0.02 * mu);
    EXPECT_EQ(gas.hTP(273.15, 7e5), 100000);
    EXPECT_EQ(gas.sTP(273.15, 101325), 1000);
    EXPECT_EQ(gas.vTP(300, 1e5), 0);  // a gas has no such form
    for (const double T : {255.0, 500.0, 1000.0}) {
      const double v = gas.vTP(T, 3e5, 1);
      EXPECT_NEAR(3e5 * v, 8.31451 / M * T, 1e-9);
      EXPECT_NEAR(gas.pTV(T, v), 3e5, 1e-9);
      EXPECT_NEAR(gas.tU(gas.uTP(T, 3e5)), T, 1e-9 * T);
      EXPECT_NEAR(slope([&](double t) { return gas.CvTP(t, 1e5, 1); }, T, 0.01), gas.dCvTP_dT(T, 1e5, 1), 1e-6);
    }
  }
}

// ---- brines ----

TEST_F(QuietTest, BrinesHaveTheirConstantTermsAtTheReference) {
  for (const BrineVector* vector : {&kGlycerol_Water, &kEthylene_Glycol_Water}) {
    const CBrine f(*vector);
    const double T = vector->tRef, P = vector->pRef;
    EXPECT_EQ(f.hTP(T, P), 0);
    EXPECT_EQ(f.sTP(T, P), 0);
    EXPECT_NEAR(1 / f.vTP(T, P), vector->c[1][0], 1e-12 * vector->c[1][0]);
    EXPECT_EQ(f.CpTP(T, P, 0), vector->c[2][0]);
    EXPECT_EQ(f.lambdaTP(T, P, 0), vector->c[3][0]);
    EXPECT_EQ(f.muTP(T, P, 0), std::exp(vector->c[4][0]) * 0.001);
    const double(&c)[18] = vector->c[0];  // its temperature terms are summed with a distance of 1
    EXPECT_NEAR(f.tFreeze(), c[0] + c[1] + c[2] + c[3] + 273.15, 1e-12);
  }
}

// At 20 degC. Without glycol the vector describes water: CRC Handbook of Chemistry and Physics, properties of water in
// the range 0 to 100 degC. Half glycol: ASHRAE Handbook - Fundamentals, tables of aqueous ethylene glycol, 50 percent
// by volume; that is a little more by mass, hence the widths.
TEST_F(QuietTest, EthyleneGlycolHasPublishedProperties) {
  const struct {
    double concentration, freezing, rho, Cp, lambda, mu;
    double d_freezing, d_rho, d_Cp, d_lambda, d_mu;  // tolerances
  } rows[] = {{0, 0, 998.21, 4184.1, 0.5984, 1.0016e-3, 0.7, 1.5, 30, 0.01, 0.05e-3},
              {50, -36.8, 1070, 3319, 0.380, 3.94e-3, 2, 10, 70, 0.012, 0.2e-3}};
  for (const auto& row : rows) {
    const CBrine f = brine(kEthylene_Glycol_Water, row.concentration);
    EXPECT_NEAR(f.tFreeze(), 273.15 + row.freezing, row.d_freezing);
    EXPECT_NEAR(1 / f.vTP(293.15, 101325), row.rho, row.d_rho);
    EXPECT_NEAR(f.CpTP(293.15, 101325, 0), row.Cp, row.d_Cp);
    EXPECT_NEAR(f.lambdaTP(293.15, 101325, 0), row.lambda, row.d_lambda);
    EXPECT_NEAR(f.muTP(293.15, 101325, 0), row.mu, row.d_mu);
  }
}

TEST(BrineDeathTest, HeatCapacityOfZeroEndsTheInversion) {
  BrineVector vector = kGlycerol_Water;
  vector.c[2][0] = 0;
  EXPECT_DEATH(CBrine(vector).tHP(1e4, 1e5), "Cp!=0.*Vk_lib/Vk_fl_prop_lib/fl_class/Brine.*442");
}

// ---- liquids ----

TEST_F(QuietTest, OilHasItsReferenceAndItsPolynomials) {
  const CLiquide oil(kOil);
  EXPECT_EQ(oil.hTP(290, 1e5), 5000);
  EXPECT_EQ(oil.sTP(290, 1e5), 20);
  const double T = 2;  // where the powers are exact: 1, 2, 4, 8, 16, 32
  EXPECT_NEAR(1 / oil.vT(T), 1000 - 0.6 - 16e-4 + 16e-7 - 48e-10 + 128e-13, 1e-12);
  EXPECT_NEAR(oil.CpTP(T, 1e5, 0), 1500 + 4 - 4e-3 + 24e-6 - 32e-9 + 32e-12, 1e-12);
  EXPECT_NEAR(oil.lambdaTP(T, 1e5, 0), 0.15 - 2e-4 + 4e-7 - 16e-10 + 16e-13 - 32e-16, 1e-16);
  EXPECT_NEAR(std::log(oil.muTP(T, 1e5, 0)), 2 - 0.06 + 16e-5 - 8e-8 + 16e-11 - 32e-14, 1e-15);
}

TEST_F(QuietTest, GasMakesALiquidSofter) {
  const CLiquide oil(kOil);
  const double K = 1 / kOil.kappa;
  for (const double P : {5e4, 1e5, 1e7}) {
    EXPECT_NEAR(oil.bulk(P, 0, 1.3), K, 1e-12 * K);
    // The bulk modulus of isothermal gas bubbles is that of the density law, rho dP/drho.
    const auto rho = [&](double p) { return oil.rhoBulk(300, p, 0.05); };
    EXPECT_NEAR(oil.bulk(P, 0.05, 1) * slope(rho, P, 1e-4 * P), rho(P), 1e-6 * rho(P));
  }
  EXPECT_NEAR(oil.rhoBulk(300, 1e5, 0.05), 1 / oil.vT(300), 1e-12 / oil.vT(300));
  // At 16 pRef and n = 2 the gas has shrunk to a quarter, or, by the other law, to a 256th; the compliances add up.
  EXPECT_NEAR(1 / oil.bulk2(16e5, 0.2, 2), 0.05 / 32e5 + 0.95 / K, 1e-18);
  EXPECT_NEAR(1 / oil.bulk2m(16e5, 0.2, 2), 0.2 / 256 / 32e5 + (1 - 0.2 / 256) / K, 1e-18);
  // By the law of the compressed volumes: (256 + 0.2) / bulk = 256 / K + 0.2 / (n P).
  EXPECT_NEAR(1 / oil.bulk(16e5, 0.2, 2), (256 / K + 0.2 / 32e5) / 256.2, 1e-20);
}

}  // namespace
}  // namespace Vk_fl_prop_lib
