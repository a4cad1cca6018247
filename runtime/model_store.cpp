#include "runtime/model_store.h"

constinit ModelRecord Tessera_M_{};
constinit ModelRecord* const Tessera_M = &Tessera_M_;
constinit StateVector Tessera_X{};
constinit std::array<double, kOutputCount> Tessera_Y{};
constinit TunableParameters Tessera_P = [] {
  TunableParameters start{};
  for (std::size_t k = 0; k < kInputCount; ++k) start.real[k] = kInputs[k].start;
  return start;
}();
