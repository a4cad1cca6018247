#pragma once

#include <string>
#include <vector>

#include "apps/runner/model_description.h"
#include "apps/runner/times.h"
#include "apps/runner/unit_instance.h"

namespace runner {

/// Writes that the unit receives at a time of the run.
struct TimedWrites {
  Milliseconds time;
  std::vector<Write> writes;
};

/// The Boolean X_gate that decides whether the unit takes the Real parameter X_set; null if `parameter` has none.
const Variable* gate_of(const ModelDescription& description, const Variable& parameter);

/// How texts of the command line become writes to variables.
///
/// A variable is named by its name in the description, a Real also by its value reference alone ("148"), a Boolean as
/// "gate" and its value reference ("gate13"). The value of a Real may be followed by a unit that the description
/// defines and that measures the same as the variable's own. The value of a Boolean is 0, 1, true or false.
class Assignments {
 public:
  /// @param open_gates  does setting a parameter NAME_set also set the Boolean NAME_gate, if there is one?
  Assignments(const ModelDescription& description, bool open_gates)
      : description_(description), open_gates_(open_gates) {}

  /// Reads "NAME=VALUE".
  /// @throws Error kUsage naming what is wrong and what would do
  std::vector<Write> start_value(const std::string& text) const;

  /// Reads "TIME:NAME=VALUE" with a time in seconds before the end of the run.
  /// @throws Error kUsage naming what is wrong and what would do
  TimedWrites set_at(const std::string& text, Milliseconds stop) const;

 private:
  std::vector<Write> parse(const std::string& option, const std::string& text, bool during_run) const;
  const Variable& find_settable(const std::string& option, const std::string& name, bool during_run) const;
  double parse_value(const std::string& option, const Variable& variable, const std::string& text) const;

  const ModelDescription& description_;
  bool open_gates_;
};

/// The outputs that match any of the patterns, or all if there is no pattern; in the order of the description.
/// @throws Error kUsage if a pattern matches none, kFile if the unit has no outputs or one is neither Real nor Boolean
std::vector<const Variable*> select_outputs(const ModelDescription& description,
                                            const std::vector<std::string>& patterns);

}  // namespace runner
