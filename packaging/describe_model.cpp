// modelDescription.xml, as the FMI 2.0 standard lays it out.

#include <pugixml.hpp>
#include <sstream>
#include <string>

#include "fmi/fmu_instance.h"
#include "model/tables/scenario.h"
#include "packaging/describe.h"

namespace {

void set(pugi::xml_node node, const char* name, std::string_view value) {
  node.append_attribute(name) = std::string(value).c_str();
}
void set(pugi::xml_node node, const char* name, const char* value) { node.append_attribute(name) = value; }
void set(pugi::xml_node node, const char* name, bool value) { node.append_attribute(name) = value; }
void set(pugi::xml_node node, const char* name, double value) { set(node, name, std::string_view(number(value))); }
void set(pugi::xml_node node, const char* name, std::size_t value) {
  node.append_attribute(name) = static_cast<unsigned long long>(value);
}

void write_capabilities(pugi::xml_node root) {
  pugi::xml_node node = root.append_child("CoSimulation");
  set(node, "modelIdentifier", "Tessera");
  set(node, "needsExecutionTool", false);
  set(node, "canHandleVariableCommunicationStepSize", true);
  set(node, "canInterpolateInputs", false);
  set(node, "maxOutputDerivativeOrder", std::size_t{0});
  set(node, "canRunAsynchronuously", false);  // spelled so by the standard's schema
  set(node, "canBeInstantiatedOnlyOncePerProcess", true);
  set(node, "canNotUseMemoryManagementFunctions", true);
  set(node, "canGetAndSetFMUstate", false);
  set(node, "canSerializeFMUstate", false);
  set(node, "providesDirectionalDerivative", false);
}

void write_units(pugi::xml_node root) {
  pugi::xml_node units = root.append_child("UnitDefinitions");
  for (const UnitRow& row : kUnits) {
    pugi::xml_node unit = units.append_child("Unit");
    set(unit, "name", row.name);
    pugi::xml_node base = unit.append_child("BaseUnit");
    const std::pair<const char*, int> exponents[] = {{"kg", row.kg}, {"m", row.m}, {"s", row.s},
                                                     {"A", row.A},   {"K", row.K}, {"rad", row.rad}};
    for (const auto& [name, exponent] : exponents) {
      if (exponent != 0) base.append_attribute(name) = exponent;
    }
    set(base, "factor", row.factor);
    set(base, "offset", row.offset);
    for (const DisplayUnitRow& display : kDisplayUnits) {
      if (display.unit != row.id) continue;
      pugi::xml_node shown = unit.append_child("DisplayUnit");
      set(shown, "name", display.name);
      set(shown, "factor", display.factor);
      set(shown, "offset", display.offset);
    }
  }
}

void set_unit(pugi::xml_node real, unit::Index unit) {
  set(real, "unit", kUnits[unit].name);
  if (unit == unit::K) set(real, "displayUnit", kUnits[unit::degC].name);
}

void write_types(pugi::xml_node root) {
  pugi::xml_node types = root.append_child("TypeDefinitions");
  for (std::size_t i = 0; i < kUnits.size(); ++i) {
    pugi::xml_node type = types.append_child("SimpleType");
    set(type, "name", kUnits[i].type);
    set_unit(type.append_child("Real"), static_cast<unit::Index>(i));
  }
}

void write_log_categories(pugi::xml_node root) {
  const std::pair<const char*, const char*> categories[] = {
      {"error", "A call that failed; always sent"},
      {"info",
       "The two lines of every communication step, always sent, and the trace of the variable accessors, sent "
       "while logging is on"}};
  pugi::xml_node list = root.append_child("LogCategories");
  for (const auto& [name, description] : categories) {
    pugi::xml_node category = list.append_child("Category");
    set(category, "name", name);
    set(category, "description", description);
  }
}

void write_default_experiment(pugi::xml_node root) {
  pugi::xml_node experiment = root.append_child("DefaultExperiment");
  set(experiment, "startTime", 0.0);
  set(experiment, "stopTime", kScenarioEnd_s);
  set(experiment, "tolerance", 1e-4);
  set(experiment, "stepSize", 1.0);  // the model steps by 1 ms; a result with a row for each would fill gigabytes
}

pugi::xml_node append_variable(pugi::xml_node list, std::string_view name, std::size_t reference,
                               std::string_view description, const char* causality, const char* variability) {
  pugi::xml_node variable = list.append_child("ScalarVariable");
  set(variable, "name", name);
  set(variable, "valueReference", reference);
  set(variable, "description", description);
  set(variable, "causality", causality);
  set(variable, "variability", variability);
  return variable;
}

pugi::xml_node append_real(pugi::xml_node variable, unit::Index unit) {
  pugi::xml_node real = variable.append_child("Real");
  set(real, "declaredType", kUnits[unit].type);
  set_unit(real, unit);
  return real;
}

void write_variables(pugi::xml_node root) {
  pugi::xml_node list = root.append_child("ModelVariables");
  for (std::size_t vr = 0; vr < kOutputCount; ++vr) {
    const OutputRow& row = kOutputs[vr];
    append_real(append_variable(list, row.name, vr, row.text, "output", "continuous"), row.unit);
  }
  for (std::size_t k = 0; k < kInputCount; ++k) {
    const InputRow& row = kInputs[k];
    pugi::xml_node variable =
        append_variable(list, row.parameter, kFirstParameter + k, parameter_text(k), "parameter", "tunable");
    set(variable, "initial", "exact");
    pugi::xml_node real = append_real(variable, row.unit);
    set(real, "min", row.min);
    set(real, "max", row.max);
    set(real, "nominal", row.nominal);
    set(real, "start", row.start);
  }
  for (std::size_t k = 0; k < kInputCount; ++k) {
    pugi::xml_node variable = append_variable(list, kInputs[k].gate, k, gate_text(k), "parameter", "tunable");
    set(variable, "initial", "exact");
    set(variable.append_child("Boolean"), "start", false);
  }
  append_real(append_variable(list, "time", kTimeReference, "FMU time", "independent", "continuous"), unit::s);
}

/// The outputs are the first variables, so the position of each is its value reference + 1.
void write_structure(pugi::xml_node root) {
  pugi::xml_node structure = root.append_child("ModelStructure");
  pugi::xml_node outputs = structure.append_child("Outputs");
  pugi::xml_node initial_unknowns = structure.append_child("InitialUnknowns");
  for (std::size_t vr = 0; vr < kOutputCount; ++vr) {
    pugi::xml_node output = outputs.append_child("Unknown");
    set(output, "index", vr + 1);
    set(output, "dependencies", "");  // there are no inputs, and no states are exposed
    set(initial_unknowns.append_child("Unknown"), "index", vr + 1);
  }
}

}  // namespace

std::string model_description() {
  pugi::xml_document document;
  pugi::xml_node declaration = document.append_child(pugi::node_declaration);
  set(declaration, "version", "1.0");
  set(declaration, "encoding", "UTF-8");

  pugi::xml_node root = document.append_child("fmiModelDescription");
  set(root, "fmiVersion", "2.0");
  set(root, "modelName", "Tessera");
  set(root, "guid", kGuid);
  set(root, "description", TESSERA_DESCRIPTION);
  set(root, "author", "the Tessera developers");
  set(root, "version", TESSERA_VERSION);
  set(root, "license", "BSD-2-Clause");
  set(root, "generationTool", "Tessera " TESSERA_VERSION);
  set(root, "variableNamingConvention", "structured");

  write_capabilities(root);
  write_units(root);
  write_types(root);
  write_log_categories(root);
  write_default_experiment(root);
  write_variables(root);
  write_structure(root);

  std::ostringstream text;
  document.save(text, "  ");
  return text.str();
}
