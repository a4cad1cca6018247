#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"

#include <cmath>

#include "fluids/quiet_test.h"

namespace Vk_fl_prop_lib {
namespace {

constexpr double kTemperatures[] = {255, 273.15, 320, 350, 500, 750, 1000};
constexpr double kPressures[] = {2e4, 101325, 3e5, 7e7};

/// A gas with published values at 1 bar. Cp, enthalpy and entropy: NIST-JANAF Thermochemical Tables, 4th edition
/// (1998), in J/(mol K) and J/mol; conductivity [W/(m K)] and viscosity [Pa s]: CRC Handbook of Chemistry and Physics,
/// tables of the viscosity and the thermal conductivity of gases, 300 K.
struct Gas {
  const char* name;
  const GasVector& vector;
  double Cp_300, h_600_minus_300, s_600_minus_300;
  double lambda_300, mu_300;
};
void PrintTo(const Gas& gas, std::ostream* os) { *os << gas.name; }

const Gas kGases[] = {
    {"O2", kO2_IDG, 29.385, 9244 - 54, 226.451 - 205.329, 0.0263, 20.8e-6},
    {"N2", kN2_IDG, 29.125, 8894 - 54, 212.176 - 191.789, 0.0260, 17.9e-6},
    {"H2", kH2_IDG, 28.849, 8811 - 53, 151.077 - 130.858, 0.1869, 9.0e-6},
};

class EveryGas : public QuietTest, public ::testing::WithParamInterface<Gas> {
 protected:
  const GasVector& vector = GetParam().vector;
  const CIdG gas{vector};
};
INSTANTIATE_TEST_SUITE_P(Gases, EveryGas, ::testing::ValuesIn(kGases),
                         [](const auto& instance) { return instance.param.name; });

// The tolerances are what the polynomials, fitted over 800 K, leave: hydrogen is the worst.
TEST_P(EveryGas, HasPublishedProperties) {
  const Gas& published = GetParam();
  const double M = gas.Get_M();
  EXPECT_NEAR(gas.CpTP(300, 1e5, 1) * M, published.Cp_300, 0.01 * published.Cp_300);
  EXPECT_NEAR((gas.hTP(600, 1e5) - gas.hTP(300, 1e5)) * M, published.h_600_minus_300,
              0.003 * published.h_600_minus_300);
  EXPECT_NEAR((gas.sTP(600, 1e5) - gas.sTP(300, 1e5)) * M, published.s_600_minus_300,
              0.003 * published.s_600_minus_300);
  EXPECT_NEAR(gas.lambdaTP(300, 1e5, 1), published.lambda_300, 0.04 * published.lambda_300);
  EXPECT_NEAR(gas.muTP(300, 1e5, 1), published.mu_300, 0.02 * published.mu_300);
  EXPECT_EQ(gas.muTV(300, 123), gas.muTP(300, 1e5, 1));
}

TEST_P(EveryGas, HasTheReferenceOfItsVector) {
  for (const double P : kPressures) EXPECT_EQ(gas.hTP(vector.tRef, P, 0.5), 100000);
  EXPECT_EQ(gas.sTP(vector.tRef, vector.pRef, 0.5), 1000);
  EXPECT_EQ(gas.uTP(vector.tRef, 1e5, 0.5), 100000 - R * vector.tRef / vector.M);
}

TEST_P(EveryGas, ObeysThermodynamics) {
  const double specific_R = R / vector.M;
  for (const double T : kTemperatures) {
    for (const double P : kPressures) {
      const auto h = [&](double t) { return gas.hTP(t, P); };
      const auto s = [&](double t) { return gas.sTP(t, P); };
      const auto s_of_P = [&](double p) { return gas.sTP(T, p); };
      const auto v = [&](double t) { return gas.vTP(t, P, 1); };
      const auto v_of_P = [&](double p) { return gas.vTP(T, p, 1); };
      const auto Cv = [&](double t) { return gas.CvTP(t, P, 1); };
      const double Cp = gas.CpTP(T, P, 1);
      // A step of 0.01 K leaves some 1e-9 of rounding and of the third derivative, relative to Cp.
      EXPECT_NEAR(slope(h, T, 0.01), Cp, 1e-8 * Cp);
      EXPECT_NEAR(slope(s, T, 0.01), Cp / T, 1e-8 * Cp / T);
      EXPECT_NEAR(slope(s_of_P, P, 1e-4 * P), -specific_R / P, 1e-7 * specific_R / P);
      EXPECT_NEAR(slope(v, T, 0.01), gas.alfa_t(T, P, 1), 1e-8 * gas.alfa_t(T, P, 1));
      EXPECT_NEAR(slope(v_of_P, P, 1e-4 * P), gas.alfa_p(T, P, 1), -1e-7 * gas.alfa_p(T, P, 1));
      EXPECT_NEAR(slope(Cv, T, 0.01), gas.dCvTP_dT(T, P, 1), 1e-8 * Cp);
      EXPECT_NEAR(P * v(T), specific_R * T, 1e-14 * specific_R * T);
      EXPECT_NEAR(gas.uTP(T, P), h(T) - P * v(T), 1e-14 * std::fabs(h(T)) + 1e-14 * specific_R * T);
      EXPECT_NEAR(Cp - Cv(T), specific_R, 1e-14 * Cp);
    }
  }
}

TEST_P(EveryGas, InversionsReturnToTheState) {
  for (const double T : kTemperatures) {
    for (const double P : kPressures) {
      const double h = gas.hTP(T, P), s = gas.sTP(T, P), u = gas.uTP(T, P), v = gas.vTP(T, P, 1);
      const double Cp = gas.CpTP(T, P, 1);
      EXPECT_NEAR(gas.tHP(h, 12345), T, 1e-9 * T);  // P is not read
      EXPECT_NEAR(gas.tPS(P, s), T, 1e-9 * T);
      EXPECT_NEAR(gas.tU(u), T, 1e-9 * T);
      EXPECT_NEAR(gas.tPV(P, v), T, 1e-14 * T);
      EXPECT_NEAR(gas.pTV(T, v), P, 1e-14 * P);
      EXPECT_NEAR(gas.pUV(u, v), P, 1e-9 * P);
      EXPECT_NEAR(gas.uPV(P, v), u, 1e-13 * Cp * T);
      EXPECT_NEAR(gas.hPV(P, v), h, 1e-13 * Cp * T);
      EXPECT_NEAR(gas.hPS(P, s), h, 1e-9 * Cp * T);
      EXPECT_NEAR(gas.vPH(P, h), v, 1e-9 * v);
      EXPECT_NEAR(gas.sPH(P, h), s, 1e-8 * Cp);
      EXPECT_NEAR(gas.CpPH(P, h), Cp, 1e-8 * Cp);
      EXPECT_NEAR(gas.lambdaPH(P, h), gas.lambdaTP(T, P, 1), 1e-8 * gas.lambdaTP(T, P, 1));
      EXPECT_NEAR(gas.muPH(P, h), gas.muTP(T, P, 1), 1e-8 * gas.muTP(T, P, 1));
    }
  }
}

TEST_P(EveryGas, TemperaturesStayWithinTheLimits) {
  EXPECT_EQ(gas.tHP(gas.hTP(200, 1e5), 1e5), 250);
  EXPECT_EQ(gas.tPS(1e5, gas.sTP(1200, 1e5)), 1050);
  EXPECT_EQ(gas.tU(gas.uTP(200, 1e5)), 250);
  const std::string warning = "Warning : Thermodynamical function <invertion_x> dit not converge\n\n";
  EXPECT_EQ(complaints(), warning + warning + warning);
}

}  // namespace
}  // namespace Vk_fl_prop_lib
