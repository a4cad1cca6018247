#pragma once

#include "model/tables/child_blocks.h"

/// The plant's child blocks: kChildBlocks brought to life.

/// Builds all children anew and wires them to the block signals.
void set_up_child_blocks();

/// Starts the children in their order, until one sets the error status.
/// @return false if one did
bool start_child_blocks();

/// Ends the children; does nothing before they were first built.
void terminate_child_blocks();

/// Evaluates the radiator's heat exchanger.
void run_heat_exchanger_child_block();
