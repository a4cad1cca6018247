#pragma once

/// Batteries, converters, loads and the vehicle in the step: reads and writes the block signals and leaves the rules to
/// electrical_network.h.
void power_network();

/// What the memories of the network take over; at the end of a major step.
void power_network_memories();

/// Adds what the batteries have discharged since the last tick of 10 ms; at the end of a major step.
void count_battery_energies();
