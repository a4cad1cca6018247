#pragma once

/// Laws of the controller: from system command and power demand to stack current, air flow, setpoints and commands.

/// Flags of the system command; both are 0.0 for a not-a-number.
struct SystemFlags {
  double run, off;
};
SystemFlags system_flags(double command);

/// Power [W] after the limiter of its change, at a tick of 1 s.
double limited_power(double asked, double before);

/// Ceiling of the stack current [A] for a power [W].
double current_ceiling(double power);

/// Proportional and integral control of a power by a current [A], before its limits; x is the integrator.
double power_pi(double x, double target, double power);

/// The value limited from above by a ceiling, which a not-a-number takes, and to 0 from below.
double limited_current(double raw, double ceiling);

/// Air flow [kg/s] that a stack current [A] asks for at a stoichiometry.
double air_flow_for(double current, double stoichiometry);

/// Air flow [kg/s] asked for: never more than that of 180 A, none with a full battery.
double air_flow_setpoint(double current, double stoichiometry, bool battery_full);

/// Oxygen [mol/s] in an air flow [kg/s].
double oxygen_moles(double air_flow);

/// Stack current [A] that an oxygen flow [mol/s] allows at a stoichiometry.
double air_limited_current(double oxygen, double stoichiometry);

/// 1.0 if air and hydrogen flow.
/// @param ejector_flow  a not-a-number counts as flow
double stack_ready(bool air_flows, double ejector_flow);

/// Setpoints at a tick of 10 ms.
struct CommandSet {
  double air_flow;             ///< kg/s
  double cathode_pressure;     ///< Pa
  double anode_pressure;       ///< Pa
  double coolant_temperature;  ///< degC
  double current_ceiling;      ///< A
  double fc_power_target;      ///< W
  double contact_request;      ///< 1.0: the stack may carry current
  double run;                  ///< run flag, as an echo
};

/// What the system at rest is set to, whatever is asked.
CommandSet commands_when_off(double run);

/// Compressor speed [rpm] of a stop, which ramps down from the speed before.
double stopping_speed(double before);
