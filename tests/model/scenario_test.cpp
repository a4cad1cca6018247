// The whole plant: the drive scenario in full, and shorter runs in which the outside world takes a hand.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

#include "fmi/fmu_instance.h"
#include "model/plant_driver.h"
#include "model/signals.h"
#include "runtime/clock.h"

namespace {

using enum output::Index;

/// Goes on until the outputs are those of the given time.
void run_to(double time) {
  while (model_time() < time + 0.0005) rtOneStep(Tessera_M);
}

double y(output::Index vr) { return Tessera_Y[vr]; }

constexpr double kFaraday = 96484.6;                             // C/mol
constexpr double kHydrogenPerCharge = 250 / (2 * kFaraday) * 2;  // g/C, of 250 cells in series

/// An output and its figure, to the digits that are given.
struct Figure {
  output::Index vr;
  double value;
  int digits = 4;
};
using Figures = std::vector<Figure>;

template <class Read>
void expect_figures(const Figures& figures, Read read) {
  for (const auto& [vr, value, digits] : figures) {
    const double half_digit =
        value == 0 ? 0 : 0.5 * std::pow(10.0, 1 - digits + std::floor(std::log10(std::fabs(value))));
    EXPECT_NEAR(read(vr), value, half_digit) << kOutputs[vr].name;
  }
}

const Figures kSettledAt20kW = {{stack_voltage, 180.82, 5},   {stack_current, 110.61, 5},
                                {compressor_air_flow, 21.63}, {compressor_speed, 8299},
                                {compressor_bus_power, 1496}, {cathode_inlet_pressure, 1.400}};

// ---- The drive scenario --------------------------------------------------------------------------------------------

/// Integral of an output by its samples, and the bound of its error: the sampling time times all that it moved.
struct Integral {
  output::Index vr;
  double sampling;  // s
  double value = 0.0, error = 0.0, before = 0.0;
  void add() {
    value += kBaseStep * y(vr);
    error += sampling * std::fabs(y(vr) - before);
    before = y(vr);
  }
};

struct Account {
  Integral stack{stack_current, 0.0};  // the reaction takes the sample itself
  Integral bleed{bleed_valve_flow, 0.01}, battery{hv_battery_current, kBaseStep};
  double hydrogen = 0.0;  // in the tank and in the line [kg]
};

/// All gates closed, from 0 to 1998 s.
class DriveScenario : public ::testing::Test {
 protected:
  static constexpr std::size_t kEnd = 1998;

  static void SetUpTestSuite() {
    start({});
    rows.clear();
    accounts.clear();
    Account now;
    for (std::size_t n = 0; n <= kEnd * 1000; ++n) {
      rtOneStep(Tessera_M);
      for (Integral* integral : {&now.stack, &now.bleed, &now.battery}) integral->add();
      if (n % 1000 != 0) continue;
      const StateVector& x = Tessera_X;
      now.hydrogen = 1e-6 * (x[state::H2Tank_m1] + x[state::GVMP1_m1] + x[state::GV01H1_m1] + x[state::GV02H_m1] +
                             x[state::anode_m1] + x[state::GV03H1_m1]);
      rows.push_back(Tessera_Y);
      accounts.push_back(now);
    }
  }

  static double at(std::size_t second, output::Index vr) { return rows[second][vr]; }

  static void expect_within(output::Index vr, std::size_t from, std::size_t to, double low, double high) {
    for (std::size_t s = from; s <= to; ++s) {
      EXPECT_TRUE(low <= at(s, vr) && at(s, vr) <= high)
          << kOutputs[vr].name << " " << at(s, vr) << " at " << s << " s";
    }
  }

  static inline std::vector<decltype(Tessera_Y)> rows;  // by second
  static inline std::vector<Account> accounts;
};

TEST_F(DriveScenario, ComesToItsFiguresAtEachPowerLevel) {
  const auto expect = [](std::size_t second, const Figures& figures) {
    SCOPED_TRACE(second);
    expect_figures(figures, [&](output::Index vr) { return at(second, vr); });
  };
  expect(0, {{stack_voltage, 250}, {hv_battery_voltage, 360}, {lv_battery_voltage, 12}, {pump_command, 0}});
  expect(0, {{radiator_command, 100}, {compressor_converter_bus_voltage, 154, 3}, {hv_battery_state_of_charge, 60}});
  expect(0, {{coolant_stack_outlet_temperature, 40}, {coolant_stack_inlet_temperature, 40}});
  expect(100, kSettledAt20kW);
  expect(100, {{cathode_inlet_temperature, 71.5, 3}, {tank_outflow, 0.2906}, {tank_hydrogen_mass, 10.724, 5}});
  expect(250, {{stack_voltage, 188.68, 5}, {stack_current, 79.50}, {compressor_air_flow, 14.42}});
  expect(250, {{compressor_speed, 5533}});
  expect(500, {{stack_voltage, 198.26, 5}, {stack_current, 50.44}, {compressor_air_flow, 9.613}});
  expect(500, {{compressor_speed, 3688}});
}

TEST_F(DriveScenario, StackPowerMeetsTheDemandOnceSettled) {
  // The loop forgets with some 0.6 1/s: of a step of 20 kW less than 0.1 W is left 30 s behind it.
  int settled_for = 0;
  for (std::size_t s = 1; s <= kEnd; ++s) {
    const double demand = at(s, power_balance_demand);
    settled_for = std::fabs(demand - at(s - 1, power_balance_demand)) < 0.1 ? settled_for + 1 : 0;
    EXPECT_TRUE(settled_for < 30 || std::fabs(at(s, stack_power) - demand) < 0.1) << s;
  }
  EXPECT_GT(settled_for, 1000);
}

TEST_F(DriveScenario, BusesStayInTheirRanges) {
  expect_within(compressor_converter_bus_voltage, 1, kEnd, 47.95, 48.05);
  expect_within(hv_battery_voltage, 1, kEnd, 320, 400);
  expect_within(hv_battery_state_of_charge, 1, kEnd, 60, 72);
  for (std::size_t s = 250; s <= 1500; s += 250) {
    EXPECT_GT(at(s, hv_battery_state_of_charge), at(s - 250, hv_battery_state_of_charge)) << s;
  }
  int held = 0, worked = 0;  // seconds since the LV converter went off, and on
  double highest = 0.0;
  for (std::size_t s = 1; s <= kEnd; ++s) {
    const bool works = at(s, lv_converter_enable) == 1.0;
    held = works ? 0 : held + 1;
    worked = works ? worked + 1 : 0;
    if (held > 0) expect_within(lv_battery_voltage, s, s, 11.75, 12.05);
    if (worked > 15) expect_within(lv_battery_voltage, s, s, 13.45, 13.55);
    highest = std::max(highest, at(s, lv_battery_voltage));
  }
  // Its lag went on while it was held, and then gives up to its 2000 W.
  EXPECT_GT(highest, 20);
  EXPECT_LT(highest, 25);
}

TEST_F(DriveScenario, CoolantWarmsUpAndIsHeld) {
  expect_within(coolant_stack_outlet_temperature, 200, 423, 60, 72);
  // The fall from 20 to 10 kW finds fan and radiator at work, which follow with two lags of 10 s and cool on.
  expect_within(coolant_stack_outlet_temperature, 424, 460, 58.5, 67);
  expect_within(coolant_stack_outlet_temperature, 461, kEnd, 60, 72);
  expect_within(fan_command, 1, 47, 100, 100);
  expect_within(fan_command, 52, 80, 0, 99);
  expect_within(radiator_command, 0, 185, 99.99, 100);
  expect_within(radiator_command, 225, 280, 0, 50);
}

TEST_F(DriveScenario, HydrogenReactsOrLeavesThroughTheBleed) {
  const auto gap = [](std::size_t from, std::size_t to) {  // kg
    const Account &a = accounts[from], &b = accounts[to];
    return a.hydrogen - b.hydrogen - 0.001 * kHydrogenPerCharge * (b.stack.value - a.stack.value) -
           (b.bleed.value - a.bleed.value);
  };
  for (const auto& [from, to] : {std::pair<std::size_t, std::size_t>{60, 420}, {700, kEnd}}) {
    const double sampling = accounts[to].bleed.error - accounts[from].bleed.error;
    const double rounding =
        1e-6 * 0x1p-30 * 1e3 * static_cast<double>(to - from);  // half a unit of the tank's 1e7 mg in each step
    EXPECT_NEAR(gap(from, to), 0.0, sampling + rounding) << from;
    EXPECT_LT(sampling + rounding, 1e-4 * (accounts[to].bleed.value - accounts[from].bleed.value)) << from;
  }
  // At 10 kW the recirculation flips from step to step, and samples of 10 ms miss the mean flow by up to a percent.
  EXPECT_NEAR(gap(0, kEnd), 0.0, 0.01 * (accounts[600].bleed.value - accounts[423].bleed.value));

  EXPECT_NEAR(1000 * at(kEnd, bleed_valve_flow), 0.00399, 0.000005);             // g/s
  EXPECT_NEAR(kHydrogenPerCharge * at(kEnd, stack_current), 0.28659, 0.000005);  // g/s
}

TEST_F(DriveScenario, StateOfChargeIsTheIntegralOfTheBatteryCurrent) {
  const Integral& current = accounts.back().battery;
  constexpr double kPercent = 100 / (kHvBattery.strings * kHvBattery.capacity);  // per C
  EXPECT_NEAR(at(kEnd, hv_battery_state_of_charge), 60 - kPercent * current.value, kPercent * current.error);
  EXPECT_LT(kPercent * current.error, 0.02);
}

TEST_F(DriveScenario, EveryOutputMovesHereOrBehindAGate) {
  const std::set<std::size_t> still = {
      anode_inlet_humidity,
      anode_outlet_humidity,
      ejector_inlet_humidity,          // no water there
      inputs_stoichiometry,            // 2.0 in its whole table, no parameter
      power_balance_lv_branch_power,   // a gain of zero
      hydrogen_account_mass_at_start,  // latched
      tank_volume,                     // of a rigid tank: 200 l but for rounding
  };
  start({});
  for (std::size_t k = 0; k < kInputCount; ++k) open({input::Index(k), 0.9 * kInputs[k].start + 0.05});
  run_to(0.1);  // every gate open
  for (std::size_t vr = 0; vr < kOutputCount; ++vr) {
    double low = Tessera_Y[vr], high = low;
    for (const auto& row : rows) {
      low = std::min(low, row[vr]);
      high = std::max(high, row[vr]);
    }
    const bool moves = high - low > 1e-12 * std::fabs(high);
    EXPECT_EQ(moves, kOutputs[vr].rate != Rate::constant && !still.contains(vr)) << kOutputs[vr].name;
  }
}

// ---- Runs with gates open ------------------------------------------------------------------------------------------

TEST(Run, FanAndCompressorBusComeUpAtOnce) {
  start({});
  run_to(0.01);
  EXPECT_EQ(y(fan_command), 100);
  // The ratio runs down with 10 1/s to the target at 0.12 s; there the proportional part of 0.5 holds it up to 0.26 V
  // below, and the integrator takes that up with 10 1/s.
  run_to(0.2);
  EXPECT_NEAR(y(compressor_converter_bus_voltage), 48 - 0.26 * std::exp(-10 * 0.08), 0.01);
  run_to(0.5);
  EXPECT_NEAR(y(compressor_converter_bus_voltage), 48, 0.01);
}

TEST(Run, AtRestTheRadiatorGivesOffTheStackHeat) {
  // A higher setpoint warms the loop first, so that it comes down to the upper end of the dead zone, 65 + 1 degC.
  start({{input::vehicle_speed, 0}, {input::power_demand, 20}, {input::coolant_temperature, 345}});
  run_to(130);
  Tessera_P.boolean[input::coolant_temperature] = 0;
  run_to(450);
  expect_figures(kSettledAt20kW, y);
  expect_figures({{radiator_heat, -9182}, {fan_command, 75.8, 3}}, y);
  expect_figures({{coolant_stack_outlet_temperature, 66.0, 3}, {coolant_stack_inlet_temperature, 63.0, 3}}, y);
  // What is left: 4 l of coolant, some 15 kJ/K, still settle by less than 2e-5 K/s.
  EXPECT_NEAR(y(stack_heat) + y(radiator_heat), 0.0, 15e3 * 2e-5);
}

TEST(Run, StopsOnCommandAndComesBack) {
  start({});
  run_to(50);
  const double ratio = y(compressor_converter_bus_voltage) / y(hv_battery_voltage);
  open({input::system_command, 0});
  run_to(51);
  expect_figures({{stack_current, 0}, {stack_power, 0}, {supply_valve_command, 0}, {pump_command, 0}}, y);
  expect_figures({{stack_voltage, 250}, {back_pressure_valve_position, 1}, {coolant_temperature_setpoint, 45}}, y);
  EXPECT_NEAR(y(supply_valve_position), 0, 1e-9);
  // The ratio of the compressor's converter falls with 10 1/s from the tick of 10 ms that found the command.
  EXPECT_NEAR(y(compressor_converter_bus_voltage) / y(hv_battery_voltage), ratio * std::exp(-9.9), 1e-6 * ratio);
  run_to(60);
  EXPECT_LT(y(compressor_air_flow), 0.01);  // gone in seconds, while the speed command goes down by 1 rpm/s
  const double command = y(compressor_speed_command_lagged);
  run_to(70);
  EXPECT_NEAR(y(compressor_speed_command_lagged), command - 100 * 10, 1);
  run_to(100);
  open({input::system_command, 1});
  run_to(160);
  expect_figures(kSettledAt20kW, y);
}

TEST(Run, ALargeStepOfTheDemandIsLimitedByTheTick) {
  start({{input::power_demand, 5}});
  run_to(5);
  open({input::power_demand, 65});
  const double& target = Tessera_B.control.power_target;
  const auto asked = [](double time) { return 65000 - 60000 * std::exp(-(time - 5.001)); };
  for (const auto& [time, expected] : {std::pair{5.99, 5e3}, {6.0, 30e3}, {6.99, 30e3}, {7.0, 55e3}, {8.0, asked(8)}}) {
    run_to(time);
    EXPECT_NEAR(target, expected, 1e-3) << time;
    EXPECT_NEAR(y(power_balance_demand), asked(time), 70) << time;  // a step of 1 ms, from its end or its start
  }
  // The air ends at the flow for 180 A, and so does the current.
  run_to(60);
  EXPECT_NEAR(y(compressor_air_flow), 250 * 180 / (4 * kFaraday) * 32 * 2 / 0.23, 0.01);
  EXPECT_NEAR(y(stack_current), 180, 0.1);
}

TEST(Run, AHotLoopGoesToItsFaultState) {
  using enum ThermalSupervisor::State;
  start({{input::radiator_command, 0}});
  const auto& chart = Tessera_DW.supervisor.state;
  const CommandSignals& own = Tessera_B.command;
  while (y(coolant_stack_outlet_temperature) <= 83 && model_time() < 60) rtOneStep(Tessera_M);
  const double hot = model_time();
  EXPECT_EQ(chart, Running);
  while (chart != Fault && model_time() < 60) rtOneStep(Tessera_M);
  EXPECT_NEAR(model_time() - hot, 0.6 / 0.12, 0.21);  // the timer's threshold over its rate, in ticks of 0.1 s
  EXPECT_EQ((std::array{own.pump_own, own.radiator_own, own.fan_own, own.heater_own}), (std::array{1., 1., 0., 0.}));
  run_to(46);
  EXPECT_EQ(chart, Fault);
  expect_figures({{pump_command, 100}, {fan_command, 0}, {radiator_command, 0}}, y);  // the radiator by its gate
  open({input::system_command, 0});
  run_to(46.5);
  EXPECT_EQ(chart, Off);
  open({input::system_command, 1});
  run_to(47);
  EXPECT_EQ(chart, Running);  // its timers start anew
}

TEST(Run, TheHeaterHoldsAColdLoop) {
  start({{input::ambient_temperature, -20}, {input::power_demand, 0}, {input::vehicle_speed, 80}});
  int ticks_on = 0;
  for (int tick = 2; tick < 7000; ++tick) {
    run_to(0.01 * tick);
    const bool on = y(coolant_stack_outlet_temperature) <= 5.0;
    ASSERT_EQ(y(heater_command), on ? 100 : 0) << tick;
    ASSERT_EQ(y(heater_power), on ? 3000 : 0) << tick;
    ticks_on += on ? 1 : 0;
    if (tick != 4000) continue;
    expect_figures({{ambient_temperature, -20}, {heater_electrical_power, 3000}}, y);
    // On the bus the heater's current counts towards the battery.
    const double traction = y(traction_power) / y(hv_battery_voltage);
    EXPECT_NEAR(y(hv_battery_current),
                y(fc_converter_hv_current) - y(lv_converter_hv_current) - traction + y(hv_auxiliary_current) +
                    y(compressor_branch_current) - y(heater_current),
                1e-9);
  }
  EXPECT_GT(ticks_on, 3000);
  EXPECT_GT(y(coolant_stack_outlet_temperature), 5.0);
}

TEST(Run, TractionAt80KmPerHourDownhillAndUphill) {
  for (const double slope : {-10.0, 10.0}) {
    start({{input::vehicle_speed, 80}, {input::road_slope, slope}});
    while (model_time() < 2.0) {  // while the vehicle's lag comes up from 0
      rtOneStep(Tessera_M);
      ASSERT_EQ(y(traction_power), -500.0 * y(hv_battery_voltage)) << model_time();
    }
    run_to(10);
    constexpr double v = 80 / 3.6, kWeight = 21582;
    const double force = 0.015 * kWeight + 0.4235 * v * v + kWeight * std::sin(std::atan(0.01 * slope));  // N
    const double power = (v * force + 2200 * v * v * std::exp(-10.0)) / 0.8;
    EXPECT_NEAR(y(traction_power), std::min(0.0, -power), slope > 0 ? 0.001 * power : 0.0) << slope;
  }
}

}  // namespace
