#pragma once

/// The gas network in the step: its blocks read and write the block signals by the rows of model/tables/gas_network.def
/// and leave the physics to the laws. The groups stand in the order of an evaluation.

void hydrogen_tank_and_line();  ///< H2Tank, GVMP1
void pressure_reducer();        ///< H2_Detendor
void hydrogen_loop();           ///< GV01H1, GV02H, Ejector, GV03H1, the anode and its restrictions
void air_before_stack();        ///< GV02A1, the ambient air, GV01A1
void compressor_flow();         ///< Electrical_CPR: its flow at the present speed
void hydrogen_valves();         ///< H2_Valve1, H2_Valve2, the hydrogen account
void air_line();                ///< both sides of the humidifier, the cathode, GV03A, GV04A1, MoistGasValve
void hydrogen_balances();       ///< derivatives of the hydrogen volumes
void compressor_drive();        ///< Electrical_CPR: speed lags, outflow and power
void humidifier_exchange();     ///< VapEchange1234
void air_balances();            ///< derivatives of the air volumes
void stack_gas_balances();      ///< reaction, and derivatives of cathode and anode

/// Air_outRadia: its gas, for the radiator; air_balances has its derivatives.
void evaluate_air_behind_radiator();
