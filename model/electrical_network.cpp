#include "model/electrical_network.h"

#include <cmath>

#include "model/map_lookup.h"
#include "model/scalar_laws.h"

namespace {

constexpr double kConverterPowerLimit = 2000.0;             // W
constexpr double kBatteryTemperature = 26.850000000000023;  // degC

}  // namespace

double constant_power_current(double power, double bus_voltage, double lagged) {
  const double resistance = bus_voltage * bus_voltage * safe_reciprocal(power);
  return lagged * safe_reciprocal(resistance);
}

double heater_bus_current(double power, double hv) { return power * safe_reciprocal(hv); }

RoadLoad road_load(double speed_km_h, double slope_percent) {
  constexpr double kWeight = 21582.0;  // N
  constexpr double kRolling = 0.015;
  constexpr double kTwoOverPi = 0.6366197723675814;
  const double v = 0.2777777777777778 * speed_km_h;
  return {.v = v,
          .rolling = -v * (kRolling * kWeight) * kTwoOverPi * std::atan(100.0 * v),
          .grade = -v * kWeight * std::sin(std::atan(0.01 * slope_percent))};
}

double drive_current(const RoadLoad& road, double wind, double v_lagged, double hv) {
  constexpr double kMass = 2200.0;  // kg
  constexpr double kDrag = 0.4235;  // N/(m/s)^2
  constexpr double kEfficiency = 0.8;
  constexpr double kLeastVoltage = 200.0, kLargestCurrent = 500.0;
  const double v = road.v, relative = v - wind;
  const double sign = relative > 0.0 ? 1.0 : relative < 0.0 ? -1.0 : relative;
  const double aerodynamic = -v * kDrag * (relative * relative) * sign;
  const double inertia = v * (v - v_lagged) * kMass;
  const double sum = (aerodynamic + road.rolling + road.grade) - inertia;
  return saturated((sum / kEfficiency) / larger(hv, kLeastVoltage), -kLargestCurrent, 0.0);
}

double converter_efficiency(double current) { return interpolate(kConverterEfficiency, current); }

double compressor_converter_efficiency(double current) {
  const auto& [x, y] = kCompressorConverterEfficiency;
  double efficiency = 0.0;
  LookUp_real_T_real_T(&efficiency, y.data(), current, x.data(), x.size() - 1);
  return efficiency;
}

double converter_target(double rated, double hv, double current) {
  return smaller(rated, larger(hv, kConverterPowerLimit * safe_reciprocal(current)));
}

double voltage_control(double x, double error) { return 10.0 * x + 0.5 * error; }

double lv_converter_output(double raw, double lv) {
  return smaller(larger(raw, 0.0), kConverterPowerLimit * safe_reciprocal(lv));
}

double compressor_converter_ratio(double raw) { return saturated(raw, 0.0, 2.3333333333333335); }

CellSource hv_source(double soc_percent) {
  constexpr LookupInterval T = interval(kHvSeriesResistance.y, kBatteryTemperature);
  return {.open_circuit = interpolate(kHvOpenCircuit, soc_percent, kBatteryTemperature),
          .series_resistance = interpolate(kHvSeriesResistance, interval(kSoc, soc_percent), T)};
}

CellSource lv_source(double soc_percent) {
  constexpr LookupInterval T = interval(kCold, kBatteryTemperature);
  const LookupInterval soc = interval(kSoc, soc_percent);
  return {.open_circuit = interpolate(kLvOpenCircuit, soc, T),
          .series_resistance = interpolate(kLvSeriesResistance, soc, T)};
}

CellRcElement hv_rc_element(double soc_percent) {
  constexpr LookupInterval T = interval(kCold, kBatteryTemperature);
  const LookupInterval soc = interval(kSoc, soc_percent);
  return {.capacitance = interpolate(kRcCapacitance, soc, T), .resistance = interpolate(kHvRcResistance, soc, T)};
}

CellRcElement lv_rc_element(double soc_percent) {
  constexpr LookupInterval T = interval(kCold, kBatteryTemperature);
  const LookupInterval soc = interval(kSoc, soc_percent);
  return {.capacitance = interpolate(kRcCapacitance, soc, T), .resistance = interpolate(kLvRcResistance, soc, T)};
}

double state_of_charge(const BatteryLayout& layout, double charge) {
  return saturated(charge / layout.capacity, 0.0, 1.0);
}

double battery_voltage(const BatteryLayout& layout, const CellSource& cell, double current, double rc_voltage) {
  return layout.cells * cell.open_circuit - current * (layout.cells / layout.strings) * cell.series_resistance -
         rc_voltage;
}

double rc_voltage_rate(const CellRcElement& element, double current, double rc_voltage) {
  return (current - rc_voltage / element.resistance) / element.capacitance;
}
