#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "model/inputs.h"
#include "model/law_rows.h"
#include "model/plant_driver.h"
#include "model/signals.h"
#include "model/tables/drive_cycle.h"
#include "runtime/clock.h"

namespace {

class Plant : public ::testing::Test {
 protected:
  Plant() { start(); }
};

TEST_F(Plant, LagsStartOnTheirInputAndFollowIt) {
  open({input::ambient_pressure, 0.9});
  open({input::power_demand, -5.0});
  Tessera_initialize();
  step_to(0.5);
  EXPECT_EQ(Tessera_X[state::ambient_pressure], 0.9 * 100000.0);
  EXPECT_EQ(Tessera_X[state::power_demand], 0.0);  // never below 0
  EXPECT_EQ(Tessera_X[state::stoichiometry], 2.0);

  open({input::ambient_pressure, 1.0});
  open({input::power_demand, kNaN});
  step_to(1.5);
  EXPECT_NEAR(Tessera_X[state::ambient_pressure], 1e5 - 1e4 * std::exp(-1.0), 1e-4);
  EXPECT_EQ(Tessera_X[state::power_demand], 0.0);
}

TEST_F(Plant, ScenarioRampsBetweenItsSamplesAndHoldsItsEnd) {
  const auto demand_at = [](double time) {
    Tessera_M_.step_mode = kMinorStep;  // an evaluation alone
    Tessera_M_.time[0] = time;
    Tessera_step();
    return Tessera_B.in.power_demand;
  };
  EXPECT_EQ(demand_at(196.0), 20000.0);
  EXPECT_EQ(demand_at(196.5), 17500.0);
  EXPECT_EQ(demand_at(197.0), 15000.0);
  EXPECT_EQ(demand_at(423.0), 10000.0);
  EXPECT_EQ(demand_at(1802.0), 20000.0);
  EXPECT_EQ(Tessera_B.in.vehicle_speed, 133.31);
  EXPECT_EQ(demand_at(5000.0), 20000.0);
  EXPECT_EQ(Tessera_B.in.vehicle_speed, 0.0);
  for (const double time : {-1.0, kNaN}) EXPECT_EQ(demand_at(time), 20000.0) << time;
  for (std::size_t i = 0; i < kDriveCycle_km_h.size(); ++i) {
    demand_at(static_cast<double>(i));
    ASSERT_EQ(Tessera_B.in.vehicle_speed, kDriveCycle_km_h[i]) << i;
  }
}

TEST_F(Plant, AmbientAirThatIsNoNumberShowsFromTheFirstStepOn) {
  for (const auto k : {input::ambient_temperature, input::ambient_pressure, input::ambient_humidity}) open({k, kNaN});
  Tessera_initialize();
  Tessera_step();
  EXPECT_TRUE(std::isnan(Tessera_B.gas.ambient.state.rho));
  EXPECT_TRUE(std::isnan(Tessera_B.gas.ambient.state.P));
}

TEST_F(Plant, DistanceIsTheIntegralOfTheLaggedSpeed) {
  open({input::vehicle_speed, 0.0});
  Tessera_initialize();
  open({input::vehicle_speed, 72.0});
  Tessera_step();  // starts on 72
  Tessera_P.real[input::vehicle_speed] = 36.0;
  step_to(3.0);
  // v = 36 + 36 exp(-t) km/h from t = 1 ms on
  const double t = 3.0 - 0.001;
  EXPECT_NEAR(Tessera_X[state::distance], (0.001 * 72 + 36 * t + 36 * (1 - std::exp(-t))) / 3600, 1e-9);
}

TEST_F(Plant, DerivativesFollowTheRuleOfTheirState) {
  const auto by_rule = [](StateRule rule) {
    const auto state = std::ranges::find(kStates, rule, &StateRow::rule) - std::begin(kStates);
    return [state](double x, double u, double active) {
      Tessera_X.fill(x);
      Tessera_B.u.fill(u);
      Tessera_DW.sub_block.fill({active != 0, false});
      Tessera_derivatives();
      return Tessera_M_.solver_data.f0[static_cast<std::size_t>(state)];
    };
  };
  using enum StateRule;
  expect_law<3>(by_rule(limit_0_inf), {{0, -3, 0, 0}, {0, 3, 0, 3}, {2, 3, 0, 3}, {2, -3, 0, -3}});
  expect_law<3>(by_rule(limit_0_1), {{0, -3, 0, 0}, {0, 3, 0, 3}, {1, 3, 0, 0}, {1, -3, 0, -3}});
  const std::pair<StateRule, double> lags[] = {
      {plain, 0}, {lag_1, 1}, {lag_3_over_7, 3 / 7.0}, {lag_1_over_3, 1 / 3.0}, {lag_10, 10}};
  for (const auto& [rule, rate] : lags) expect_law<3>(by_rule(rule), {{1, 3, 0, 3 - rate}, {-2, 3, 1, 3 + 2 * rate}});
  expect_law<3>(by_rule(plain_enabled), {{2, 3, 0, 0}, {2, 3, 1, 3}});
  expect_law<3>(by_rule(limit_0_inf_enabled), {{2, 3, 0, 0}, {2, 3, 1, 3}, {0, -3, 1, 0}});
  expect_law<3>(by_rule(lag_1_enabled), {{2, 3, 0, 0}, {2, 3, 1, 1}});
}

TEST_F(Plant, MemoriesAreReadOneTickAfterTheyWereWritten) {
  EXPECT_EQ(Tessera_B.memory.hv_bus_voltage, 360.0);
  EXPECT_EQ(Tessera_B.memory.lv_bus_voltage, 12.0);
  Tessera_step();
  const double written = Tessera_DW.memory.hv_bus_voltage;
  EXPECT_NE(written, 360.0);
  EXPECT_EQ(Tessera_B.memory.hv_bus_voltage, 360.0);  // held through the minor evaluations
  Tessera_step();
  EXPECT_EQ(Tessera_B.memory.hv_bus_voltage, written);
  step_to(0.2);  // the chart runs from 0.01 s on; model step 100 writes the 100 ms memory
  EXPECT_EQ(Tessera_B.memory.thermal_mode, 0.0);
  Tessera_step();  // and model step 200 reads it
  EXPECT_EQ(Tessera_B.memory.thermal_mode, 1.0);
}

}  // namespace
