#include "runtime/ode3.h"

namespace {

constexpr double kB[3][3] = {
    {0.5, 0.0, 0.0}, {0.0, 0.75, 0.0}, {0.2222222222222222, 0.3333333333333333, 0.4444444444444444}};

/// Evaluates the model at the stage and leaves its derivatives in f.
void evaluate_stage(const SolverInfo& solver, double time, StateVector& f) {
  solver.time[0] = time;
  *solver.derivatives = f.data();
  Tessera_step();
  Tessera_derivatives();
}

}  // namespace

void rt_ertODEUpdateContinuousStates(SolverInfo& solver) {
  const double t = solver.time[0];
  const double tnew = solver.stop_time;
  const double h = *solver.step_size;
  double* const x = solver.states;
  auto& [y, f0, f1, f2] = *solver.data;

  *solver.step_mode = kMinorStep;
  *solver.derivatives = f0.data();
  Tessera_derivatives();

  double hB0 = kB[0][0] * h;
  for (std::size_t i = 0; i < kStateCount; ++i) {
    y[i] = x[i];
    x[i] = y[i] + hB0 * f0[i];
  }
  evaluate_stage(solver, t + 0.5 * h, f1);

  // The sums keep their terms of weight 0, so that each stage forms them the same way.
  hB0 = kB[1][0] * h;
  double hB1 = kB[1][1] * h;
  for (std::size_t i = 0; i < kStateCount; ++i) x[i] = y[i] + (f0[i] * hB0 + f1[i] * hB1);
  evaluate_stage(solver, t + 0.75 * h, f2);

  hB0 = kB[2][0] * h;
  hB1 = kB[2][1] * h;
  const double hB2 = kB[2][2] * h;
  for (std::size_t i = 0; i < kStateCount; ++i) x[i] = y[i] + (f0[i] * hB0 + f1[i] * hB1 + f2[i] * hB2);

  solver.time[0] = tnew;
  *solver.step_mode = kMajorStep;
}
