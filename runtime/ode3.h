#pragma once

#include "runtime/model_store.h"

/// Advances the continuous states over one model step by the explicit third-order Runge-Kutta method "ode3", which has
/// its stages at t, t + h/2 and t + 3h/4 and the weights 2/9, 1/3, 4/9 (P. Bogacki, L. F. Shampine, "A 3(2) pair of
/// Runge-Kutta formulas", Appl. Math. Lett. 2 (1989), without its error estimate).
///
/// Called in a major step with the outputs of t computed; evaluates the model twice more in minor mode. Leaves the
/// states and the model time at the solver stop time and the step mode major. Cannot fail and does not allocate.
void rt_ertODEUpdateContinuousStates(SolverInfo& solver);
