#pragma once

#include "runtime/model_store.h"

/// The kinds of integrator that the derivative pass knows.

/// Derivative of a limited integrator: the input while the state is strictly inside its limits (or is no number), at
/// a limit only if it points inward, else 0.
///
/// Together with a clamp of the state in the output pass this keeps the state in its range without events.
inline double limited_derivative(double x, double u, double lower, double upper) {
  const bool held_low = (x <= lower) & !(u > 0.0), held_high = (x >= upper) & !(u < 0.0);
  return (held_low | held_high) ? 0.0 : u;
}

/// Derivative a x + u of a first-order lag.
inline double lag_derivative(double a, double x, double u) {
  double derivative = 0.0;
  derivative += a * x;
  derivative += u;
  return derivative;
}

/// The range limits of a state by its rule: a state below its lower limit or above its upper one moves to the limit;
/// a not-a-number stays.
inline double clamped(double x, double lower, double upper) { return x <= lower ? lower : x >= upper ? upper : x; }
