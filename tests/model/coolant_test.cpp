#include "model/coolant_restriction.h"
#include "model/law_rows.h"
#include "model/liquid_volume.h"
#include "model/radiator.h"

namespace {

/// A liquid by T [K], density, Cp, expansion coefficient and compressibility; its internal energy counts nowhere.
LiquidPort liquid_of(double T, double rho, double Cp, double alpha, double kappa) {
  return {2e5, T, 1 / rho, Cp * (T - 273.15), 1e7, Cp, alpha, -kappa};
}

const LiquidPort kWater = liquid_of(293.15, 998.2, 4184, 2.068e-4, 4.589e-10);
const LiquidPort kGlycol = liquid_of(313.15, 1058.5, 3335, 4.6e-4, 3.5e-10);  // half ethylene glycol

TEST(LiquidVolume, BalancesAreThoseOfACompressibleLiquid) {
  constexpr double V = 5e-4;
  for (const LiquidPort& liquid : {kWater, kGlycol}) {
    const double rho = 1 / liquid.v, kappa = -liquid.kappa, T = liquid.T, alpha = liquid.alpha;
    const double Cv = liquid.Cp - T * alpha * alpha / (rho * kappa);
    const double heating = 3e4 / (rho * V * Cv), expansion = 1e-7 / (V * Cv * kappa);
    const auto expect = [&](const LiquidFlow& inflow, double heat, double volume_rate, double dTdt, double dPdt) {
      const LiquidDerivatives derivatives = liquid_volume_balance(liquid, V, volume_rate, inflow, heat);
      EXPECT_NEAR(derivatives.T, dTdt, 1e-9 * (1e-3 + std::fabs(dTdt)));
      EXPECT_NEAR(derivatives.P, dPdt, 1e-9 * std::fabs(dPdt));
    };
    expect({0, 1e4}, 2e4, 0, heating, heating * alpha / kappa);
    expect({0.5, 0.5 * liquid.h}, 0, 0, 0, 0.5 * liquid.Cp / (Cv * rho * kappa * V));  // its own liquid
    expect({0, 0}, 0, 1e-7, -T * alpha / rho * expansion, -liquid.Cp * expansion);     // adiabatic
  }
  // Published for water at 20 degC: specific heat at constant volume, speed of sound.
  EXPECT_NEAR(1e4 / (998.2 * V * liquid_volume_balance(kWater, V, 0, {0, 0}, 1e4).T), 4157, 2);
  EXPECT_NEAR(std::sqrt(liquid_volume_balance(kWater, V, 0, {1, kWater.h}, 0).P * V), 1482, 2);
  expect_law<2>(liquid_volume_rate, {{6e-4, 5e-4, 0.01}});
  // A volume settles where the flow through it carries the heat away.
  LiquidPort inlet = liquid_of(350, 1058.5, 3335, 4.6e-4, 3.5e-10);
  for (const double heat : {0.0, 5e4}) {
    LiquidPort liquid = kGlycol;
    for (int i = 0; i < 20000; ++i) {
      const LiquidFlow in = liquid_flow(inlet, liquid, 0.5), back = liquid_flow(inlet, liquid, -0.5);
      liquid.T += 1e-3 * liquid_volume_balance(liquid, 5e-4, 0, {in.mdot + back.mdot, in.Hdot + back.Hdot}, heat).T;
      liquid.h = 3335 * (liquid.T - 273.15);
    }
    EXPECT_NEAR(liquid.T, 350 + heat / (0.5 * 3335), 1e-6);
  }
  inlet.h = std::numeric_limits<double>::infinity();
  EXPECT_EQ(liquid_flow(kWater, inlet, 0).Hdot, 0);  // without a flow the first is upstream
}

TEST(LiquidRestriction, FlowLaws) {
  FlowLawBlock block{};
  const auto aQB = [&block](double row, double enable, double major_step, double dp) {
    const LiquidRestrictionRow& restriction = kLiquidRestrictions[static_cast<std::size_t>(row)];
    return 1e3 * Tessera_aQB(block, enable, restriction, dp, 1e-3, major_step != 0).Qv;
  };
  // The root, its sign, which major steps set, and the line near zero. An idle law keeps its flow.
  expect_law<4>(aQB, {{0, 1, 1, 1e5, 1}, {0, 1, 0, -2.5e4, 0.5}, {0, 1, 1, -2.5e4, -0.5}, {0, 1, 1, 0.5, -5e-4}});
  expect_law<4>(aQB, {{0, 1, 1, 1, 1e-3}, {1, 1, 1, -0.5, 4.5e-4}, {1, 1, 1, -1, -9e-4}, {2, 1, 1, 1e4, 0.3}});
  expect_law<4>(aQB, {{1, 1, 1, 1e4, 0.3}, {1, 0, 1, 4e4, 0.3}});
  const auto flow = [](FlowSelector s, double dp) { return ModeNonReturnValve2(s, -0.4, 0.2, dp, 2).Qv; };
  EXPECT_EQ(flow(FlowSelector::imposed, -5), -0.8);
  EXPECT_EQ(flow(FlowSelector::quadratic, 0), 0.4);
  EXPECT_EQ(flow(FlowSelector::quadratic, -1e-3), 2e-5);
  FlowLawBlock valve{};
  FlowCoefficient coefficient = {.Cv = 2, .G = 0.01, .d = 0.25, .k1 = 3, .k2 = 5, .k3 = 7};
  const auto DTAQfCv = [&](double enable, double gas, double p1, double p2) {  // bar; 400 K and 100 K: G T is 4 and 1
    return Tessera_DTAQfCv(valve, enable, gas, 1e5 * p1, 400, 1e5 * p2, 100, coefficient, true);
  };
  // Both sides of half the larger pressure. Within 1 bar the sign holds, and with it the upstream port.
  expect_law<4>(DTAQfCv, {{0, 1, 4, 1, 0}, {1, 1, 4, 3.5, 40}});  // the sign starts with the second port
  expect_law<4>(DTAQfCv, {{1, 1, 4, 1.99, 3 * std::sqrt(1.99 * 2.01)}, {1, 1, 4, 2.01, 20}});
  expect_law<4>(DTAQfCv, {{1, 1, 3.5, 4, 20}, {1, 0.5, 1, 4, 6 * std::sqrt(3)}, {1, 1, 4, 3.5, 40}});
  expect_law<4>(DTAQfCv, {{1, 0.49, 3, 4, 28}, {0, 1, 4, 1, 28}});
  coefficient = kFlowCoefficient;
  expect_law<4>(DTAQfCv, {{1, 1, 4, 2.5, 0.007589889819036704}, {1, 1, 4, 1, 0.006573037395210662}});
  expect_law<4>(DTAQfCv, {{1, 0, 4, 1, 0.25229404888212775}});
}

TEST(CoolingLoop, Maps) {
  const auto pump = [](double command, double x) { return 60 * pump_mass_flow(x, command); };  // kg/min
  expect_law<2>(pump, {{0.2, 0, 3.6}, {0.2, 0.6, 5}, {0.2, 1, 0.37}, {0.5, 0.75, 16.5}, {1, 0, 53.6}, {1, 0.4, 56.2}});
  expect_law<2>(pump, {{0.75, 0.9, 29.625}, {0.19, 0.5, 25 / 6.0}, {0.1, 0, 0}, {1.1, 1, 61.2}, {1, 1, 52}});
  const auto velocity = [](double fan, double speed) { return radiator_air_flow(speed, fan, 1.25) / 0.375; };
  expect_law<2>(velocity, {{0, 0, 0.01}, {0, 50, 1.8}, {0, 130, 6}, {1, 0, 1.9}, {1, 50, 3}, {1, 130, 6.5}});
  expect_law<2>(radiator_air_speed, {{10, 50, 86}});
  const auto UA = [](double coolant, double air) { return radiator_UA(air, coolant); };
  expect_law<2>(UA, {{0.4375, 0.375, 545.9}, {0.4375, 2, 915.4}, {2.4, 0.375, 55.1}, {2.4, 2, 1696.8}});
  expect_law<2>(UA, {{-1.475, -1.125, 1213.075}, {0.4375, 0, 379.7}, {2.4, 2.5, 1853.7}, {2.4, 0, 0}});
  expect_law<1>(heater_power, {{-0.1, -300}, {0, 0}, {0.5, 1500}, {1.2, 3600}});
}

}  // namespace
