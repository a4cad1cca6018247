// The gas network in the plant, driven from outside through its gates or by gases set at its nodes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <span>

#include "model/gas_network.h"
#include "model/plant_driver.h"
#include "model/signals.h"
#include "runtime/clock.h"

namespace {

using gas_node::Index;

constexpr Index kHydrogenSide[] = {gas_node::H2Tank, gas_node::GVMP1,  gas_node::GV01H1,
                                   gas_node::GV02H,  gas_node::GV03H1, gas_node::anode};
constexpr Index kAirLine[] = {gas_node::GV01A1, gas_node::humidifier1, gas_node::GV02A1, gas_node::cathode,
                              gas_node::GV03A,  gas_node::humidifier2, gas_node::GV04A1};

class GasNetwork : public ::testing::Test {
 protected:
  // The system is off, so that the stack draws nothing; the compressor has its voltage all the same.
  GasNetwork() {
    start({{input::system_command, 0.0},
           {input::compressor_converter_enable, 1.0},
           {input::compressor_speed, 0.0},
           {input::back_pressure_valve_command, 0.0},
           {input::supply_valve_command, 0.0},
           {input::bleed_valve_command, 0.0}});
  }

  static double P(Index node) { return Tessera_B.gas.at[node].state.P; }

  /// Mass [mg] of a slot over volumes, and the rate [mg/s] at which it grows.
  static double mass(std::span<const Index> volumes, std::size_t slot) {
    double sum = 0.0;
    for (const Index v : volumes) sum += Tessera_X[kVolumes[v].m1 + slot];
    return sum;
  }
  static double growth(std::span<const Index> volumes, std::size_t slot) {
    double sum = 0.0;
    for (const Index v : volumes) sum += Tessera_B.u[kVolumes[v].m1 + slot];
    return sum;
  }
};

TEST_F(GasNetwork, BackFlowIsTheSameLawWithThePortsExchangedAndTheUpstreamGas) {
  const auto gas_of = [](double P, double rho, double X1, double h) {
    MoistGas gas{};
    gas.state = {.P = P, .p1 = 0, .p2 = 0, .p3 = 0, .T = 300, .rho = rho, .X1 = X1, .X2 = 0.9 - X1, .X3 = 0.1};
    gas.h = h;
    return gas;
  };
  const auto flows = [](const RestrictionRow& row, const MoistGas& A, const MoistGas& B) {
    if (row.law == RestrictionLaw::orifice) Tessera_X[row.opening] = 0.7;
    Tessera_B.gas.at.set(row.A, A);
    Tessera_B.gas.at.set(row.B, B);
    for (const auto evaluate : {pressure_reducer, hydrogen_loop, hydrogen_valves, air_line}) evaluate();
    return std::array{std::bit_cast<std::array<double, 5>>(Tessera_B.gas.flow[row.FlowA]),
                      std::bit_cast<std::array<double, 5>>(Tessera_B.gas.flow[row.FlowB])};
  };
  Tessera_step();
  for (const RestrictionRow& row : kRestrictions) {
    const MoistGas high = gas_of(2e5, 2, 0.3, 7e5);
    for (const double P_low : {0.0, 5e4, 1.99e5, 1.999999e5}) {
      const MoistGas low = gas_of(P_low, 1, 0.1, -2e5);
      const auto [out_of_A, into_B] = flows(row, high, low);
      const auto [into_A, out_of_B] = flows(row, low, high);
      EXPECT_EQ(into_B, into_A) << row.path;
      EXPECT_EQ(out_of_A, out_of_B) << row.path;
      const double w = into_B[0];
      EXPECT_GT(w, 0) << row.path;
      const double expected[] = {w, 0.3 * w, 0.6 * w, 0.1 * w, 7e5 * w};
      for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(into_B[i], expected[i], 1e-14 * expected[i]) << row.path;
        EXPECT_EQ(out_of_A[i], -into_B[i]);
      }
    }
    for (const MoistGas& A : {high, gas_of(3e5, 0, 0.2, 3e5)}) {  // equal pressures; no gas upstream
      const auto [out_of_A, into_B] = flows(row, A, gas_of(2e5, 1, 0.2, 3e5));
      EXPECT_THAT(into_B, testing::Each(0.0)) << row.path;
      EXPECT_TRUE(std::signbit(out_of_A[0])) << row.path;  // A is upstream
    }
  }
}

TEST_F(GasNetwork, ClosedPartsKeepTheMassOfEachSpecies) {
  // Both sides are shut, but out of balance: wet gas behind the stack, nitrogen in the anode, a tank that fills the
  // line.
  Tessera_step();
  Tessera_X[state::cathode_m2] *= 1.3;
  Tessera_X[state::humidifier2_m1] *= 1.1;
  Tessera_X[state::GV02A1_m3] = 30.0;
  Tessera_X[state::anode_m2] = 50.0;
  std::array<double, 2> hydrogen{}, air{};
  for (std::size_t slot = 0; slot < 2; ++slot) {
    hydrogen[slot] = mass(kHydrogenSide, slot);
    air[slot] = mass(kAirLine, slot);
  }
  open({input::supply_valve_command, 0.2});
  step_to(2.0);
  EXPECT_GT(P(gas_node::GV03H1), 1.05e5);
  EXPECT_GT(Tessera_X[state::GV02H_m2], 1.0) << "nitrogen goes round with the recirculation";
  for (std::size_t slot = 0; slot < 2; ++slot) {
    EXPECT_NEAR(mass(kHydrogenSide, slot), hydrogen[slot], 1e-12 * hydrogen[0]) << slot;
    EXPECT_NEAR(mass(kAirLine, slot), air[slot], 1e-12 * air[slot]) << slot;
  }
}

TEST_F(GasNetwork, WhatEntersAndLeavesIsWhatTheVolumesGain) {
  open({input::compressor_speed, 6000.0});
  open({input::back_pressure_valve_command, 0.5});
  open({input::supply_valve_command, 0.3});
  open({input::bleed_valve_command, 1.0});
  for (const double time : {0.5, 1.0, 3.0}) {
    step_to(time);
    const auto& flow = Tessera_B.gas.flow;
    const MoistGasFlow air = flow[gas_flow::compressor_outlet] + flow[gas_flow::MoistGasValve_A];
    const MoistGasFlow hydrogen = flow[gas_flow::H2_Valve2_A];
    EXPECT_GT(-hydrogen.mdot1, 1e-7);
    EXPECT_NEAR(growth(kAirLine, 0), 1e6 * air.mdot1, 1e-9);
    EXPECT_NEAR(growth(kAirLine, 1), 1e6 * air.mdot2, 1e-9);
    EXPECT_NEAR(growth(kHydrogenSide, 0), 1e6 * hydrogen.mdot1, 1e-6);
    // The humidifier drains 40 percent of the vapour that enters its wet side, the cathode's limiter may condense more.
    const double drained = 0.4 * flow[gas_flow::humidifier2_inlet_B].mdot3;
    const double condensed = Tessera_DW.purge[gas_node::cathode].C;
    EXPECT_NEAR(growth(kAirLine, 2), 1e6 * (air.mdot3 - drained - condensed), 1e-9);
  }
}

TEST_F(GasNetwork, DrivenAirLineSettlesWithThePressuresFallingAlongIt) {
  open({input::compressor_speed, 5000.0});
  open({input::back_pressure_valve_command, 0.6});
  step_to(60.0);
  EXPECT_NEAR(Tessera_Y[output::compressor_speed], 5000.0, 1e-6);
  // Displacement times inlet density: 150 cm3 a revolution at a volumetric efficiency of 0.95.
  const double rho = Tessera_B.gas.ambient.state.rho;
  EXPECT_NEAR(Tessera_Y[output::compressor_air_flow], 1000 * 0.95 * rho * 5000 / 60 * 0.00015, 1e-6);
  for (std::size_t i = 0; i + 1 < std::size(kAirLine); ++i) EXPECT_GT(P(kAirLine[i]), P(kAirLine[i + 1]) + 300) << i;
  EXPECT_GT(P(gas_node::GV04A1), P(gas_node::ambient) + 300);
  // Settled: nothing gathers, and less water leaves than enters.
  for (const Index v : kAirLine) {
    for (std::size_t slot = 0; slot < 3; ++slot) EXPECT_NEAR(Tessera_B.u[kVolumes[v].m1 + slot], 0.0, 0.01) << v;
    EXPECT_NEAR(Tessera_B.u[kVolumes[v].T], 0.0, 1e-3) << v;
  }
  EXPECT_NEAR(Tessera_Y[output::cathode_inlet_flow], Tessera_Y[output::compressor_air_flow], 0.05);
  EXPECT_LT(Tessera_Y[output::exhaust_flow], Tessera_Y[output::cathode_inlet_flow]);
}

TEST_F(GasNetwork, ActuatorsAndLagsStartOnTheirCommand) {
  open({input::compressor_speed, 4321.0});
  open({input::back_pressure_valve_command, 0.25});
  open({input::supply_valve_command, 0.5});
  open({input::bleed_valve_command, 7.0});  // a position stays within 0 and 1
  Tessera_initialize();
  Tessera_step();
  EXPECT_EQ(Tessera_X[state::compressor_first_lag], 4321.0);
  EXPECT_EQ(Tessera_X[state::MoistGasValve_position], 0.25);
  EXPECT_EQ(Tessera_X[state::H2_Valve1_position], 0.5);
  EXPECT_EQ(Tessera_X[state::H2_Valve2_position], 1.0);
}

TEST_F(GasNetwork, HydrogenAccountStartsAtTheFirstTickAndFalls) {
  open({input::bleed_valve_command, 1.0});
  open({input::supply_valve_command, 0.3});
  Tessera_step();
  EXPECT_NEAR(Tessera_Y[output::hydrogen_account_mass_at_start], 10.754633009479329, 1e-12);
  step_to(1.0);
  EXPECT_NEAR(Tessera_Y[output::hydrogen_account_mass_at_start], 10.754633009479329, 1e-12);
  EXPECT_LT(Tessera_Y[output::hydrogen_account_fill], 100.0);
  EXPECT_NEAR(Tessera_Y[output::hydrogen_account_fill], Tessera_Y[output::hydrogen_account_mass] / 0.10754633009479329,
              1e-9);
}

TEST_F(GasNetwork, HumidityMonitorsShowTheShareOfSaturation) {
  // Vapour behind the compressor and ahead of the anode, at 373.15 K, where the saturation pressure is 1 bar.
  const auto add_vapour = [](state::Index mass, state::Index T, double pressure) {
    Tessera_X[mass] = pressure * 0.0011 / (8.314 * 373.15) * 18000.0;  // mg in 1.1 l
    Tessera_X[T] = 373.15;
  };
  Tessera_step();
  add_vapour(state::GV01A1_m3, state::GV01A1_T, 0.3e5);
  add_vapour(state::GV02H_m3, state::GV02H_T, 1.7e5);
  Tessera_M_.task_counter[2] = 0;  // a 10 ms tick
  Tessera_step();
  EXPECT_NEAR(Tessera_Y[output::compressor_outlet_humidity], 30.0, 1e-10);
  EXPECT_EQ(Tessera_Y[output::anode_inlet_humidity], 100.0);
  EXPECT_EQ(Tessera_Y[output::anode_outlet_humidity], 0.0);
}

}  // namespace
