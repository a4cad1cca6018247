// What stands around the model steps: the FMI shell, the runner, the start.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "ratios.h"
#include "unit_in_operation.h"

namespace {

/// A communication step without model steps, and the outputs: what the shell adds to the steps of the model.
void shell(benchmark::State& state) {
  UnitInOperation unit;
  for (auto _ : state) {
    unit.do_step(0.0);
    benchmark::DoNotOptimize(unit.read_outputs());
  }
  state.SetItemsProcessed(state.iterations());
}

/// The two messages that a communication step logs.
void two_log_calls(benchmark::State& state) {
  auto* log = &UnitInOperation::log;
  for (auto _ : state) {
    benchmark::DoNotOptimize(log);
    log(nullptr, "bench", fmi2OK, "info", "CommunicationStepSize=%.16g, LocalSolverStepSize=%.16g", 1.0, kBaseStep);
    benchmark::DoNotOptimize(log);
    log(nullptr, "bench", fmi2OK, "info", "Local solver will do %d steps from t = %.16g.", 1000, 1.0);
  }
  state.SetItemsProcessed(state.iterations());
}

/// Model steps by communication steps of a size.
void steps_by(benchmark::State& state, double size) {
  UnitInOperation unit;
  constexpr double kSpan = 10.0;
  for (auto _ : state) {
    for (double t = 0.0; t < kSpan - 0.5 * size; t += size) unit.do_step(size);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<benchmark::IterationCount>(kSpan / kBaseStep));
}

/// The scenario from its start, one item a model step.
void scenario(benchmark::State& state, int seconds) {
  for (auto _ : state) {
    Tessera_initialize();
    for (int i = 0; i < seconds * 1000; ++i) rtOneStep(Tessera_M);
  }
  state.SetItemsProcessed(state.iterations() * seconds * 1000);
}

/// From the library's file to the first model step, and away again.
void start_up(benchmark::State& state) {
  for (auto _ : state) {
    const ShippedUnit shipped;
    const UnitInOperation unit(shipped.functions(), kBaseStep);
  }
  state.SetItemsProcessed(state.iterations());
}

/// The runner over 10 s, one item a model step.
void runner(benchmark::State& state, const char* interval) {
  const std::string command = TESSERA_PROGRAM " run " TESSERA_FMU " --quiet --stop-time 10 --output-interval " +
                              std::string(interval) + " --output-file /dev/null >/dev/null";
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) return state.SkipWithError("the runner failed");
  }
  state.SetItemsProcessed(state.iterations() * 10000);
}

}  // namespace

Figures add_shell_benchmarks() {
  constexpr const char *kShell = "communication step with 146 outputs", *kLogs = "its two log calls";
  benchmark::RegisterBenchmark(kShell, shell);
  benchmark::RegisterBenchmark(kLogs, two_log_calls);

  constexpr const char *kShort = "model step by steps of 10 ms", *kLong = "model step by steps of 10 s";
  benchmark::RegisterBenchmark(kShort, steps_by, 0.01);
  benchmark::RegisterBenchmark(kLong, steps_by, 10.0);

  constexpr const char *kBeginning = "scenario of 200 s", *kWhole = "scenario of 2000 s";
  benchmark::RegisterBenchmark(kBeginning, scenario, 200)->Iterations(1)->Repetitions(3);
  benchmark::RegisterBenchmark(kWhole, scenario, 2000)->Iterations(1)->Repetitions(3);

  constexpr const char* kStart = "load to first step";
  benchmark::RegisterBenchmark(kStart, start_up);

  constexpr const char *kRows = "runner, a row each model step", *kNoRows = "runner, hardly a row";
  for (const auto& [name, interval] : {std::pair{kRows, "0.001"}, std::pair{kNoRows, "10"}}) {
    benchmark::RegisterBenchmark(name, runner, interval)->UseRealTime();
  }
  return {.ratios = {{kShort, kLong, 1.1}, {kWhole, kBeginning, 1.1}},
          .costs = {{kShell, kLogs, 0.5}, {kRows, kNoRows, 15.0}, {kStart, nullptr, 20000.0}}};
}
