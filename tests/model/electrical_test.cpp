#include "model/electrical_network.h"
#include "model/law_rows.h"
#include "model/power_control.h"

namespace {

TEST(ElectricalNetwork, Batteries) {
  const auto value = [](auto cell_at, auto member) { return [=](double soc) { return cell_at(soc).*member; }; };
  const auto open_circuit = &CellSource::open_circuit, series = &CellSource::series_resistance;
  const auto R = &CellRcElement::resistance, C = &CellRcElement::capacitance;
  constexpr double t = 6.85 / 60, beyond = 6.85 / 20;  // 26.85 degC lies outside most of the tables
  expect_law<1>(value(hv_source, open_circuit), {{0, 2.7}, {2.5, 3.1}, {17, 3.45}, {60, 3.7 + 0.5 / 13}, {96, 4.1}});
  expect_law<1>(value(hv_source, series),
                {{0, 0.192 + 0.0192 * t}, {15, 0.064 + 0.0064 * t}, {60, 0.048 + 0.0048 * t}});
  expect_law<1>(value(hv_rc_element, R), {{0, 0.3}, {5, 0.2}, {15, 0.075}, {60, 0.05}});
  expect_law<1>(value(lv_source, open_circuit), {{0, 1.931}, {10, 1.9532}, {60, 2.0639}});
  expect_law<1>(value(lv_source, series), {{5, 0.021 - 0.014 * beyond}, {60, 0.002 - 0.001 * beyond}});
  expect_law<1>(value(lv_rc_element, R), {{0, 0.003}, {5, 0.002}, {15, 0.00075}, {60, 0.0005}});
  for (const auto cell : {hv_rc_element, lv_rc_element})
    expect_law<1>(value(cell, C), {{0, 100}, {5, 250}, {15, 500}, {60, 600}});
  static constexpr CellSource kSource = {3.7, 0.05};
  static constexpr CellRcElement kRcElement = {400, 0.1};
  const auto hv = [](double current, double rc) { return battery_voltage(kHvBattery, kSource, current, rc); };
  expect_law<2>(hv, {{0, 0, 370}, {16, 2, 363}, {-16, -2, 377}});
  EXPECT_DOUBLE_EQ(battery_voltage(kLvBattery, kSource, 16, 2), 15.4);
  const auto rate = [](double current, double rc) { return rc_voltage_rate(kRcElement, current, rc); };
  expect_law<2>(rate, {{8, 0, 0.02}, {8, 0.4, 0.01}, {8, 0.8, 0}});  // settles at I R
  expect_law<1>([](double charge) { return state_of_charge(kHvBattery, charge); }, {{10800, 0.6}, {18001, 1}, {-1, 0}});
  EXPECT_EQ(state_of_charge(kLvBattery, 27000), 0.5);
}

TEST(ElectricalNetwork, LoadsAndConverters) {
  for (const auto& [U, P] : Rows<2>{{360, 500}, {12, -300}, {360, 0}}) {
    expect_law<3>(constant_power_current, {{P, U, U, P / U}, {P, U, U / 4, P / U / 4}});  // settled, lagging
    expect_law<2>(heater_bus_current, {{P, U, P / U}, {P, 0, 0}});
  }
  // At 72 km/h, in W: rolling resistance 20 x 323.73 N x 0.99968, drag of 20 m/s, weight.
  constexpr double kRolling = 6472.539070982659, kDrag = 20 * 0.4235 * 400, kWeight = 20 * 21582.0;
  const double level = kRolling + kDrag, uphill = level + kWeight * std::sin(std::atan(0.05));
  const auto power = [](double slope, double wind, double v_lagged, double hv) {
    return -0.8 * hv * drive_current(road_load(72, slope), wind, v_lagged, hv);
  };
  expect_law<4>(power, {{0, 0, 20, 360, level}, {5, 0, 20, 360, uphill}, {-5, 0, 20, 360, 0}, {20, 0, 20, 200, 80000}});
  expect_law<4>(power, {{0, -10, 20, 360, kRolling + kDrag * 9 / 4}, {0, 30, 20, 360, kRolling - kDrag / 4}});
  expect_law<4>(power, {{0, 0, 19, 360, level + 44000}, {0, 0, 21, 360, 0}, {0, 0, 20, 100, level / 2}});
  expect_law<3>(converter_target, {{13.5, 360, -5, 13.5}, {48, 30, 20, 48}, {48, 30, 50, 40}, {48, 30, -50, 30}});
  expect_law<2>(voltage_control, {{2, -3, 18.5}});
  expect_law<2>(lv_converter_output, {{-1, 12, 0}, {50, 12, 50}, {200, 12, 500 / 3.0}, {200, 0, 0}});
  expect_law<1>(compressor_converter_ratio, {{-0.1, 0}, {1, 1}, {3, 7 / 3.0}});
  bool full = false;
  const auto latch = [&full](double soc) { return full = hysteresis_latch(soc, 1, 0.8, full); };
  expect_law<1>(latch, {{0.99, 0}, {1, 1}, {0.81, 1}, {0.8, 0}, {0.9, 0}});
}

TEST(PowerControl, LimitsAirAndFlags) {
  expect_law<2>(limited_power, {{40000, 0, 25000}, {40000, 25000, 40000}, {0, 40000, 15000}});
  expect_law<1>(current_ceiling, {{7500, 40}, {15e3, 80}, {20e3, 120}, {22e3, 140}, {23e3, 160}, {24e3, 200}});
  expect_law<3>(power_pi, {{3, 1000, 400, 33}});
  expect_law<2>(limited_current, {{kNaN, 50, 50}, {80, 50, 50}, {20, 50, 20}, {-3, 50, 0}});
  expect_law<1>(stopping_speed, {{100, 99.99}, {0.004, 0}});
  // 250 cells take I / (4 F) of oxygen each; air has 23 percent of it, at 32 g/mol.
  constexpr double kPerAmpere = 250 / (4 * 96484.6) * 32 / 0.23 / 1000;
  EXPECT_NEAR(air_flow_for(110.6, 2), 0.0199356, 1e-7);
  const auto air = [](double I, double lambda, double full) { return air_flow_setpoint(I, lambda, full != 0); };
  expect_law<3>(air, {{200, 2, 0, 360 * kPerAmpere}, {90, 3, 0, 270 * kPerAmpere}, {-5, 2, 0, 0}, {5, 2, 1, 0}});
  expect_law<1>(oxygen_moles, {{1, 7.1875}});
  EXPECT_NEAR(air_limited_current(oxygen_moles(air_flow_for(50, 1.5)), 1.5), 50, 1e-12);
  expect_law<1>([](double x) { return system_flags(x).run; }, {{1, 1}, {0, 0}, {0.999, 0}, {2, 0}, {kNaN, 0}});
  expect_law<1>([](double x) { return system_flags(x).off; }, {{1, 0}, {0, 1}, {0.999, 1}, {2, 1}, {kNaN, 0}});
  expect_law<1>([](double x) { return stack_ready(true, x); }, {{1e-9, 1}, {0, 0}, {-1, 0}, {kNaN, 1}});
  EXPECT_EQ(stack_ready(false, 1), 0);
  const CommandSet off = commands_when_off(1);
  EXPECT_TRUE(off.cathode_pressure == 130000 && off.anode_pressure == 130000 && off.coolant_temperature == 45);
  for (const double x : {off.air_flow, off.current_ceiling, off.fc_power_target, off.contact_request}) EXPECT_EQ(x, 0);
}

}  // namespace
