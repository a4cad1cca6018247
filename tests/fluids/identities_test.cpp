// What holds for every fluid: the identities of thermodynamics, and that each inversion returns to its state.

#include <cmath>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Eau.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "fluids/fluid_test.h"

namespace Vk_fl_prop_lib {
namespace {

const CIdG kO2(kO2_IDG), kN2(kN2_IDG), kH2(kH2_IDG);
const CBrine kThinGlycerol = brine(kGlycerol_Water, 30), kThickGlycerol = brine(kGlycerol_Water, 50);
const CBrine kThinGlycol = brine(kEthylene_Glycol_Water, 30), kThickGlycol = brine(kEthylene_Glycol_Water, 50);
const CLiquide kLiquid(kOil);
const CEau kWater;

struct State {
  double T, P;  // K, Pa
};
using States = std::vector<State>;
const States kGasStates = {{255, 101325}, {300, 2e4}, {340, 101325}, {500, 7e7}, {1000, 3e5}};
const States kLiquidStates = {{280, 5e4}, {300, 1e5}, {300, 8e6}, {320, 3e5}, {340, 8e6}};
// Within the sub-regions 1 and 2.
const States kWaterStates = {{280, 1e5}, {300, 3e6}, {300, 8e7}, {350, 1e5}, {450, 2e6}, {550, 1e7}, {620, 3e7}};
const States kSteamStates = {{274, 500},  {300, 3500}, {373.15, 1e5}, {450, 5e5}, {573.15, 5e6},
                             {700, 3500}, {700, 1e7},  {1000, 1e6},   {700, 3e7}};

struct Fluid {
  const char* name;
  const CFluideBase& f;
  const States& states;
  double x = 0;                // quality
  double pRef = 0;             // where Cp is the slope of h, in models whose Cp depends on T alone; 0: everywhere
  double step = 0;             // Pa, of the derivatives by P: large beside the rounding of h and s; 0: 0.1 percent of P
  double entropy_surplus = 0;  // T ds/dT - Cp
};
void PrintTo(const Fluid& fluid, std::ostream* os) { *os << fluid.name; }

/// The entropy of a brine has ln(T) beside the term of the fourth power of the concentration, not as its factor.
Fluid brine_row(const char* name, const CBrine& f) {
  const BrineVector& c = f.coefficients();
  const double surplus = 1 - std::pow(c.conc - c.concRef, 4) * c.c[2][15];
  return {.name = name, .f = f, .states = kLiquidStates, .pRef = c.pRef, .step = 1e6, .entropy_surplus = surplus};
}

class EveryFluid : public QuietTest, public ::testing::WithParamInterface<Fluid> {};
INSTANTIATE_TEST_SUITE_P(
    Fluids, EveryFluid,
    ::testing::Values(Fluid{"O2", kO2, kGasStates}, Fluid{"N2", kN2, kGasStates}, Fluid{"H2", kH2, kGasStates},
                      brine_row("thin_glycerol", kThinGlycerol), brine_row("thick_glycerol", kThickGlycerol),
                      brine_row("thin_glycol", kThinGlycol), brine_row("thick_glycol", kThickGlycol),
                      Fluid{"oil", kLiquid, kLiquidStates, 0, kOil.pRef, 1e6}, Fluid{"water", kWater, kWaterStates},
                      Fluid{"steam", kWater, kSteamStates, 1}),
    [](const auto& instance) { return instance.param.name; });

TEST_P(EveryFluid, ObeysThermodynamics) {
  const auto& [name, f, states, x, pRef, fixed_step, entropy_surplus] = GetParam();
  for (const State& state : states) {
    const double T = state.T, P = state.P, step = fixed_step == 0 ? 1e-3 * P : fixed_step;
    SCOPED_TRACE(testing::Message() << T << " K, " << P << " Pa");
    const auto h = [&f = f, x = x](double t, double p) { return f.hTP(t, p, x); };
    const auto s = [&f = f, x = x](double t, double p) { return f.sTP(t, p, x); };
    const auto v = [&f = f, x = x](double t, double p) { return f.vTP(t, p, x); };
    const auto by_T = [&](const auto& law, double p) { return slope([&](double t) { return law(t, p); }, T, 0.01); };
    const auto by_P = [&](const auto& law) { return slope([&](double p) { return law(T, p); }, P, step); };
    const double V = v(T, P), H = h(T, P), Cp = f.CpTP(T, P, x), v_T = f.alfa_t(T, P, x), v_P = f.alfa_p(T, P, x);

    EXPECT_NEAR(by_T(h, pRef == 0 ? P : pRef), Cp, 1e-6 * Cp);
    EXPECT_NEAR(by_T(s, pRef == 0 ? P : pRef) * T, Cp + entropy_surplus, 1e-6 * Cp);
    EXPECT_NEAR(by_T(v, P), v_T, 1e-6 * std::fabs(v_T) + 1e-11 * V);
    EXPECT_NEAR(by_P(v), v_P, -1e-5 * v_P + 1e-9 * V / P);
    EXPECT_NEAR(by_P(h), V - T * v_T, 1e-5 * V + 1e-5 / P);
    EXPECT_NEAR(by_P(s), -v_T, 1e-5 * std::fabs(v_T) + 1e-8 / P);
    EXPECT_NEAR(f.uTP(T, P, x), H - P * V, 1e-13 * (std::fabs(H) + P * V));
    EXPECT_NEAR(f.CvTP(T, P, x), Cp + T * v_T * v_T / v_P, 1e-9 * Cp);
    if (f.Get_fluidType() == 3) continue;
    // Along constant h the temperature changes by dT = -(v - T dv/dT) / Cp dP.
    const double T_P = -(V - T * v_T) / Cp;
    const auto along_h = [&](double p) { return v(T + T_P * (p - P), p); };
    EXPECT_NEAR(f.beta_p(T, P, x), slope(along_h, P, 0.1 * step), -1e-5 * v_P + 1e-8 * V / P);
    EXPECT_NEAR(f.beta_h(T, P, x), v_T / Cp, 1e-15 * std::fabs(v_T / Cp));
  }
}

TEST_P(EveryFluid, InversionsReturnToTheState) {
  const auto& [name, f, states, x, pRef, step, entropy_surplus] = GetParam();
  const bool is_water = f.Get_fluidType() == 4;
  for (const auto& [T, P] : states) {
    if (is_water && (P < 611 || P >= 2.212e7)) continue;  // no saturation to start from
    SCOPED_TRACE(testing::Message() << T << " K, " << P << " Pa");
    const double h = f.hTP(T, P, x), s = f.sTP(T, P, x), v = f.vTP(T, P, x), u = f.uTP(T, P, x);
    const double Cp = f.CpTP(T, P, x), mu = f.muTV(T, v), lambda = f.lambdaTP(T, P, x);
    EXPECT_NEAR(f.tHP(h, P), T, 1e-6 * T);
    EXPECT_NEAR(f.tPS(P, s), T, 1e-6 * T);
    EXPECT_NEAR(f.tPV(P, v), T, 1e-5 * T);  // the volume of a liquid hardly tells T
    EXPECT_NEAR(f.vPH(P, h), v, 1e-6 * v);
    EXPECT_NEAR(f.sPH(P, h), s, 1e-6 * Cp);
    EXPECT_NEAR(f.hPS(P, s), h, 1e-6 * Cp * T);
    EXPECT_NEAR(f.hPV(P, v), h, 1e-5 * Cp * T);
    EXPECT_NEAR(f.uPV(P, v), u, 1e-5 * Cp * T);
    EXPECT_NEAR(f.muPH(P, h), mu, 1e-6 * mu);
    EXPECT_NEAR(f.muTP(T, P, x), mu, 1e-6 * mu);
    EXPECT_NEAR(f.lambdaPH(P, h), lambda, 1e-6 * lambda);
    const double P_Cp = pRef == 0 ? P : pRef;
    EXPECT_NEAR(f.CpPH(P_Cp, f.hTP(T, P_Cp, x)), Cp, 1e-6 * Cp);
    EXPECT_NEAR(is_water ? P : f.pUV(u, v), P, 1e-3 * P);
  }
}

TEST_F(QuietTest, GasesAndLiquidsStayWithinTheirTemperatures) {
  const auto expect_limit = [](const CFluideBase& f, double limit, double beyond) {
    EXPECT_EQ(f.tHP(f.hTP(beyond, 1e5, 0), 1e5), limit);
    EXPECT_EQ(f.tPS(1e5, f.sTP(beyond, 1e5, 0)), limit);
    EXPECT_EQ(complaints(), kNoConvergence + kNoConvergence);
  };
  expect_limit(kO2, 250, 200);
  expect_limit(kO2, 1050, 1100);
  expect_limit(kLiquid, 200, 150);
  expect_limit(kLiquid, 450, 500);
  EXPECT_EQ(kO2.tU(kO2.uTP(200, 1e5)), 250);
  EXPECT_EQ(kLiquid.tPV(1e5, kLiquid.vTP(500, 1e5)), 450);
  EXPECT_EQ(complaints(), kNoConvergence + kNoConvergence);
}

}  // namespace
}  // namespace Vk_fl_prop_lib
