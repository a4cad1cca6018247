#include <limits>
#include <utility>

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

template <std::size_t... i>
void write_derivatives(double* dx, std::index_sequence<i...> /*states*/) {
  ((dx[i] = derivative<kStates[i].rule>(Tessera_X[i], Tessera_B.u[i], Tessera_DW.sub_block[i].active)), ...);
}

}  // namespace

void Tessera_derivatives() {
  write_derivatives(*Tessera_M_.solver.derivatives, std::make_index_sequence<kStateCount>{});
}
