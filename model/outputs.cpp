#include "model/outputs.h"

#include "model/signals.h"
#include "runtime/clock.h"

namespace {

// What the rows' formulas speak of.
[[maybe_unused]] constexpr const Signals& b = Tessera_B;
[[maybe_unused]] constexpr const StateVector& x = Tessera_X;
[[maybe_unused]] constexpr const MemoryValues& m = Tessera_B.memory;
constexpr double unbuilt = 0.0;

// The factor stands first, as in the plant's own products.
constexpr double bar_from_Pa(double p) { return 1e-5 * p; }
constexpr double degC_from_K(double T) { return T - 273.15; }

template <Rate rate, class Value>
void write_output(std::size_t vr, Value value) {
  if constexpr (rate == Rate::constant || rate == Rate::continuous) {
    Tessera_Y[vr] = value();
  } else {
    if (hits(rate)) Tessera_B.sample[vr] = value();
    Tessera_Y[vr] = Tessera_B.sample[vr];
  }
}

}  // namespace

void write_outputs() {
#define OUTPUT(component, quantity, group, rate, unit, value, text) \
  write_output<Rate::rate>(output::component##_##quantity, [] { return value; });
#include "model/tables/outputs.def"
}
