#pragma once

#include "runtime/model_store.h"

/// The model's clock and its rates.

/// Zeroes the model record and wires the solver: step mode major, time 0, all rates hitting.
void build_model_record();

inline bool is_built() { return Tessera_M_.solver.model != nullptr; }
inline bool is_major_step() { return Tessera_M_.step_mode == kMajorStep; }

/// Model time [s]; the time of the stage in a minor step.
inline double model_time() { return Tessera_M_.time[0]; }

/// True in a major step on a tick of the rate; always true for the rates that have no tick.
inline bool hits(Rate rate) {
  const auto task_hits = [](std::size_t task) { return is_major_step() && Tessera_M_.task_counter[task] == 0; };
  switch (rate) {
    case Rate::tick_1ms:
      return task_hits(1);
    case Rate::tick_10ms:
      return task_hits(2);
    case Rate::tick_100ms:
      return task_hits(3);
    case Rate::tick_1s:
      return task_hits(4);
    case Rate::constant:
    case Rate::continuous:
      break;
  }
  return true;
}

/// Head of an evaluation: in a major step sets the solver stop time, from the tick count so that no rounding gathers.
void begin_evaluation();

/// Tail of a major step: integrates to the solver stop time, counts the ticks and schedules the rates.
void advance_to_next_step();

/// Moves the counters of tasks 2 to 4 by one base step and notes which of them hit next.
void rate_scheduler();
