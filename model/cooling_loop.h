#pragma once

/// The cooling loop and its supervision in the step: its blocks read and write the block signals by the rows of
/// model/tables/coolant_loop.h and leave the rules to the laws. The groups stand in the order of an evaluation.

void coolant_volumes();      ///< states and properties of the six liquid volumes
void thermal_supervision();  ///< CoolantCondition, ThermalSupervisor, commands, pump and heater
void radiator();             ///< air stream, Air_outRadia, heat exchange
void coolant_balances();     ///< derivatives of the liquid volumes
