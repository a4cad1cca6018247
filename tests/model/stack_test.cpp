#include "model/stack.h"

#include <gmock/gmock.h>

#include "model/law_rows.h"

namespace {

std::array<double, 5> fields(const MoistGasFlow& f) { return {f.mdot, f.mdot1, f.mdot2, f.mdot3, f.Hdot}; }

TEST(Stack, VoltageAndHeat) {
  const auto voltage = [](double I, double O2) { return stack_voltage(stack_loss_voltage(stack_losses(I), O2)); };
  const auto lossy = [](double j, double r) {
    return 250 - 250 * (0.15 * j + 0.03 * std::log(1 + 1000 * j) + 0.3 * std::log((1 - 0.8 * r) / (1 - r)));
  };
  expect_law<2>(voltage, {{0, 1, lossy(0, 1e-6)}, {200, 1, lossy(1, 1 / 1.2)}, {200, 3, lossy(1, 1 / 1.2 / 6561)}});
  EXPECT_NEAR(voltage(200, 1), 108.7, 0.05);
  // A gain does not count. At and beyond the limiting current, without oxygen, and where the loss is not a number.
  expect_law<2>(voltage, {{-0.1, 1, 250}, {240, 1, 0}, {400, 1, 0}, {100, 0, 0}, {-1, 1, 0}});
  EXPECT_DOUBLE_EQ(oxygen_access_signal(21000, 350), 2);
  expect_law<2>(selected_stack_heat, {{150, 100, 18000}, {0, 100, 0}});
  expect_law<1>(table_heat, {{-50, -5000}, {50, 5000}, {150, 15000}});
}

TEST(Stack, ReactionFollowsFaradaysLawAndConservesMass) {
  const ReactionFlows flows = reaction_flows(100);
  EXPECT_DOUBLE_EQ(flows.H2_anode * 96484.6, 12500);
  EXPECT_THAT((std::array{flows.O2_cathode, flows.H2O_cathode, flows.H2O_anode, flows.N2_cathode, flows.N2_anode}),
              testing::ElementsAre(flows.H2_anode / 2, flows.H2_anode, 0, 0, 0));
  EXPECT_NEAR(cathode_reaction(flows, {}).mdot, -anode_reaction(flows, {}).mdot, 1e-18);
  MoistGas gas{};
  gas.state.T = 353.15, gas.state.X1 = gas.state.X2 = gas.state.X3 = 0.3, gas.h1 = 3e5, gas.h2 = -5e5;
  constexpr double kVapour = 2.41e6;  // J/kg at 80 degC
  const ReactionFlows kilomoles = {1e3, 2e3, 3e3, 4e3, 5e3, 6e3};
  EXPECT_THAT(fields(cathode_reaction(kilomoles, gas)),
              testing::Pointwise(testing::DoubleEq(), {-150., -64., -140., 54., 54 * kVapour - 64 * 3e5 + 140 * 5e5}));
  EXPECT_THAT(fields(anode_reaction(kilomoles, gas)),
              testing::Pointwise(testing::DoubleEq(), {238., -2., 168., 72., 72 * kVapour - 2 * 3e5 - 168 * 5e5}));
  EXPECT_THAT(fields(stack_gas_losses(gas.state, 1e5)), testing::Each(0.0));
}

}  // namespace
