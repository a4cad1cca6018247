#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "model/inputs.h"
#include "model/signals.h"
#include "runtime/clock.h"

namespace {

class Plant : public ::testing::Test {
 protected:
  Plant() {
    for (std::size_t k = 0; k < kInputCount; ++k) Tessera_P.real[k] = kInputs[k].start;
    Tessera_P.boolean = {};
    Tessera_initialize();
  }

  static void open_gate(input::Index k, double value) {
    Tessera_P.real[k] = value;
    Tessera_P.boolean[k] = 1;
  }

  static void step_to(double time) {
    while (model_time() < time - 0.0005) Tessera_step();
  }
};

/// Start mass [mg] of a slot: ideal gas at 313.15 K with the plant's round molar masses and R = 8.314 J/(mol K).
double start_mass_mg(double pressure, double volume, double fraction, double mole_per_gram) {
  return 1.0 / 8.314 / mole_per_gram / 1000 * pressure / 313.15 * volume * fraction * 1e6;
}

TEST(Catalogue, StartMassesFollowFromPressureVolumeAndComposition) {
  const double air = 0.23 / 32 + 0.77 / 28, hydrogen = 1.0 / 2;
  const auto start = [](state::Index s) { return kStates[s].start.value; };
  EXPECT_NEAR(start(state::H2Tank_m1), start_mass_mg(7e7, 0.2, 1, hydrogen), 1e-13 * 1e7);
  for (const state::Index s : {state::GVMP1_m1, state::GV01H1_m1, state::GV02H_m1, state::GV03H1_m1, state::anode_m1}) {
    EXPECT_NEAR(start(s), start_mass_mg(1e5, 0.0011, 1, hydrogen), 1e-11) << s;
  }
  for (const state::Index s : {state::GV01A1_m1, state::GV02A1_m1, state::GV03A_m1, state::GV04A1_m1}) {
    EXPECT_NEAR(start(s), start_mass_mg(1e5, 0.0011, 0.23, air), 1e-10) << s;
    EXPECT_NEAR(start(state::Index(s + 1)), start_mass_mg(1e5, 0.0011, 0.77, air), 1e-10) << s;
  }
  for (const state::Index s : {state::humidifier1_m1, state::cathode_m1, state::humidifier2_m1}) {
    EXPECT_NEAR(start(s), start_mass_mg(1e5, 0.0055, 0.23, air), 1e-9) << s;
    EXPECT_NEAR(start(state::Index(s + 1)), start_mass_mg(1e5, 0.0055, 0.77, air), 1e-9) << s;
  }
}

TEST(Catalogue, StartsOfTheBatteriesAndTemperatures) {
  const auto start = [](state::Index s) { return kStates[s].start.value; };
  EXPECT_EQ(start(state::hv_charge), 0.6 * 18000);  // state of charge times capacity
  EXPECT_EQ(start(state::lv_charge), 0.5 * 54000);
  EXPECT_EQ(start(state::hv_soc_lag), 0.6);
  EXPECT_EQ(start(state::lv_soc_lag), 0.5);
  EXPECT_DOUBLE_EQ(start(state::compressor_ratio), 3.0 / 7.0);
  for (const StateRow& row : kStates) {
    const double expected = row.id.ends_with("_T") ? 313.15 : row.id.ends_with("_p") ? 200000.0 : row.start.value;
    EXPECT_EQ(row.start.value, expected) << row.id;
  }
}

TEST(Catalogue, StatesOfAGasVolumeStandTogether) {
  for (std::size_t i = 0; i < kStateCount; ++i) {
    const std::string id(kStates[i].id);
    if (!id.ends_with("_m1")) continue;
    const std::string volume = id.substr(0, id.size() - 3);
    EXPECT_EQ(kStates[i + 1].id, volume + "_m2");
    EXPECT_EQ(kStates[i + 2].id, volume + "_m3");
    if (volume != "Air_outRadia") {
      EXPECT_EQ(kStates[i + 3].id, volume + "_T");
    }
    for (std::size_t slot = i; slot < i + 3; ++slot) EXPECT_EQ(kStates[slot].rule, StateRule::limit_0_inf) << id;
  }
}

TEST_F(Plant, ParameterOfTheLvConverterIsMultipliedByTheLogicsFlag) {
  EXPECT_EQ(gated(input::lv_converter_enable, 0.5), 0.5);
  open_gate(input::lv_converter_enable, 0.8);
  EXPECT_EQ(gated(input::lv_converter_enable, 0.5), 0.4);
  EXPECT_EQ(gated(input::lv_converter_enable, 0.0), 0.0);
}

TEST_F(Plant, LagsStartOnTheirInputAndFollowIt) {
  open_gate(input::ambient_pressure, 0.9);
  open_gate(input::power_demand, -5.0);
  Tessera_initialize();
  step_to(0.5);
  EXPECT_EQ(Tessera_X[state::ambient_pressure], 0.9 * 100000.0);
  EXPECT_EQ(Tessera_X[state::power_demand], 0.0);  // never below 0
  EXPECT_EQ(Tessera_X[state::stoichiometry], 2.0);

  open_gate(input::ambient_pressure, 1.0);
  open_gate(input::power_demand, std::numeric_limits<double>::quiet_NaN());
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
  EXPECT_EQ(demand_at(312.0), 20000.0);
  EXPECT_EQ(demand_at(423.0), 10000.0);
  EXPECT_EQ(demand_at(576.0), 20000.0);
  EXPECT_EQ(demand_at(1802.0), 20000.0);
  EXPECT_EQ(Tessera_B.in.vehicle_speed, 133.31);
  EXPECT_EQ(demand_at(5000.0), 20000.0);
  EXPECT_EQ(Tessera_B.in.vehicle_speed, 0.0);
}

TEST_F(Plant, DistanceIsTheIntegralOfTheLaggedSpeed) {
  open_gate(input::vehicle_speed, 0.0);
  Tessera_initialize();
  open_gate(input::vehicle_speed, 72.0);
  Tessera_step();  // starts on 72
  Tessera_P.real[input::vehicle_speed] = 36.0;
  step_to(3.0);
  // v = 36 + 36 exp(-t) km/h from t = 1 ms on
  const double t = 3.0 - 0.001;
  EXPECT_NEAR(Tessera_X[state::distance], (0.001 * 72 + 36 * t + 36 * (1 - std::exp(-t))) / 3600, 1e-9);
}

TEST_F(Plant, DerivativesFollowTheRuleOfTheirState) {
  const auto expected = [](StateRule rule, double x, double u, bool active) {
    const bool inward_0 = x > 0 || u > 0, inward_1 = x < 1 || u < 0;
    switch (rule) {
      case StateRule::plain:
        return u;
      case StateRule::limit_0_inf:
        return inward_0 ? u : 0.0;
      case StateRule::limit_0_1:
        return inward_0 && inward_1 ? u : 0.0;
      case StateRule::lag_1:
        return u - x;
      case StateRule::lag_3_over_7:
        return u - 3 * x / 7;
      case StateRule::lag_1_over_3:
        return u - x / 3;
      case StateRule::lag_10:
        return u - 10 * x;
      case StateRule::plain_enabled:
        return active ? u : 0.0;
      case StateRule::limit_0_inf_enabled:
        return active && inward_0 ? u : 0.0;
      case StateRule::lag_1_enabled:
        return active ? u - x : 0.0;
    }
    return std::numeric_limits<double>::quiet_NaN();
  };
  for (const double x : {-0.5, 0.0, 0.5, 1.0, 2.0}) {
    for (const double u : {-3.0, 3.0}) {
      for (const bool active : {false, true}) {
        Tessera_X.fill(x);
        Tessera_B.u.fill(u);
        Tessera_DW.sub_block.fill({active, false});
        Tessera_derivatives();
        for (std::size_t i = 0; i < kStateCount; ++i) {
          EXPECT_DOUBLE_EQ(Tessera_M_.solver_data.f0[i], expected(kStates[i].rule, x, u, active)) << i << " at " << x;
        }
      }
    }
  }
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

TEST_F(Plant, SampledOutputsMoveOnTheirTick) {
  Tessera_step();
  open_gate(input::ambient_temperature, 60.0);
  double sampled = Tessera_Y[output::ambient_temperature], live = 0.0;
  for (int k = 1; k < 50; ++k) {
    Tessera_step();
    EXPECT_EQ(Tessera_Y[output::ambient_temperature] != sampled, k % 10 == 0) << k;
    EXPECT_GT(Tessera_Y[output::inputs_ambient_temperature], live);
    sampled = Tessera_Y[output::ambient_temperature];
    live = Tessera_Y[output::inputs_ambient_temperature];
  }
  EXPECT_EQ(Tessera_Y[output::inputs_power_demand], 20.0);  // kW
  EXPECT_EQ(Tessera_Y[output::power_balance_demand], 20000.0);
  EXPECT_NEAR(Tessera_Y[output::cathode_pressure_setpoint], 1.4, 1e-15);
  EXPECT_NEAR(Tessera_Y[output::inputs_coolant_temperature_setpoint], 65.0, 1e-12);
}

TEST_F(Plant, ConstantOutputsStand) {
  struct Constant {
    std::size_t vr;
    double value;
  };
  step_to(0.2);
  for (const auto& [vr, value] : {Constant{17, 1.0},
                                  {23, 1.0},
                                  {24, 40.0},
                                  {120, 0.23},
                                  {128, 1.0},
                                  {130, 32.0},
                                  {131, 19.2},
                                  {133, 60.0},
                                  {134, 0.18},
                                  {135, 0.09},
                                  {137, 50.0},
                                  {141, 100.0},
                                  {144, 20.0}}) {
    EXPECT_NEAR(Tessera_Y[vr], value, 1e-14 * value) << vr;
    EXPECT_EQ(kOutputs[vr].rate, Rate::constant) << vr;
  }
}

TEST_F(Plant, ASecondInitializationStartsTheSameRun) {
  open_gate(input::vehicle_speed, 80.0);
  Tessera_initialize();
  step_to(0.05);
  const StateVector first = Tessera_X;
  Tessera_initialize();
  EXPECT_EQ(model_time(), 0.0);
  step_to(0.05);
  EXPECT_EQ(Tessera_X, first);
  EXPECT_EQ(Tessera_P.real[input::vehicle_speed], 80.0);
}

}  // namespace
