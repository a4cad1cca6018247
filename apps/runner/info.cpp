#include "apps/runner/info.h"

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string_view>

#include "apps/runner/errors.h"
#include "apps/runner/model_description.h"
#include "apps/runner/table.h"
#include "apps/runner/text.h"
#include "apps/runner/unit_archive.h"

namespace runner {
namespace {

std::vector<const Variable*> filtered(const ModelDescription& description, const InfoOptions& options) {
  const std::vector<std::string>& filters = options.filters;
  std::vector<const Variable*> chosen;
  std::vector<std::string_view> names;
  for (const Variable& variable : description.variables) {
    const auto matches = [&](const std::string& filter) { return matches_pattern(variable.name, filter); };
    if (!options.causality.empty() && variable.causality != options.causality) continue;
    names.push_back(variable.name);
    if (filters.empty() || std::any_of(filters.begin(), filters.end(), matches)) chosen.push_back(&variable);
  }
  if (!chosen.empty() || (filters.empty() && options.causality.empty())) return chosen;
  if (filters.empty()) {
    throw Error(ExitCode::kUsage, "--causality '" + options.causality + "': the unit has no such variable");
  }
  throw Error(ExitCode::kUsage, "--filter '" + filters.front() + "': matches no " + options.causality +
                                    (options.causality.empty() ? "variable" : " of the unit") +
                                    did_you_mean(filters.front(), names));
}

void print_table(const ModelDescription& description, const std::string& platforms,
                 const std::vector<const Variable*>& variables) {
  const auto line = [](const char* label, const std::string& text) {
    if (!text.empty()) std::cout << label << text << "\n";
  };
  line("model       ", description.model_name + (description.version.empty() ? "" : " " + description.version));
  line("description ", description.description);
  line("GUID        ", description.guid);
  line("platforms   ", platforms);
  line("stop time   ", description.stop_time + (description.stop_time.empty() ? "" : " s"));
  line("interval    ", description.step_size + (description.step_size.empty() ? "" : " s"));
  std::cout << "\n";

  std::vector<std::vector<std::string>> rows = {{"ref", "name", "type", "causality", "unit", "start", "description"}};
  for (const Variable* v : variables) {
    rows.push_back({std::to_string(v->reference), v->name, type_name(v->type), v->causality, v->unit,
                    v->start.value_or(""), v->description});
  }
  std::cout << table_text(rows, "rllllll");
}

void print_json(const ModelDescription& description, const std::string& platforms,
                const std::vector<const Variable*>& variables) {
  using Json = nlohmann::ordered_json;
  const auto number = [](const std::optional<double>& value) { return value ? Json(*value) : Json(nullptr); };
  Json list = Json::array();
  for (const Variable* v : variables) {
    Json start = nullptr;
    if (v->start) {
      start = *v->start;
      if (v->type == VariableType::kReal) start = number(parse_number(*v->start));
      if (v->type == VariableType::kBoolean) start = *v->start == "true" || *v->start == "1";
    }
    list.push_back({{"valueReference", v->reference},
                    {"name", v->name},
                    {"type", type_name(v->type)},
                    {"causality", v->causality},
                    {"variability", v->variability},
                    {"unit", v->unit},
                    {"start", start},
                    {"min", number(v->min)},
                    {"max", number(v->max)},
                    {"description", v->description}});
  }
  const Json document = {{"modelName", description.model_name},
                         {"version", description.version},
                         {"description", description.description},
                         {"fmiVersion", description.fmi_version},
                         {"guid", description.guid},
                         {"modelIdentifier", description.model_identifier},
                         {"platforms", platforms},
                         {"stopTime", number(parse_number(description.stop_time))},
                         {"stepSize", number(parse_number(description.step_size))},
                         {"variables", list}};
  std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace

void info(const InfoOptions& options) {
  const UnitArchive archive(options.unit);
  const ModelDescription description = load_model_description(archive);
  const std::vector<const Variable*> variables = filtered(description, options);
  if (options.names_only) {
    for (const Variable* variable : variables) std::cout << variable->name << "\n";
    return;
  }
  const std::string platforms = archive.platforms();
  options.as_json ? print_json(description, platforms, variables) : print_table(description, platforms, variables);
}

}  // namespace runner
