#pragma once

/// The controller in the step: its blocks read and write the block signals and leave the rules to power_control.h. The
/// groups stand in the order of an evaluation.

void power_demand_and_stack_voltage();  ///< system command, power limiter, voltage law, current PI, air flow setpoint
void supervisory_logic();               ///< samples, command set, stack power loop, commands of compressor and valves
