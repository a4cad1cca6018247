#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/runner/run_options.h"
#include "apps/sweep/plan.h"

namespace sweep {

/// What is the same for all points, as a player needs it.
struct Job {
  runner::RunOptions run;
  std::vector<std::string> inputs;  ///< names
  struct Value {
    std::string signal;
    Take take;
  };
  std::vector<Value> keep;
  std::vector<std::string> scalars;
};

/// Values of the inputs at a point, in the order of Job::inputs, with all digits.
using Task = std::vector<std::string>;

/// How a point ended.
struct Outcome {
  std::string status;               ///< "ok", or why there are no values
  std::string reason;               ///< empty if "ok"
  std::vector<std::string> values;  ///< kept outputs, then scalars; empty if not "ok"
};

inline constexpr const char* kOk = "ok";
inline constexpr const char* kTimeOut = "time_out";
inline constexpr const char* kCrashed = "crashed";
inline constexpr const char* kUnplayable = "unplayable";  ///< no point of the plan can be played; never in the results

/// These travel between the processes as one line of JSON each.
std::string to_line(const Job& job);
std::string to_line(const Task& task);
std::string to_line(const Outcome& outcome);
Job job_of(const std::string& line);
Task task_of(const std::string& line);
Outcome outcome_of(const std::string& line);

}  // namespace sweep
