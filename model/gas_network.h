#pragma once

/// The gas network in the step: its blocks read and write the block signals by the rows of model/tables/gas_network.def
/// and leave the physics to the laws. The groups stand in the order of an evaluation.

void gas_volumes();          ///< the gas in the volumes of the hydrogen and air lines and of the stack
void pressure_reducer();     ///< H2_Detendor, heat of the tank
void hydrogen_loop();        ///< Ejector, restrictions of the anode
void outside_air();          ///< the ambient air
void compressor_flow();      ///< Electrical_CPR: its flow at the present speed
void hydrogen_valves();      ///< H2_Valve1, H2_Valve2, the hydrogen account
void air_line();             ///< restrictions of the humidifier and the cathode, MoistGasValve
void compressor_drive();     ///< Electrical_CPR: speed lags and outflow
void humidifier_exchange();  ///< VapEchange1234
void stack_gases();          ///< reaction and losses of cathode and anode
void gas_balances();         ///< derivatives of all volumes

/// Electrical_CPR: its current, which a memory takes over; at the end of a major step.
void compressor_memory();

/// Air_outRadia: its gas, for the radiator.
void evaluate_air_behind_radiator();
