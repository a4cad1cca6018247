#pragma once

/// Laws of the cooling loop's machines: pump, three-way split, radiator and heater.

/// Coolant flow of the pump [kg/s] from the loop's hydraulic map; the valve's position acts on it.
/// @param radiator_fraction  share of the coolant that the three-way valve sends to the radiator
/// @param pump_command       0 to 1
double pump_mass_flow(double radiator_fraction, double pump_command);

/// Speed of the air towards the radiator [km/h].
/// @param wind_speed     m/s; here a head wind is positive, unlike in the road load
/// @param vehicle_speed  km/h
double radiator_air_speed(double wind_speed, double vehicle_speed);

/// Air flow through the radiator [kg/s], from the velocity at its face.
/// @param air_speed    km/h
/// @param fan_command  0 to 1
/// @param density      of the ambient air [kg/m3]
double radiator_air_flow(double air_speed, double fan_command, double density);

/// Heat transfer of the radiator [W/K] at the flows' amounts [kg/s]; never negative.
double radiator_UA(double air_flow, double coolant_flow);

/// Heating power [W] of the heater at its command (0 to 1).
double heater_power(double command);
