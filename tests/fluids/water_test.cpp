#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/Eau.h"
#include "fluids/quiet_test.h"

namespace Vk_fl_prop_lib {
namespace {

struct State {
  double T, P;  // K, Pa
};

// Within the sub-regions 1 and 2.
const std::vector<State> kWater = {{280, 1e5}, {300, 3e6}, {300, 8e7}, {350, 1e5}, {450, 2e6}, {550, 1e7}, {620, 3e7}};
const std::vector<State> kSteam = {{274, 500},  {300, 3500}, {373.15, 1e5}, {450, 5e5}, {573.15, 5e6},
                                   {700, 3500}, {700, 1e7},  {1000, 1e6},   {700, 3e7}};

class Water : public QuietTest {
 protected:
  const CEau water;
};

// ---- published values ----

TEST_F(Water, AgreesWithTheIfc67CheckTables) {
  // Density [kg/m3] and internal energy [J/kg] from an independent implementation of IFC-67. The last state lies outside
  // of sub-region 2, where row 9 of B and the polynomial beta_L weigh most.
  struct Row {
    State state;
    double rho, u;
  };
  constexpr Row liquid[] = {{{300, 3e6}, 997.95721560998174, 112247.43313085975},
                            {{300, 8e7}, 1029.7256888266911, 106310.47344628950},
                            {{500, 3e6}, 831.84196191567298, 971985.91117384087}};
  constexpr Row vapour[] = {{{300, 3500}, 2.5316826343790743e-2, 2412405.0932077002},
                            {{700, 3500}, 1.0834441421293962e-2, 3012229.4965919587},
                            {{700, 3e7}, 183.90041953968711, 2474981.3799304822}};
  for (const auto& [at, rho, u] : liquid) {
    EXPECT_NEAR(1 / water.vTPliq(at.T, at.P), rho, 1e-11 * rho) << at.T;
    EXPECT_NEAR(water.uTP(at.T, at.P, 0), u, 1e-11 * u) << at.T;
  }
  for (const auto& [at, rho, u] : vapour) {
    EXPECT_NEAR(1 / water.vTPgaz(at.T, at.P), rho, 1e-11 * rho) << at.T;
    EXPECT_NEAR(water.uTP(at.T, at.P, 1), u, 1e-11 * u) << at.T;
  }
  // The same source, 9 digits, and their slip of one part in 1e8 at 300 K.
  EXPECT_NEAR(water.pSat(300, 0), 3532.3426, 1e-4);
  EXPECT_NEAR(water.pSat(500, 0), 2639615.72, 0.01);
  EXPECT_NEAR(water.pSat(600, 0), 12349390.2, 0.1);
}

TEST_F(Water, AgreesWithSteamTables) {
  // Smith, Van Ness and Abbott, Introduction to Chemical Engineering Thermodynamics, appendix F (from the formulation).
  EXPECT_NEAR(water.hTX(140 + 273.15, 1), 2733.1e3, 50);
  EXPECT_NEAR(water.hTX(142 + 273.15, 1), 2735.6e3, 50);
  EXPECT_NEAR(water.vTPgaz(500 + 273.15, 8e5), 443.17e-3, 5e-6);
  EXPECT_NEAR(water.vTPgaz(550 + 273.15, 8e5), 472.49e-3, 5e-6);

  // Saturated water and steam by temperature; entropies here fix the two constants that no volume and enthalpy feels.
  struct Row {
    double t, p_bar, v_gas, u_gas_kJ, h_gas_kJ, s_liquid_kJ, s_gas_kJ;
  };
  constexpr Row rows[] = {{0.01, 0.006112, 206.163, 2375.6, 2501.6, 0.0000, 9.1575},
                          {1, 0.006566, 192.607, 2376.9, 2503.4, 0.0153, 9.1311},
                          {2, 0.007055, 179.923, 2378.3, 2505.2, 0.0306, 9.1047},
                          {3, 0.007575, 168.169, 2379.7, 2507.1, 0.0459, 9.0785},
                          {4, 0.008129, 157.272, 2381.1, 2508.9, 0.0611, 9.0526}};
  for (const Row& row : rows) {
    const double T = row.t + 273.15, P = water.pSat(T, 0);
    EXPECT_NEAR(P, row.p_bar * 1e5, 0.055) << row.t;
    EXPECT_NEAR(water.vTX(T, 1), row.v_gas, 6e-4) << row.t;
    EXPECT_NEAR(water.uTX(T, 1), row.u_gas_kJ * 1e3, 55) << row.t;
    EXPECT_NEAR(water.hTX(T, 1), row.h_gas_kJ * 1e3, 55) << row.t;
    EXPECT_NEAR(water.sTP(T, P, 0), row.s_liquid_kJ * 1e3, 0.055) << row.t;
    EXPECT_NEAR(water.sTP(T, P, 1), row.s_gas_kJ * 1e3, 0.055) << row.t;
  }
}

TEST_F(Water, EnergyAndEntropyOfTheLiquidAreZeroAtTheTriplePoint) {
  const double P = water.pSat(273.16, 0);
  EXPECT_NEAR(P, 611.2, 0.05);
  EXPECT_NEAR(water.uTP(273.16, P, 0), 0, 1e-3);
  EXPECT_NEAR(water.sTPliq(273.16, P), 0, 1e-3);
}

TEST_F(Water, TransportPropertiesAgreeWithReferenceValues) {
  // IAPWS reference values at 0.1 MPa, 20 degC and 25 degC, and of saturated steam at 100 degC.
  EXPECT_NEAR(water.muTV(293.15, 1 / 998.2), 1.0016e-3, 5e-6);
  EXPECT_NEAR(water.muTV(298.15, 1 / 997.05), 0.8900e-3, 5e-6);
  EXPECT_NEAR(water.muTV(373.15, 1 / 0.598), 12.23e-6, 1e-7);
  EXPECT_NEAR(water.lambdaTPliq(298.15, 1e5), 0.6065, 0.012);  // a fit of 2 percent
  EXPECT_NEAR(water.lambdaTPgaz(373.15, 1e5), 0.0246, 0.0012);
}

// ---- identities of thermodynamics, phase by phase ----

using Law = double (CMultiPhase::*)(double, double) const;
struct Phase {
  double x;
  const std::vector<State>& states;
  Law v, h, s, Cp, v_T, v_P, h_P;
};
const Phase kPhases[] = {
    {0, kWater, &CMultiPhase::vTPliq, &CMultiPhase::hTPliq, &CMultiPhase::sTPliq, &CMultiPhase::CpTPliq,
     &CMultiPhase::alfa_tliq, &CMultiPhase::alfa_pliq, &CMultiPhase::dhliqDp},
    {1, kSteam, &CMultiPhase::vTPgaz, &CMultiPhase::hTPgaz, &CMultiPhase::sTPgaz, &CMultiPhase::CpTPgaz,
     &CMultiPhase::alfa_tgaz, &CMultiPhase::alfa_pgaz, &CMultiPhase::dhgazDp}};

TEST_F(Water, DerivativesBelongToTheirFunctions) {
  for (const Phase& phase : kPhases) {
    for (const auto& [T, P] : phase.states) {
      SCOPED_TRACE(testing::Message() << "x = " << phase.x << " at " << T << " K and " << P << " Pa");
      const auto by_T = [&, P = P, T = T](Law law) {
        return slope([&](double x) { return (water.*law)(x, P); }, T, 0.01);
      };
      const auto by_P = [&, P = P, T = T](Law law) {
        return slope([&](double x) { return (water.*law)(T, x); }, P, 1e-3 * P);
      };
      const double v = (water.*phase.v)(T, P), Cp = (water.*phase.Cp)(T, P);
      const double v_T = (water.*phase.v_T)(T, P), v_P = (water.*phase.v_P)(T, P);
      EXPECT_NEAR(by_T(phase.h), Cp, 1e-6 * Cp);
      EXPECT_NEAR(by_T(phase.s) * T, Cp, 1e-6 * Cp);
      EXPECT_NEAR(by_T(phase.v), v_T, 1e-6 * std::fabs(v_T) + 1e-11 * v);
      EXPECT_NEAR(by_P(phase.v), v_P, 1e-5 * std::fabs(v_P) + 1e-9 * v / P);
      EXPECT_NEAR(by_P(phase.s), -v_T, 1e-5 * std::fabs(v_T) + 1e-8 / P);
      EXPECT_NEAR(by_P(phase.h), v - T * v_T, 1e-5 * v + 1e-5 / P);
      EXPECT_DOUBLE_EQ((water.*phase.h_P)(T, P), v - T * v_T);
      EXPECT_NEAR(water.CvTP(T, P, phase.x), Cp + T * v_T * v_T / v_P, 1e-9 * Cp);
    }
  }
}

TEST_F(Water, SaturationSlopeBelongsToTheSaturationLine) {
  for (const double T : {253.15, 273.16, 300.0, 373.15, 500.0, 600.0, 645.0}) {
    const double dp = water.dpsat_dt(T);
    EXPECT_NEAR(slope([&](double x) { return water.pSat(x, 0); }, T, 1e-3), dp, 1e-7 * dp) << T;
  }
  // At the critical point it is Pc / Tc (1 / k9 - k1), and it has no guard above.
  EXPECT_DOUBLE_EQ(water.dpsat_dt(647.3), 2.212e7 / 647.3 * (1.0 / 6 + 7.691234564));
  EXPECT_GT(water.dpsat_dt(700), water.dpsat_dt(647.3));
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

TEST_F(Water, SaturationPressureStopsAtTheCriticalPoint) {
  EXPECT_EQ(water.pSat(647.3, 0), 2.212e7);
  EXPECT_EQ(water.pSat(647.3, 5e5), 2.212e7);
  EXPECT_EQ(water.pSat(1000, 0), 2.212e7);
  EXPECT_LT(water.pSat(647.29, 0), 2.212e7);
}

// ---- quality and inversions ----

TEST_F(Water, QualitySelectsThePhaseOfTheEntropy) {
  const double T = 400, P = 3e5, sl = water.sTPliq(T, P), sg = water.sTPgaz(T, P);
  EXPECT_EQ(water.sTP(T, P, -0.5), sl);
  EXPECT_EQ(water.sTP(T, P, 1.5), sg);
  EXPECT_DOUBLE_EQ(water.sTP(T, P, 0.25), 0.75 * sl + 0.25 * sg);
}

TEST_F(Water, InversionsComeBackToTheTemperature) {
  for (const Phase& phase : kPhases) {
    for (const auto& [T, P] : phase.states) {
      if (P < 611 || P >= 2.212e7) continue;  // no saturation to start from
      SCOPED_TRACE(testing::Message() << "x = " << phase.x << " at " << T << " K and " << P << " Pa");
      const double v = (water.*phase.v)(T, P), h = (water.*phase.h)(T, P), s = (water.*phase.s)(T, P);
      EXPECT_NEAR(water.tHP(h, P), T, 1e-6 * T);
      EXPECT_NEAR(water.tPS(P, s), T, 1e-6 * T);
      EXPECT_NEAR(water.tPV(P, v), T, 1e-6 * T);
      EXPECT_NEAR(water.sPH(P, h), s, 1e-3);
      EXPECT_NEAR(water.hPS(P, s), h, 1);
      EXPECT_NEAR(water.hPV(P, v), h, 1);
      EXPECT_NEAR(water.vPH(P, h), v, 1e-6 * v);
      EXPECT_NEAR(water.muPH(P, h), water.muTV(T, v), 1e-6 * water.muTV(T, v));
      EXPECT_EQ(water.muTP(T, P, phase.x), water.muPH(P, h));
    }
  }
}

TEST_F(Water, BetweenThePhasesTheTemperatureIsTheSaturationTemperature) {
  for (const double P : {1e3, 1e5, 1e7}) {
    const double Ts = water.tSat(P), x = 0.3;
    EXPECT_NEAR(water.pSat(Ts, 0), P, 1e-8 * P);
    const double h = water.hTP(Ts, P, x), s = water.sTP(Ts, P, x), v = water.vTP(Ts, P, x);
    EXPECT_EQ(water.tHP(h, P), Ts);
    EXPECT_EQ(water.tPS(P, s), Ts);
    EXPECT_EQ(water.tPV(P, v), Ts);
    EXPECT_NEAR(water.sPH(P, h), s, 1e-6);
    EXPECT_NEAR(water.hPS(P, s), h, 1e-3);
    EXPECT_NEAR(water.hPV(P, v), h, 1e-3);
    EXPECT_NEAR(water.xPH(P, h), x, 1e-6);
  }
  const double P = 1e7,
               v = water.vTX(water.tSat(P), 0.3);  // far below, steam of this kind is beyond 2500 K at the start
  EXPECT_NEAR(water.pUV(water.uPV(P, v), v), P, 1e-4 * P);
}

TEST_F(Water, FromTheCriticalPressureOnEntropyNeedsNoSaturation) {
  const double P = 3e7, T = 900, s = water.sTPgaz(T, P);
  EXPECT_NEAR(water.tPS(P, s), T, 1e-6 * T);
  EXPECT_NEAR(water.hPS(P, s), water.hTPgaz(T, P), 10);
  EXPECT_EQ(complaints(), "");
  water.tHP(water.hTPgaz(T, P), P);  // this one looks for a saturation, which is not there
  EXPECT_EQ(complaints(), "Warning : Thermodynamical function <invertion_x> dit not converge\n\n");
}

TEST_F(Water, BelowTheTriplePointTheSaturationTemperatureIsTheCriticalOne) { EXPECT_EQ(water.tSat(600), 647.3); }

TEST_F(Water, TellsItsConstants) {
  double p = 0, T = 0, v = 0;
  water.GetCritic(&p, &T, &v);
  EXPECT_EQ(p, 2.212e7);
  EXPECT_EQ(T, 647.3);
  EXPECT_EQ(v, 0.00317);
  EXPECT_EQ(water.GetTmin(), 273.15);
  EXPECT_EQ(water.Get_M(), 0.018015);
  EXPECT_EQ(water.Get_fluidType(), 4);
  EXPECT_EQ(water.Get_x(), -1);
  EXPECT_EQ(water.hTP(300, 1e5), 0);  // the forms without a phase have no meaning here
  EXPECT_EQ(water.sTP(300, 1e5), 0);
}

// ---- source file ----

/// A value of each law at states in both phases.
std::vector<double> fingerprint(const CEau& water) {
  double p = 0, T = 0, v = 0;
  water.GetCritic(&p, &T, &v);
  std::vector<double> values = {p, T, v, water.Get_M(), water.GetTmin(), water.pSat(400, 0), water.tSat(1e5)};
  for (const double value :
       {water.lambdaTPliq(300, 0), water.lambdaTPgaz(400, 0), water.muTV(300, 0.001), water.muTV(400, 1)}) {
    values.push_back(value);
  }
  for (const Phase& phase : kPhases) {
    for (const Law law : {phase.v, phase.h, phase.s, phase.Cp, phase.v_T, phase.v_P}) {
      values.push_back((water.*law)(500, 2e6));
    }
  }
  return values;
}

class WaterFile : public Water {
 protected:
  using Values = std::vector<double>;

  static Values flat(const auto& table) {
    Values values;
    for (const auto& row : table) values.insert(values.end(), std::begin(row), std::end(row));
    return values;
  }
  static Values list(const auto& array) { return Values(std::begin(array), std::end(array)); }

  /// Writes the built-in constants, those of one section 1 percent larger.
  void write(const std::string& larger) const {
    std::FILE* file = std::fopen(path.c_str(), "w");
    ASSERT_NE(file, nullptr);
    std::fputs("water, any words before a section\n", file);
    for (const auto& [key, values] : sections) {
      const char* label = key == "FLUID_CONSTANTS" ? "label " : "";
      std::fprintf(file, "%s\n", key.c_str());
      for (const double value : values) std::fprintf(file, "%s%.17g\n", label, key == larger ? 1.01 * value : value);
    }
    std::fclose(file);
  }

  void TearDown() override {
    std::remove(path.c_str());
    Water::TearDown();
  }

  const std::string path = testing::TempDir() + "water:source.txt";  // the colon makes it a path as it stands
  const std::vector<std::pair<std::string, Values>> sections = {
      {"FLUID_CONSTANTS", {0.018015, 2.212e7, 647.3, 0.00317, 611.0, 2e6, 273.15, 2500.0, kIfc67.b, kIfc67.I1}},
      {"SATURATION_LINE", list(kIfc67.k)},
      {"SUBCOOLED_A", list(kIfc67.A)},
      {"SUBCOOLED_a", list(kIfc67.a)},
      {"SUPERHEATED_B", flat(kIfc67.B)},
      {"SUPERHEATED_bi", flat(kIfc67.bi)},
      {"EXP_z", flat(kIfc67.z)},
      {"EXP_x", flat(kIfc67.x)},
      {"FUN_L", list(kIfc67.L)},
      {"CONDUCTIVITY", flat(std::array{list(kWaterTransport.lambda_liquid), list(kWaterTransport.lambda_vapour)})},
      {"VISCOSITY_L", flat(kWaterTransport.L)},
      {"VISCOSITY_0", list(kWaterTransport.H)},
      {"VISCOSITY_REF", {kWaterTransport.rho_ref, kWaterTransport.T_ref, kWaterTransport.mu_ref}}};
};

TEST_F(WaterFile, EverySectionReplacesItsConstants) {
  const auto built_in = fingerprint(water);
  for (const auto& [key, values] : sections) {
    CEau changed;
    write(key);
    changed.loadFile(path.c_str());
    EXPECT_NE(fingerprint(changed), built_in) << key;
    write("none");
    changed.loadFile(path.c_str());
    EXPECT_EQ(fingerprint(changed), built_in) << key;
  }
}

TEST_F(WaterFile, WithoutAFileTheConstantsStay) {
  CEau same;
  same.loadFile("no such file");
  EXPECT_EQ(fingerprint(same), fingerprint(water));
}

}  // namespace
}  // namespace Vk_fl_prop_lib
