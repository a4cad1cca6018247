#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "apps/runner/assignments.h"
#include "apps/runner/errors.h"
#include "apps/runner/model_description.h"
#include "apps/runner/run_options.h"
#include "apps/runner/times.h"
#include "apps/runner/unit_instance.h"
#include "apps/runner/unit_library.h"
#include "apps/runner/unit_log.h"

namespace runner {

/// A run as the options and the description settle it. It refers to variables of the description.
struct Plan {
  Milliseconds stop = 0;
  Milliseconds interval = 0;
  Milliseconds record_from = 0;
  std::vector<const Variable*> outputs;
  std::vector<Write> start;
  std::vector<TimedWrites> changes;  ///< in the order of time
  std::optional<double> timeout;     ///< wall time [s]
  bool allow_non_finite = false;
};

/// @throws Error kUsage if the options ask for something that cannot be, kFile if the outputs cannot be written
Plan make_plan(const RunOptions& options, const ModelDescription& description);

/// Receives a row: one value an output of the plan. An Error that it throws ends the run.
using RowSink = std::function<void(Milliseconds, std::span<const double>)>;

/// How a run went.
struct Played {
  Milliseconds reached = 0;     ///< time of the unit at the end
  std::vector<Error> failures;  ///< empty: it finished; otherwise the first tells why it ended
};

/// Plays the plan with an instance of its own, from its instantiation to its release. Prints nothing but the messages
/// of the log. A run ends early by an error of the unit, an output that is not finite, a signal or the time-out of the
/// plan; signals count once note_ending_signals() was called, and both are seen between two steps only.
/// @param row       called at each time of a row from plan.record_from on
/// @param progress  called with the time after each step; may be empty
Played play(const UnitLibrary& library, const ModelDescription& description, const Plan& plan, UnitLog& log,
            const RowSink& row, const std::function<void(Milliseconds)>& progress = {});

/// "finished", or what ended the run and where.
std::string state_text(const Played& played, const Plan& plan);

}  // namespace runner
