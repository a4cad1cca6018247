#pragma once

/// Laws of the electrical network: converters, batteries, loads and the road load of the vehicle.
///
/// Currents are counted as the network's equations do: a source's own current is negative.

// ---- Loads ---------------------------------------------------------------------------------------------------------

/// Current [A] of a load of constant power on a bus whose voltage it sees with a lag.
/// @param power        W; 0 gives 0
/// @param bus_voltage  V
/// @param lagged       lagged bus voltage [V]
double constant_power_current(double power, double bus_voltage, double lagged);

/// Current [A] of the coolant heater at its power [W].
double heater_bus_current(double power, double hv);

/// What of the road load is computed at the 10 ms tick.
struct RoadLoad {
  double v;        ///< vehicle speed [m/s]
  double rolling;  ///< W, negative when driving
  double grade;    ///< W
};

/// @param speed_km_h     lagged vehicle speed
/// @param slope_percent  uphill positive
RoadLoad road_load(double speed_km_h, double slope_percent);

/// Current [A] of the drive on the HV bus, never positive: braking feeds nothing back. At least 200 V count.
/// @param wind      m/s, in the direction of travel
/// @param v_lagged  vehicle speed with a lag of 1 s [m/s]; its distance from v is the acceleration
double drive_current(const RoadLoad& road, double wind, double v_lagged, double hv);

// ---- Converters ----------------------------------------------------------------------------------------------------

/// Efficiencies, from tables over a current [A].
double converter_efficiency(double current);
double compressor_converter_efficiency(double current);

/// Target [V] of a converter's voltage control: the rated voltage, as long as the HV bus or the power limit of 2000 W
/// at the current [A] allow it.
double converter_target(double rated, double hv, double current);

/// Output of a converter's voltage control with the integrator state x, unlimited.
double voltage_control(double x, double error);

/// Output of the LV converter's control: not negative, at most 2000 W at the LV bus voltage [V].
double lv_converter_output(double raw, double lv);

/// Ratio of the compressor converter's control: at most 2.3333333333333335.
double compressor_converter_ratio(double raw);

// ---- Batteries -----------------------------------------------------------------------------------------------------

// Circuit values of a cell at a state of charge, at the model temperature of 26.85 degC.

struct CellSource {
  double open_circuit;       ///< V
  double series_resistance;  ///< ohm
};
CellSource hv_source(double soc_percent);
CellSource lv_source(double soc_percent);

struct CellRcElement {
  double capacitance;  ///< F
  double resistance;   ///< ohm
};
CellRcElement hv_rc_element(double soc_percent);
CellRcElement lv_rc_element(double soc_percent);

/// Cells in series over strings in parallel.
struct BatteryLayout {
  double cells, strings;
  double capacity;  ///< of a string [C]
};
inline constexpr BatteryLayout kHvBattery = {100.0, 16.0, 18000.0};
inline constexpr BatteryLayout kLvBattery = {6.0, 1.0, 54000.0};

/// State of charge, 0 to 1, from the charge of a string [C].
double state_of_charge(const BatteryLayout& layout, double charge);

/// Voltage [V] of a battery that gives the current [A], with the voltage of its RC element.
double battery_voltage(const BatteryLayout& layout, const CellSource& cell, double current, double rc_voltage);

/// Derivative [V/s] of the RC element's voltage.
double rc_voltage_rate(const CellRcElement& element, double current, double rc_voltage);

// ---- Latches -------------------------------------------------------------------------------------------------------

/// A latch with a hysteresis: set from one threshold upwards, cleared from another downwards, else as before.
constexpr bool hysteresis_latch(double x, double set_at, double clear_at, bool before) {
  return x >= set_at ? true : x <= clear_at ? false : before;
}
