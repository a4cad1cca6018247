// One model step of the whole unit: against the arithmetic that it cannot do without, and what each block group takes.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>

#include "limit.h"
#include "model/cooling_loop.h"
#include "model/gas_network.h"
#include "model/inputs.h"
#include "model/outputs.h"
#include "model/power_network.h"
#include "model/supervisory_logic.h"
#include "ratios.h"
#include "runtime/model_store.h"
#include "runtime/ode3.h"
#include "unit_in_operation.h"

namespace {

/// What a step consists of, in its order. Called one by one in the unit that is linked here, while the step is that of
/// the shipped one: the shares need not add up to 1.
constexpr struct {
  const char* name;
  void (*evaluate)();
  double times;  ///< in a step
} kGroups[] = {
    {"gas volumes", gas_volumes, 3},
    {"pressure reducer", pressure_reducer, 3},
    {"hydrogen loop", hydrogen_loop, 3},
    {"inputs", read_inputs, 3},
    {"power demand, stack voltage", power_demand_and_stack_voltage, 3},
    {"outside air", outside_air, 3},
    {"compressor flow", compressor_flow, 3},
    {"supervisory logic", supervisory_logic, 3},
    {"hydrogen valves", hydrogen_valves, 3},
    {"air line", air_line, 3},
    {"coolant volumes", coolant_volumes, 3},
    {"thermal supervision", thermal_supervision, 3},
    {"radiator", radiator, 3},
    {"power network", power_network, 3},
    {"compressor drive", compressor_drive, 3},
    {"humidifier", humidifier_exchange, 3},
    {"coolant balances", coolant_balances, 3},
    {"stack gases", stack_gases, 3},
    {"gas balances", gas_balances, 3},
    {"input lags", feed_input_lags, 3},
    {"derivatives", Tessera_derivatives, 3},
    {"outputs", write_outputs, 1},
};

/// A hundredth of the communication step is in it, which is nothing.
void one_step(benchmark::State& state) {
  const ShippedUnit shipped;
  UnitInOperation unit(shipped.functions());
  for (auto _ : state) unit.do_step(100 * kBaseStep);
  state.SetItemsProcessed(state.iterations() * 100);
}

/// The same while the weather changes, so that no evaluation can take its ambient air from the one before.
void one_step_in_changing_weather(benchmark::State& state) {
  const ShippedUnit shipped;
  UnitInOperation unit(shipped.functions());
  double temperature = 40.0;  // degC, that of the scenario; the air follows with 1 s
  for (auto _ : state) {
    temperature = temperature > 30.0 ? 20.0 : 40.0;
    unit.set(input::ambient_temperature, temperature);
    unit.do_step(100 * kBaseStep);
  }
  unit.close(input::ambient_temperature);
  state.SetItemsProcessed(state.iterations() * 100);
}

/// The limit of a step: three evaluations.
void limit(benchmark::State& state) {
  LimitState mix = limit_start();
  for (auto _ : state) {
    for (int evaluation = 0; evaluation < 3; ++evaluation) limit_evaluation(mix);
  }
  benchmark::DoNotOptimize(checksum(mix));
  state.SetItemsProcessed(state.iterations());
}

/// A group on its own, as in a minor step; the outputs as in a major one.
void group(benchmark::State& state, void (*evaluate)()) {
  const UnitInOperation unit;
  if (evaluate != write_outputs) Tessera_M_.step_mode = kMinorStep;
  for (auto _ : state) {
    evaluate();
    benchmark::ClobberMemory();
  }
  Tessera_M_.step_mode = kMajorStep;
  state.SetItemsProcessed(state.iterations());
}

}  // namespace

Figures add_step_benchmarks() {
  constexpr const char *kStep = "one model step", *kInWeather = "one model step in changing weather";
  constexpr const char* kLimit = "its arithmetic alone";
  benchmark::RegisterBenchmark(kStep, one_step);
  benchmark::RegisterBenchmark(kInWeather, one_step_in_changing_weather);
  benchmark::RegisterBenchmark(kLimit, limit);
  Figures figures{.ratios = {{kStep, kLimit, 1.5}, {kInWeather, kLimit, 0}}, .costs = {}};
  for (const auto& [name, evaluate, times] : kGroups) {
    benchmark::RegisterBenchmark(name, group, evaluate);
    figures.ratios.push_back({name, kStep, 0, times});
  }
  return figures;
}
