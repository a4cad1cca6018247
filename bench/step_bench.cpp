// One model step of the whole unit, and the property calls that it contains.

#include <benchmark/benchmark.h>

#include <cstddef>

#include "fmi/fmu_instance.h"
#include "model/child_blocks.h"
#include "model/tables/child_blocks.h"
#include "ratios.h"
#include "runtime/model_store.h"

namespace {

/// A unit in operation, 20 s into its scenario.
void bring_into_operation() {
  for (std::size_t k = 0; k < kInputCount; ++k) Tessera_P.real[k] = kInputs[k].start;
  Tessera_P.boolean = {};
  Tessera_initialize();
  for (int i = 0; i < 20000; ++i) rtOneStep(Tessera_M);
}

void one_step(benchmark::State& state) {
  bring_into_operation();
  for (auto _ : state) {
    rtOneStep(Tessera_M);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}

/// The property calls of the three evaluations of a step, as the blocks make them.
void its_property_calls(benchmark::State& state) {
  bring_into_operation();
  for (auto _ : state) {
    for (int evaluation = 0; evaluation < 3; ++evaluation) {
      for (std::size_t node = 0; node < kVolumeCount; ++node) run_child_blocks(static_cast<gas_node::Index>(node));
      for (std::size_t volume = 0; volume < kLiquidCount; ++volume) run_child_block(static_cast<liquid::Index>(volume));
      run_child_blocks(gas_node::ambient);
      run_compressed_air_child_blocks();
      benchmark::ClobberMemory();
    }
  }
  state.SetItemsProcessed(state.iterations());
}

}  // namespace

std::vector<Ratio> add_step_benchmarks() {
  benchmark::RegisterBenchmark("one model step", one_step);
  benchmark::RegisterBenchmark("one model step, its property calls", its_property_calls);
  return {{"one model step", "one model step, its property calls", 4}};
}
