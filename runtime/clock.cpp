#include "runtime/clock.h"

#include <limits>

#include "runtime/ode3.h"

namespace {

constexpr double kTwoPow32 = 4294967296.0;

void count(TickCounter& ticks) {
  if (++ticks.low == 0) ++ticks.high;
}

}  // namespace

void build_model_record() {
  ModelRecord& m = Tessera_M_;
  m = ModelRecord{};
  m.step_mode = kMajorStep;
  m.derivatives = m.solver_data.f0.data();
  m.solver = {.model = &m,
              .step_mode = &m.step_mode,
              .data = &m.solver_data,
              .name = "ode3",
              .stop_time = 0.0,
              .step_size = &m.step_size,
              .fixed_step_size = kBaseStep,
              .derivatives = &m.derivatives,
              .time = m.time.data(),
              .states = Tessera_X.data(),
              .error_status = &m.errorStatus};
  m.task_id = {0, 1, 2, 3, 4};
  m.sample_time = {0.0, kBaseStep, 0.01, 0.1, 1.0};
  m.sample_hit = {1, 1, 1, 1, 1};
  m.stop_time = -1.0;
  m.base_step_size = kBaseStep;
  m.step_size = kBaseStep;
}

void begin_evaluation() {
  if (!is_major_step()) return;  // the integrator has put the stage time into the model time
  ModelRecord& m = Tessera_M_;
  const auto [low, high] = m.ticks[0];
  if (low == std::numeric_limits<std::uint32_t>::max()) {
    m.solver.stop_time = (high + 1.0) * m.base_step_size * kTwoPow32;
  } else {
    m.solver.stop_time = (low + 1.0) * m.base_step_size + high * m.base_step_size * kTwoPow32;
  }
}

void advance_to_next_step() {
  ModelRecord& m = Tessera_M_;
  rt_ertODEUpdateContinuousStates(m.solver);
  count(m.ticks[0]);
  m.time[0] = m.solver.stop_time;
  count(m.ticks[1]);
  if (m.task_counter[2] == 0) count(m.ticks[2]);
  rate_scheduler();
}

void rate_scheduler() {
  struct SlowTask {
    std::size_t id;
    std::uint16_t steps;  // base steps a period
  };
  static constexpr SlowTask kSlowTasks[] = {{2, 10}, {3, 100}, {4, 1000}};
  ModelRecord& m = Tessera_M_;
  for (const auto& [id, steps] : kSlowTasks) {
    if (++m.task_counter[id] >= steps) m.task_counter[id] = 0;
    m.sample_hit[id] = m.task_counter[id] == 0 ? 1 : 0;
  }
}
