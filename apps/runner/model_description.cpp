#include "apps/runner/model_description.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <pugixml.hpp>
#include <sstream>
#include <utility>

#include "apps/runner/errors.h"
#include "apps/runner/text.h"

namespace runner {
namespace {

constexpr std::array<std::pair<const char*, VariableType>, 5> kTypes = {{{"Real", VariableType::kReal},
                                                                         {"Integer", VariableType::kInteger},
                                                                         {"Boolean", VariableType::kBoolean},
                                                                         {"String", VariableType::kString},
                                                                         {"Enumeration", VariableType::kEnumeration}}};

/// Fills a ModelDescription from the XML tree and notes what it cannot read.
class Reader {
 public:
  explicit Reader(const pugi::xml_node& root) : root_(root) {}

  ModelDescription read() {
    result_.fmi_version = text(root_, "fmiVersion");
    result_.model_name = text(root_, "modelName");
    result_.description = text(root_, "description");
    result_.version = text(root_, "version");
    result_.guid = text(root_, "guid");
    result_.generation_tool = text(root_, "generationTool");
    read_identifier();
    const pugi::xml_node experiment = root_.child("DefaultExperiment");
    result_.stop_time = text(experiment, "stopTime");
    result_.step_size = text(experiment, "stepSize");
    for (const pugi::xml_node& unit : root_.child("UnitDefinitions").children("Unit")) read_unit(unit);
    for (const pugi::xml_node& variable : root_.child("ModelVariables").children("ScalarVariable")) {
      read_variable(variable);
    }
    if (result_.variables.empty()) note("the description lists no variables");
    for (const char* list : {"Outputs", "Derivatives", "InitialUnknowns"}) {
      for (const pugi::xml_node& unknown : root_.child("ModelStructure").child(list).children("Unknown")) {
        read_unknown(unknown, list);
      }
    }
    return std::move(result_);
  }

 private:
  static std::string text(const pugi::xml_node& node, const char* attribute) {
    return node.attribute(attribute).as_string();
  }
  void note(const std::string& problem) { result_.problems.push_back(problem); }

  /// A number that may be absent.
  std::optional<double> number(const pugi::xml_node& node, const char* attribute, const std::string& owner) {
    if (!node.attribute(attribute)) return std::nullopt;
    const std::optional<double> value = parse_number(text(node, attribute));
    if (!value) note(owner + ": " + attribute + "=\"" + text(node, attribute) + "\" is no number");
    return value;
  }

  void read_identifier() {
    const pugi::xml_node co_simulation = root_.child("CoSimulation");
    if (!co_simulation) return note("the description offers no CoSimulation");
    result_.model_identifier = text(co_simulation, "modelIdentifier");
    const std::string& id = result_.model_identifier;  // becomes a file name: it must be what the standard allows
    const bool is_identifier = !id.empty() && std::isdigit(static_cast<unsigned char>(id[0])) == 0 &&
                               std::all_of(id.begin(), id.end(), [](unsigned char c) {
                                 return c == '_' || (c < 128 && std::isalnum(c) != 0);
                               });
    if (!is_identifier) note("modelIdentifier=\"" + id + "\" is no identifier of the C language");
  }

  void read_unit(const pugi::xml_node& node) {
    Unit unit;
    unit.name = text(node, "name");
    const std::string owner = "unit '" + unit.name + "'";
    if (const pugi::xml_node base = node.child("BaseUnit")) {
      constexpr const char* kBases[] = {"kg", "m", "s", "A", "K", "mol", "cd", "rad"};
      unit.base.emplace();
      for (std::size_t i = 0; i < std::size(kBases); ++i) unit.base->exponents[i] = base.attribute(kBases[i]).as_int();
      unit.base->factor = factor(base, owner);
      unit.base->offset = number(base, "offset", owner).value_or(0.0);
    }
    for (const pugi::xml_node& display : node.children("DisplayUnit")) {
      unit.displays.push_back(
          {text(display, "name"), factor(display, owner), number(display, "offset", owner).value_or(0.0)});
    }
    result_.units.push_back(std::move(unit));
  }

  double factor(const pugi::xml_node& node, const std::string& owner) {
    const double value = number(node, "factor", owner).value_or(1.0);
    if (value != 0.0 && std::isfinite(value)) return value;
    note(owner + ": factor=\"" + text(node, "factor") + "\" does not define a scale");
    return 1.0;
  }

  void read_variable(const pugi::xml_node& node) {
    Variable variable;
    variable.name = text(node, "name");
    const std::string owner = "variable '" + variable.name + "'";
    if (variable.name.empty()) note("variable " + std::to_string(result_.variables.size() + 1) + " has no name");

    const std::optional<unsigned> reference = parse_unsigned(text(node, "valueReference"));
    if (!reference) note(owner + ": valueReference=\"" + text(node, "valueReference") + "\" is no value reference");
    variable.reference = reference.value_or(0);
    variable.description = text(node, "description");
    variable.causality = node.attribute("causality").as_string("local");
    variable.variability = node.attribute("variability").as_string("continuous");

    const auto type =
        std::find_if(kTypes.begin(), kTypes.end(), [&](const auto& known) { return !node.child(known.first).empty(); });
    if (type == kTypes.end()) {
      note(owner + " has no type");
    } else {
      read_typed(node.child(type->first), type->first, owner, variable);
      variable.type = type->second;
    }
    result_.variables.push_back(std::move(variable));
  }

  /// The element inside a ScalarVariable; what it does not say itself, its declared type may.
  void read_typed(const pugi::xml_node& typed, const char* type, const std::string& owner, Variable& variable) {
    const std::string declared_type = text(typed, "declaredType");
    const pugi::xml_node declared =
        root_.child("TypeDefinitions").find_child_by_attribute("SimpleType", "name", declared_type.c_str()).child(type);
    if (!declared_type.empty() && !declared) note(owner + ": there is no " + type + " type '" + declared_type + "'");
    const auto giver = [&](const char* attribute) { return typed.attribute(attribute) ? typed : declared; };
    variable.unit = text(giver("unit"), "unit");
    variable.min = number(giver("min"), "min", owner);
    variable.max = number(giver("max"), "max", owner);
    if (typed.attribute("start")) variable.start = text(typed, "start");
  }

  void read_unknown(const pugi::xml_node& node, const char* list) {
    Unknown unknown = {list, parse_unsigned(text(node, "index")), {}};
    std::istringstream dependencies(text(node, "dependencies"));
    for (std::string index; dependencies >> index;) unknown.dependencies.push_back(parse_unsigned(index));
    result_.structure.push_back(std::move(unknown));
  }

  pugi::xml_node root_;
  ModelDescription result_;
};

}  // namespace

const char* type_name(VariableType type) {
  return std::find_if(kTypes.begin(), kTypes.end(), [&](const auto& known) { return known.second == type; })->first;
}

const Variable* ModelDescription::find(std::string_view name) const {
  const auto found =
      std::find_if(variables.begin(), variables.end(), [&](const Variable& v) { return v.name == name; });
  return found == variables.end() ? nullptr : &*found;
}

ModelDescription parse_model_description(const std::string& xml) {
  pugi::xml_document document;
  const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size());
  if (!parsed) {
    const auto line =
        1 + std::count(xml.begin(), xml.begin() + std::min<std::ptrdiff_t>(parsed.offset, std::ssize(xml)), '\n');
    throw Error(ExitCode::kFile, std::string(kDescriptionEntry) + " is not well-formed: line " + std::to_string(line) +
                                     ": " + parsed.description());
  }
  const pugi::xml_node root = document.child("fmiModelDescription");
  if (!root) throw Error(ExitCode::kFile, std::string(kDescriptionEntry) + " has no root element fmiModelDescription");
  return Reader(root).read();
}

ModelDescription load_model_description(const UnitArchive& archive) {
  const std::string file = archive.file().string() + ": ";
  if (!archive.contains(kDescriptionEntry)) {
    throw Error(ExitCode::kFile, file + "is no unit: the archive has no " + kDescriptionEntry);
  }
  const std::string xml = archive.read(kDescriptionEntry);
  try {
    ModelDescription description = parse_model_description(xml);
    if (description.fmi_version != "2.0") {
      throw Error(ExitCode::kFile,
                  "is a unit of FMI version '" + description.fmi_version + "'; this program plays 2.0");
    }
    if (!description.problems.empty()) throw Error(ExitCode::kFile, description.problems.front());
    return description;
  } catch (const Error& error) {
    throw Error(error.code(), file + error.what());
  }
}

}  // namespace runner
