#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/runner/unit_archive.h"
#include "apps/runner/units.h"
#include "fmi/fmi2.h"

namespace runner {

enum class VariableType { kReal, kInteger, kBoolean, kString, kEnumeration };
const char* type_name(VariableType type);

/// A variable as the model description declares it; attributes that it leaves to its declared type are filled in.
struct Variable {
  std::string name, description, causality, variability, unit;
  VariableType type = VariableType::kReal;
  fmi2ValueReference reference = 0;
  std::optional<std::string> start;  ///< as written
  std::optional<double> min, max;

  /// May an importer set it before the run? During the run?
  bool is_settable() const { return causality == "input" || causality == "parameter"; }
  bool is_tunable() const { return causality == "input" || (causality == "parameter" && variability == "tunable"); }
  bool is_output() const { return causality == "output"; }
};

/// One line of a list of the ModelStructure; numbers are positions in the list of variables, counted from 1.
struct Unknown {
  std::string list;  ///< "Outputs", "Derivatives" or "InitialUnknowns"
  std::optional<unsigned> index;
  std::vector<std::optional<unsigned>> dependencies;
};

/// modelDescription.xml of a co-simulation unit. Texts are empty where the description is silent.
struct ModelDescription {
  std::string fmi_version, model_name, description, version, guid, model_identifier, generation_tool;
  std::string stop_time, step_size;  ///< of the DefaultExperiment, in seconds, as written
  std::vector<Variable> variables;   ///< in the order of the description
  std::vector<Unit> units;
  std::vector<Unknown> structure;
  std::vector<std::string> problems;  ///< what cannot be read as the FMI standard has it

  /// The variable of that name; null if there is none.
  const Variable* find(std::string_view name) const;
};

inline constexpr const char* kDescriptionEntry = "modelDescription.xml";

/// @throws Error kFile if the text is no well-formed XML or no model description at all
ModelDescription parse_model_description(const std::string& xml);

/// Reads the description out of the archive for a command that needs a sound one.
/// @throws Error kFile if it is missing or has any problem
ModelDescription load_model_description(const UnitArchive& archive);

}  // namespace runner
