#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"

#include <cmath>

#include "fluids/liquid_identities.h"

namespace Vk_fl_prop_lib {
namespace {

// A made-up oil with every coefficient in use.
// clang-format off
constexpr LiquidVector kOil = {
    .kappa = 6e-10, .tMin = 200, .tMax = 450, .pRef = 1e5, .tRef = 290, .hRef = 5000, .sRef = 20,
    .rho = {1000, -0.3, -4e-4, 2e-7, -3e-10, 4e-13}, .cp = {1500, 2, -1e-3, 3e-6, -2e-9, 1e-12},
    .lambda = {0.15, -1e-4, 1e-7, -2e-10, 1e-13, -1e-16}, .mu = {2, -0.03, 4e-5, -1e-8, 1e-11, -1e-14}};
// clang-format on

class Liquid : public QuietTest {
 protected:
  const CLiquide oil{kOil};
};

TEST_F(Liquid, HasItsReferenceAndItsPolynomials) {
  EXPECT_EQ(oil.hTP(290, 1e5), 5000);
  EXPECT_EQ(oil.sTP(290, 1e5), 20);
  const double T = 2;  // where the powers are exact: 1, 2, 4, 8, 16, 32
  EXPECT_NEAR(1 / oil.vT(T), 1000 - 0.6 - 16e-4 + 16e-7 - 48e-10 + 128e-13, 1e-12);
  EXPECT_NEAR(oil.CpTP(T, 1e5, 0), 1500 + 4 - 4e-3 + 24e-6 - 32e-9 + 32e-12, 1e-12);
  EXPECT_NEAR(oil.lambdaTP(T, 1e5, 0), 0.15 - 2e-4 + 4e-7 - 16e-10 + 16e-13 - 32e-16, 1e-16);
  EXPECT_NEAR(std::log(oil.muTP(T, 1e5, 0)), 2 - 0.06 + 16e-5 - 8e-8 + 16e-11 - 32e-14, 1e-15);
}

TEST_F(Liquid, ObeysThermodynamics) {
  for (const double T : {260.0, 300.0, 390.0}) {
    for (const double P : {1e5, 3e5, 2e7}) expect_liquid_identities(oil, T, P, kOil.kappa);
    const double Cp = oil.CpTP(T, 1e5, 0);
    EXPECT_NEAR(oil.vTP(T, 1e5), oil.vT(T), 1e-14 * oil.vT(T));
    EXPECT_NEAR(slope([&](double t) { return oil.hTP(t, 1e5); }, T, 0.01), Cp, 1e-8 * Cp);
    EXPECT_NEAR(slope([&](double t) { return oil.sTP(t, 1e5); }, T, 0.01), Cp / T, 1e-8 * Cp / T);
  }
}

TEST_F(Liquid, InversionsReturnToTheState) {
  for (const double T : {260.0, 300.0, 390.0}) {
    for (const double P : {1e5, 3e5, 2e7}) {
      expect_liquid_round_trips(oil, T, P);
      EXPECT_NEAR(oil.CpPH(1e5, oil.hTP(T, 1e5)), oil.CpTP(T, 1e5, 0), 1e-6 * oil.CpTP(T, 1e5, 0));
    }
  }
}

TEST_F(Liquid, TemperatureStaysWithinTheLimits) {
  EXPECT_EQ(oil.tHP(oil.hTP(150, 1e5), 1e5), 200);
  EXPECT_EQ(oil.tPS(1e5, oil.sTP(500, 1e5)), 450);
  EXPECT_EQ(oil.tPV(1e5, oil.vTP(500, 1e5)), 450);
  EXPECT_NE(complaints(), "");
}

TEST_F(Liquid, GasMakesItSofter) {
  const double K = 1 / kOil.kappa;
  for (const double P : {5e4, 1e5, 1e7}) {
    EXPECT_NEAR(oil.bulk(P, 0, 1.3), K, 1e-12 * K);
    EXPECT_NEAR(oil.bulk2(P, 0, 1.3), K, 1e-12 * K);
    EXPECT_NEAR(oil.bulk2(P, 0.05, 1), oil.bulk2m(P, 0.05, 1), 1e-12 * K);
    // The bulk modulus of isothermal gas bubbles is that of the density law, rho dP/drho.
    const double rho = oil.rhoBulk(300, P, 0.05);
    const double stiffness = rho / slope([&](double p) { return oil.rhoBulk(300, p, 0.05); }, P, 1e-4 * P);
    EXPECT_NEAR(oil.bulk(P, 0.05, 1), stiffness, 1e-6 * stiffness);
  }
  EXPECT_NEAR(oil.rhoBulk(300, 1e5, 0.05), 1 / oil.vT(300), 1e-12 / oil.vT(300));
  // At pRef the compliances of 5 percent of gas and 95 percent of liquid add up.
  EXPECT_NEAR(1 / oil.bulk2(1e5, 0.05, 1.4), 0.05 / 1.4e5 + 0.95 / K, 1e-18);
  // At 16 pRef and n = 2 the gas has shrunk to a quarter, or, by the other law, to a 256th.
  EXPECT_NEAR(1 / oil.bulk2(16e5, 0.2, 2), 0.05 / 32e5 + 0.95 / K, 1e-18);
  EXPECT_NEAR(1 / oil.bulk2m(16e5, 0.2, 2), 0.2 / 256 / 32e5 + (1 - 0.2 / 256) / K, 1e-18);
}

}  // namespace
}  // namespace Vk_fl_prop_lib
