#include "apps/runner/assignments.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>

#include "apps/runner/errors.h"
#include "apps/runner/text.h"

namespace runner {
namespace {

/// "'text'" after the option that brought it: the start of every message of this file.
std::string in(const std::string& option, std::string_view text) { return option + " '" + std::string(text) + "': "; }

Error usage(const std::string& message) { return {ExitCode::kUsage, message}; }

}  // namespace

std::vector<Write> Assignments::start_value(const std::string& text) const {
  return parse("--start-value", text, /*during_run=*/false);
}

TimedWrites Assignments::set_at(const std::string& text, Milliseconds stop) const {
  const std::string option = "--set-at";
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos) throw usage(in(option, text) + "write it as TIME:NAME=VALUE");
  const Milliseconds time = parse_time(text.substr(0, colon), option + " '" + text + "'", 0);
  if (time >= stop) {
    throw usage(in(option, text) + "would change nothing, the run ends at " + seconds_text(stop) + " s");
  }
  return {time, parse(option, text.substr(colon + 1), /*during_run=*/true)};
}

std::vector<Write> Assignments::parse(const std::string& option, const std::string& text, bool during_run) const {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) throw usage(in(option, text) + "write it as NAME=VALUE");
  const std::string name(trimmed(std::string_view(text).substr(0, equals)));
  const Variable& variable = find_settable(option, name, during_run);
  std::vector<Write> writes = {{&variable, parse_value(option, variable, text.substr(equals + 1))}};
  if (const Variable* gate = gate_of(description_, variable); gate != nullptr && open_gates_)
    writes.push_back({gate, 1.0});
  return writes;
}

const Variable& Assignments::find_settable(const std::string& option, const std::string& name, bool during_run) const {
  constexpr std::string_view kGate = "gate";
  const Variable* found = description_.find(name);
  if (found == nullptr) {
    const bool is_gate = name.starts_with(kGate);
    const std::optional<unsigned> reference = parse_unsigned(is_gate ? name.substr(kGate.size()) : name);
    const VariableType type = is_gate ? VariableType::kBoolean : VariableType::kReal;
    const auto match =
        std::find_if(description_.variables.begin(), description_.variables.end(),
                     [&](const Variable& v) { return reference && v.type == type && v.reference == *reference; });
    if (match != description_.variables.end()) found = &*match;
  }
  if (found == nullptr) {
    std::vector<std::string_view> settable;
    for (const Variable& v : description_.variables) {
      if (v.is_settable()) settable.push_back(v.name);
    }
    throw usage(in(option, name) + "the unit has no such variable" + did_you_mean(name, settable));
  }
  if (!found->is_settable()) {
    throw usage(in(option, name) + found->name + " cannot be set, its causality is " + found->causality +
                "; parameters and inputs can");
  }
  if (during_run && !found->is_tunable()) {
    throw usage(in(option, name) + found->name + " cannot change during the run; set it with --start-value");
  }
  if (found->type != VariableType::kReal && found->type != VariableType::kBoolean) {
    throw usage(in(option, name) + found->name + " is of type " + type_name(found->type) +
                "; this program sets Real and Boolean variables");
  }
  return *found;
}

double Assignments::parse_value(const std::string& option, const Variable& variable, const std::string& text) const {
  const std::string subject = in(option, variable.name + "=" + text);
  if (variable.type == VariableType::kBoolean) {
    const std::string_view word = trimmed(text);
    if (word == "1" || word == "true") return 1.0;
    if (word == "0" || word == "false") return 0.0;
    throw usage(subject + "the value of a Boolean is 0, 1, true or false");
  }

  std::string_view unit;
  std::optional<double> value = leading_number(text, unit);
  if (!value || !std::isfinite(*value)) throw usage(subject + "the value is no finite number");
  if (!unit.empty()) {
    value = convert(description_.units, *value, unit, variable.unit);
    if (!value) {
      std::string known;
      for (const std::string& name : compatible_units(description_.units, variable.unit)) {
        if (!name.empty()) known += (known.empty() ? "" : ", ") + name;
      }
      throw usage(subject + "'" + std::string(unit) + "' is no unit of this variable; " +
                  (known.empty() ? "it has none" : "it takes " + known));
    }
  }
  if ((variable.min && *value < *variable.min) || (variable.max && *value > *variable.max)) {
    const auto limit = [](std::optional<double> bound) { return bound ? number_text(*bound) : "any"; };
    std::cerr << "tessera: warning: " << subject << number_text(*value) << " is outside the described range from "
              << limit(variable.min) << " to " << limit(variable.max) << " " << variable.unit << "\n";
  }
  return *value;
}

const Variable* gate_of(const ModelDescription& description, const Variable& parameter) {
  constexpr std::string_view kSet = "_set";
  if (parameter.type != VariableType::kReal || !parameter.name.ends_with(kSet)) return nullptr;
  const std::string stem = parameter.name.substr(0, parameter.name.size() - kSet.size());
  const Variable* gate = description.find(stem + "_gate");
  return gate != nullptr && gate->type == VariableType::kBoolean ? gate : nullptr;
}

std::vector<const Variable*> select_outputs(const ModelDescription& description,
                                            const std::vector<std::string>& patterns) {
  std::vector<const Variable*> outputs;
  std::vector<std::string_view> names;
  for (const Variable& variable : description.variables) {
    if (!variable.is_output()) continue;
    outputs.push_back(&variable);
    names.push_back(variable.name);
  }
  if (outputs.empty()) throw Error(ExitCode::kFile, "the unit has no outputs");

  for (const std::string& pattern : patterns) {
    if (std::none_of(outputs.begin(), outputs.end(),
                     [&](const Variable* v) { return matches_pattern(v->name, pattern); })) {
      throw usage(in("--output-variable", pattern) + "matches no output" + did_you_mean(pattern, names));
    }
  }
  std::erase_if(outputs, [&](const Variable* v) {
    return !patterns.empty() && std::none_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
      return matches_pattern(v->name, pattern);
    });
  });
  for (const Variable* v : outputs) {
    if (v->type == VariableType::kReal || v->type == VariableType::kBoolean) continue;
    throw Error(ExitCode::kFile, "output " + v->name + " is of type " + type_name(v->type) +
                                     "; this program writes Real and Boolean outputs");
  }
  return outputs;
}

}  // namespace runner
