#include "apps/runner/validate.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "apps/runner/errors.h"
#include "apps/runner/model_description.h"
#include "apps/runner/text.h"
#include "apps/runner/unit_archive.h"
#include "apps/runner/unit_instance.h"
#include "apps/runner/unit_library.h"
#include "apps/runner/unit_log.h"

namespace runner {
namespace {

class Findings {
 public:
  void add(const std::string& problem) { problems_.push_back(problem); }

  /// Runs a check; an Error that ends it is a finding. @return did it come to its end?
  template <typename Check>
  bool attempt(const Check& check) {
    try {
      check();
      return true;
    } catch (const Error& error) {
      add(error.what());
      return false;
    }
  }

  const std::vector<std::string>& problems() const { return problems_; }

 private:
  std::vector<std::string> problems_;
};

std::string text(const Variable& variable) { return "variable '" + variable.name + "'"; }

/// Value references are per base type, and an Enumeration is an Integer to the interface.
VariableType base_type(const Variable& variable) {
  return variable.type == VariableType::kEnumeration ? VariableType::kInteger : variable.type;
}

void check_variables(const ModelDescription& description, Findings& findings) {
  std::set<std::string> names;
  std::map<std::pair<VariableType, fmi2ValueReference>, std::string> owners;
  for (const Variable& v : description.variables) {
    if (!names.insert(v.name).second) findings.add(text(v) + ": the name is used twice");
    const auto [owner, is_new] = owners.try_emplace({base_type(v), v.reference}, v.name);
    if (!is_new) {
      findings.add(text(v) + ": " + type_name(v.type) + " value reference " + std::to_string(v.reference) +
                   " is already that of '" + owner->second + "'");
    }
    const auto defines_unit = [&](const Unit& unit) { return unit.name == v.unit; };
    if (!v.unit.empty() && std::none_of(description.units.begin(), description.units.end(), defines_unit)) {
      findings.add(text(v) + ": unit '" + v.unit + "' is not defined");
    }
  }
}

void check_structure(const ModelDescription& description, Findings& findings) {
  const auto is_position = [&](std::optional<unsigned> index) {
    return index && *index >= 1 && *index <= description.variables.size();
  };
  std::set<unsigned> listed_outputs;
  for (const Unknown& unknown : description.structure) {
    const std::string subject = "ModelStructure, " + unknown.list + ": ";
    if (!is_position(unknown.index)) {
      findings.add(subject + "an index is missing or is no position of a variable" +
                   (unknown.index ? " (" + std::to_string(*unknown.index) + ")" : ""));
      continue;
    }
    if (!std::all_of(unknown.dependencies.begin(), unknown.dependencies.end(), is_position)) {
      findings.add(subject + "the dependencies of index " + std::to_string(*unknown.index) +
                   " are no positions of variables");
    }
    const Variable& variable = description.variables[*unknown.index - 1];
    if (unknown.list != "Outputs") continue;
    if (!variable.is_output()) findings.add(subject + text(variable) + " is no output");
    if (!listed_outputs.insert(*unknown.index).second) findings.add(subject + text(variable) + " is listed twice");
  }
  for (unsigned i = 0; i < description.variables.size(); ++i) {
    const Variable& v = description.variables[i];
    if (v.is_output() && !listed_outputs.contains(i + 1)) findings.add("ModelStructure, Outputs: lacks " + text(v));
  }
}

void check_description(const ModelDescription& description, Findings& findings) {
  for (const std::string& problem : description.problems) findings.add(problem);
  if (description.fmi_version != "2.0") {
    findings.add("fmiVersion is '" + description.fmi_version + "', not '2.0'");
  }
  if (description.model_name.empty()) findings.add("the description has no modelName");
  if (description.guid.empty()) findings.add("the description has no guid");
  check_variables(description, findings);
  check_structure(description, findings);
}

/// Does the unit start with the values that its description tells?
void check_start_values(UnitInstance& unit, const ModelDescription& description, Findings& findings) {
  for (const Variable& v : description.variables) {
    if (!v.start) continue;
    findings.attempt([&] {
      if (v.type == VariableType::kReal) {
        double value = 0.0;
        unit.read(std::span(&v.reference, 1), std::span(&value, 1));
        if (parse_number(*v.start) != value) {
          findings.add(text(v) + ": start is " + *v.start + ", but the unit starts with " + number_text(value));
        }
      } else if (v.type == VariableType::kBoolean) {
        fmi2Boolean value = fmi2False;
        unit.read(std::span(&v.reference, 1), std::span(&value, 1));
        if ((*v.start == "true" || *v.start == "1") != (value != fmi2False)) {
          findings.add(text(v) + ": start is " + *v.start + ", but the unit starts with the opposite");
        }
      }
    });
  }
}

void check_outputs(UnitInstance& unit, const ModelDescription& description, Findings& findings) {
  for (const Variable& v : description.variables) {
    if (!v.is_output() || v.type != VariableType::kReal) continue;
    double value = 0.0;
    const bool is_readable = findings.attempt([&] { unit.read(std::span(&v.reference, 1), std::span(&value, 1)); });
    if (is_readable && !std::isfinite(value)) findings.add(text(v) + ": is " + number_text(value) + " at time 0");
  }
}

void check_binary(const UnitLibrary& library, const ModelDescription& description, Findings& findings) {
  for (const std::string& name : library.missing()) findings.add("the binary does not export " + name);
  if (!library.missing().empty()) return;
  const std::string platform = text_of(library.functions().fmi2GetTypesPlatform());
  if (platform != "default") findings.add("fmi2GetTypesPlatform answers '" + platform + "', not 'default'");

  UnitLog silent(LogLevel::kNothing, "", nullptr);
  bool refuses = false;
  try {
    UnitInstance(library, description.model_name, "{00000000-0000-0000-0000-000000000000}", silent);
  } catch (const Error& error) {
    refuses = error.code() == ExitCode::kUnitError;
    if (!refuses) return findings.add(error.what());
  }
  if (!refuses) findings.add("fmi2Instantiate accepts a GUID that is not the unit's own");

  UnitLog log(LogLevel::kWarning, "", nullptr);
  findings.attempt([&] {
    UnitInstance unit(library, description.model_name, description.guid, log);
    check_start_values(unit, description, findings);
    const bool is_initialized = findings.attempt([&] { unit.initialize(1000); });
    if (is_initialized) check_outputs(unit, description, findings);
    unit.finish();
  });
}

}  // namespace

ExitCode validate(const std::filesystem::path& unit) {
  const UnitArchive archive(unit);
  Findings findings;
  for (const std::string& entry : archive.entries()) {
    findings.attempt([&] { archive.read(entry); });  // compares the checksum
  }
  std::optional<ModelDescription> description;
  if (archive.contains(kDescriptionEntry)) {
    findings.attempt([&] { description = parse_model_description(archive.read(kDescriptionEntry)); });
  } else {
    findings.add(std::string("the archive has no ") + kDescriptionEntry);
  }
  if (description) {
    check_description(*description, findings);
    findings.attempt([&] {
      if (description->model_identifier.empty()) return;  // already a problem of the description
      check_binary(UnitLibrary(archive, description->model_identifier), *description, findings);
    });
  }

  const std::string subject = unit.string() + ": ";
  for (const std::string& problem : findings.problems()) {
    std::cout << (problem.starts_with(subject) ? "" : subject) << problem << "\n";
  }
  if (!findings.problems().empty()) return ExitCode::kFindings;
  const auto outputs = std::count_if(description->variables.begin(), description->variables.end(),
                                     [](const Variable& v) { return v.is_output(); });
  std::cout << subject << "no findings (" << description->variables.size() << " variables, " << outputs
            << " of them outputs; " << binary_entry(description->model_identifier) << ")\n";
  return ExitCode::kOk;
}

}  // namespace runner
