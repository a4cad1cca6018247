#pragma once

/// Coolant thermal supervision: timers with latches that watch the coolant temperatures (CoolantCondition), a chart
/// that runs the cooling (ThermalSupervisor), and the law for fan and three-way valve. All temperatures in degC.

#include <array>

// ---- CoolantCondition ----------------------------------------------------------------------------------------------

/// A timer within 0 and 1. A reset input other than 0 holds it at 0, also at the tick behind; so does the first tick.
struct ConditionTimer {
  double value;
  double sign_before;  ///< of the reset input at the tick before: 1, -1, 0, or 2 for not-a-number and at the start
};

/// One tick of 0.1 s. @return the value ahead of this tick's addition
double tick(ConditionTimer& timer, double rate, double reset);

/// True from 0.6 upwards, and from 0.4 upwards if it was true before.
bool timer_latch(double value, bool before);

/// What CoolantCondition keeps: inlet range, outlet range, a condition that never fails, and outlet range or
/// difference.
struct CoolantCondition {
  enum Watch { inlet, outlet, fixed, difference };
  std::array<ConditionTimer, 4> timer;
  std::array<bool, 4> fault;
};

/// Timers at 0 and latches set, which the first tick clears.
void start(CoolantCondition& condition);

/// The tick of 100 ms: timers, then latches.
/// @param mode, enable  outputs of the chart as of the tick before; 0.0 holds the timers at 0
void tick(CoolantCondition& condition, double T_in, double T_out, double mode, double enable);

/// True if the cooling must go to its fault state.
bool coolant_fault(const CoolantCondition& condition, double mode);

// ---- ThermalSupervisor ---------------------------------------------------------------------------------------------

/// The chart. Running has two substates; the way to Afterrun is open in the chart but no run flag takes it.
struct ThermalSupervisor {
  enum State { none = 0, Running = 1, Fault = 2, Off = 3 };
  enum Substate { no_substate, Active, Afterrun };
  State state;
  Substate substate;
  double mode, enable;    ///< outputs
  double auxiliary;       ///< 1.0 from the entry into Afterrun on
  double ticks;           ///< of 10 ms
  double afterrun_start;  ///< s
};

/// The tick of 10 ms: at most one transition. The first one only enters Off.
/// @param run    run flag
/// @param fault  of coolant_fault
/// @param hot    coolant at 50 degC or above
void tick(ThermalSupervisor& chart, double run, bool fault, bool hot);

// ---- Law of fan and valve ------------------------------------------------------------------------------------------

/// What the thermal law keeps between its ticks of 100 ms.
struct ThermalLaw {
  double filtered;  ///< filtered estimate [degC]
  double estimate;  ///< estimate behind the radiator [degC]
  double share;     ///< filtered share of the cooling that is needed
  bool started;
};

/// The law's wishes.
struct ThermalDemand {
  double fan;      ///< 0 to 1
  double closure;  ///< of the valve towards the radiator
};

/// Fan and closure from the temperatures: what the filtered share of the needed cooling asks of the fan first, and of
/// the valve for the rest of the way down.
ThermalDemand thermal_demand(ThermalLaw& law, double T_set, double T_out, double T_amb);

/// Estimates the coolant's temperature behind the radiator from the commands in force.
void estimate_coolant(ThermalLaw& law, double fan_command, double radiator_fraction, double T_out, double T_amb);
