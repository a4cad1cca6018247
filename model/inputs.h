#pragma once

/// The way of the 23 tunable inputs into the model.

#include "model/tables/catalogue.h"

/// The value in force of input k: the parameter through its scale when the gate is true, else the own source's value,
/// which already is in model units.
double gated(input::Index k, double own);

/// Brings all inputs that have a scenario table into Tessera_B.in, at the present model time, and in the first
/// evaluation starts their lags on them. Inputs whose own source is the controller's logic pass their gate where the
/// controller computes them.
void read_inputs();

/// Feeds the 1 s lags of the inputs and the distance driven.
void feed_input_lags();
