#pragma once

/// The controller inside the plant.

/// Commands of the compressor and the gas valves: the controller's own values at their 10 ms tick, and what the gates
/// make of them. A gate of the compressor or of the back-pressure valve is read at the tick, the others in each major
/// step.
void actuator_commands();
