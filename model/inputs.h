#pragma once

/// The way of the 23 tunable inputs into the model.

#include "model/tables/catalogue.h"
#include "runtime/model_store.h"

/// A value through a scale.
/// @param own  the own source's value, for the scale that multiplies by it
constexpr double scaled(const Scale& scale, double value, double own) {
  switch (scale.operation) {
    case Scale::Operation::add:
      return value + scale.by;
    case Scale::Operation::multiply:
      return value * scale.by;
    case Scale::Operation::multiply_by_own_source:
      return value * own;
    case Scale::Operation::none:
      break;
  }
  return value;
}

/// The value in force of input k: the parameter through its scale when the gate is true, else the own source's value,
/// which already is in model units.
inline double gated(input::Index k, double own) {
  return Tessera_P.boolean[k] != 0 ? scaled(kInputs[k].parameter_scale, Tessera_P.real[k], own) : own;
}

/// Brings all inputs that have a scenario table into Tessera_B.in, at the present model time, and in the first
/// evaluation starts their lags on them. Inputs whose own source is the controller's logic pass their gate where the
/// controller computes them.
void read_inputs();

/// Feeds the 1 s lags of the inputs and the distance driven.
void feed_input_lags();
