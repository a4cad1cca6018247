#include "apps/runner/info.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string_view>

#include "apps/runner/errors.h"
#include "apps/runner/model_description.h"
#include "apps/runner/text.h"
#include "apps/runner/unit_archive.h"

namespace runner {
namespace {

std::vector<const Variable*> filtered(const ModelDescription& description, const std::vector<std::string>& filters) {
  std::vector<const Variable*> chosen;
  for (const Variable& variable : description.variables) {
    const auto matches = [&](const std::string& filter) { return matches_pattern(variable.name, filter); };
    if (filters.empty() || std::any_of(filters.begin(), filters.end(), matches)) chosen.push_back(&variable);
  }
  if (chosen.empty()) {
    std::vector<std::string_view> names;
    for (const Variable& variable : description.variables) names.push_back(variable.name);
    throw Error(ExitCode::kUsage,
                "--filter '" + filters.front() + "': matches no variable" + did_you_mean(filters.front(), names));
  }
  return chosen;
}

/// Columns that a text takes on a terminal, counting each UTF-8 character as one.
std::size_t width(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

void print_table(const ModelDescription& description, const std::vector<const Variable*>& variables) {
  const auto line = [](const char* label, const std::string& text) {
    if (!text.empty()) std::cout << label << text << "\n";
  };
  line("model       ", description.model_name + (description.version.empty() ? "" : " " + description.version));
  line("description ", description.description);
  line("GUID        ", description.guid);
  line("stop time   ", description.stop_time + (description.stop_time.empty() ? "" : " s"));
  line("interval    ", description.step_size + (description.step_size.empty() ? "" : " s"));
  std::cout << "\n";

  constexpr std::size_t kColumns = 7;
  std::vector<std::array<std::string, kColumns>> rows = {
      {"ref", "name", "type", "causality", "unit", "start", "description"}};
  for (const Variable* v : variables) {
    rows.push_back({std::to_string(v->reference), v->name, type_name(v->type), v->causality, v->unit,
                    v->start.value_or(""), v->description});
  }
  std::array<std::size_t, kColumns> widths{};
  for (const auto& row : rows) {
    for (std::size_t i = 0; i < kColumns; ++i) widths[i] = std::max(widths[i], width(row[i]));
  }
  for (const auto& row : rows) {
    std::string text;
    for (std::size_t i = 0; i < kColumns; ++i) {
      const std::string padding(widths[i] - width(row[i]), ' ');
      text += i == 0 ? padding + row[i] : "  " + row[i] + padding;  // numbers to the right
    }
    std::cout << text.substr(0, text.find_last_not_of(' ') + 1) << "\n";
  }
}

void print_json(const ModelDescription& description, const std::vector<const Variable*>& variables) {
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
                         {"stopTime", number(parse_number(description.stop_time))},
                         {"stepSize", number(parse_number(description.step_size))},
                         {"variables", list}};
  std::cout << document.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace

void info(const InfoOptions& options) {
  const ModelDescription description = load_model_description(UnitArchive(options.unit));
  const std::vector<const Variable*> variables = filtered(description, options.filters);
  options.as_json ? print_json(description, variables) : print_table(description, variables);
}

}  // namespace runner
