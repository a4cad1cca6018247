#include <algorithm>
#include <cstddef>
#include <limits>

#include "model/signals.h"
#include "runtime/integrators.h"
#include "runtime/model_store.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

template <StateRule rule>
double derivative(double x, double u, bool active) {
  using enum StateRule;
  if constexpr (rule == plain) return u;
  if constexpr (rule == limit_0_inf) return limited_derivative(x, u, 0.0, kInf);
  if constexpr (rule == limit_0_1) return limited_derivative(x, u, 0.0, 1.0);
  if constexpr (rule == lag_1) return lag_derivative(-1.0, x, u);
  if constexpr (rule == lag_3_over_7) return lag_derivative(-0.42857142857142855, x, u);
  if constexpr (rule == lag_1_over_3) return lag_derivative(-0.3333333333333333, x, u);
  if constexpr (rule == lag_10) return lag_derivative(-10.0, x, u);
  if constexpr (rule == plain_enabled) return active ? u : 0.0;
  if constexpr (rule == limit_0_inf_enabled) return active ? limited_derivative(x, u, 0.0, kInf) : 0.0;
  if constexpr (rule == lag_1_enabled) return active ? lag_derivative(-1.0, x, u) : 0.0;
}

/// Where the run of neighbouring states that begins with the first and follows one rule ends.
constexpr std::size_t end_of_run(std::size_t first) {
  const auto* other = std::find_if(kStates.begin() + first, kStates.end(),
                                   [first](const StateRow& row) { return row.rule != kStates[first].rule; });
  return static_cast<std::size_t>(other - kStates.begin());
}

// Derivatives go to neither states nor signals: the compiler need not ask where they point.
template <std::size_t first>
void write_derivatives_from(double* __restrict dx) {
  if constexpr (first < kStateCount) {
    constexpr std::size_t end = end_of_run(first);
    for (std::size_t i = first; i < end; ++i) {
      dx[i] = derivative<kStates[first].rule>(Tessera_X[i], Tessera_B.u[i], Tessera_DW.sub_block[i].active);
    }
    write_derivatives_from<end>(dx);
  }
}

}  // namespace

void Tessera_derivatives() { write_derivatives_from<0>(*Tessera_M_.solver.derivatives); }
