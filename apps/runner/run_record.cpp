#include "apps/runner/run_record.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <nlohmann/json.hpp>

#include "apps/runner/text.h"

namespace runner {
namespace {

using Json = nlohmann::ordered_json;

Json value_json(const Variable& variable, double value) {
  return variable.type == VariableType::kBoolean ? Json(value != 0.0) : Json(value);
}

/// The value that the description gives at the start; null if it gives none.
Json default_json(const Variable& variable) {
  if (!variable.start) return nullptr;
  if (variable.type == VariableType::kBoolean) return *variable.start == "true" || *variable.start == "1";
  const std::optional<double> value = parse_number(*variable.start);
  return value ? Json(*value) : Json(nullptr);
}

Json write_json(const Write& write) {
  return {{"name", write.variable->name},
          {"value", value_json(*write.variable, write.value)},
          {"unit", write.variable->unit}};
}

Json settings_json(const RunRecord& record) {
  const Plan& plan = record.plan;
  Json starts = Json::array();
  for (const Write& write : plan.start) starts.push_back(write_json(write));
  Json changes = Json::array();
  for (const TimedWrites& change : plan.changes) {
    for (const Write& write : change.writes) {
      Json entry = {{"time", seconds(change.time)}};
      entry.update(write_json(write));
      changes.push_back(entry);
    }
  }
  return {{"stopTime", seconds(plan.stop)},
          {"outputInterval", seconds(plan.interval)},
          {"recordFrom", seconds(plan.record_from)},
          {"outputVariables", record.options.output_variables},
          {"startValues", starts},
          {"changes", changes},
          {"keepGates", record.options.keep_gates},
          {"allowNonFinite", record.options.allow_non_finite}};
}

/// The parameters that start with another value than the description proposes. A gate is told with its parameter, which
/// is listed also if the gate alone differs.
Json inputs_json(const RunRecord& record) {
  std::map<const Variable*, double> written;
  for (const Write& write : record.plan.start) written[write.variable] = write.value;
  const auto now = [&](const Variable& variable) {
    const auto found = written.find(&variable);
    return found == written.end() ? default_json(variable) : value_json(variable, found->second);
  };
  const auto differs = [&](const Variable* variable) {
    return variable != nullptr && now(*variable) != default_json(*variable);
  };

  std::vector<const Variable*> gates;
  for (const Variable& variable : record.description.variables) gates.push_back(gate_of(record.description, variable));
  Json inputs = Json::array();
  for (std::size_t i = 0; i < gates.size(); ++i) {
    const Variable& variable = record.description.variables[i];
    if (std::find(gates.begin(), gates.end(), &variable) != gates.end()) continue;
    if (!differs(&variable) && !differs(gates[i])) continue;
    inputs.push_back({{"name", variable.name},
                      {"value", now(variable)},
                      {"default", default_json(variable)},
                      {"unit", variable.unit},
                      {"gate", gates[i] != nullptr ? now(*gates[i]) : Json(nullptr)}});
  }
  return inputs;
}

}  // namespace

std::filesystem::path record_path(const std::filesystem::path& result) {
  return std::filesystem::path(result).replace_extension(".meta.json");
}

std::string utc_text(std::chrono::system_clock::time_point moment) {
  const std::time_t time = std::chrono::system_clock::to_time_t(moment);
  std::tm parts = {};
  gmtime_r(&time, &parts);
  char text[32];
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text;
}

Json unit_record(const std::filesystem::path& unit, const ModelDescription& description) {
  return {{"file", unit.string()},
          {"modelName", description.model_name},
          {"guid", description.guid},
          {"version", description.version},
          {"generationTool", description.generation_tool}};
}

Json runner_record() { return {{"version", TESSERA_VERSION}}; }

std::string record_text(const RunRecord& record) {
  Json outputs = Json::array();
  for (const Variable* output : record.plan.outputs) {
    outputs.push_back({{"name", output->name}, {"unit", output->unit}, {"description", output->description}});
  }
  Json failures = Json::array();
  for (const Error& error : record.played.failures) failures.push_back(error.what());
  Json summary = Json::array();
  for (const Summary::Figure& figure : record.summary.figures()) {
    summary.push_back({{"title", figure.title}, {"text", figure.text}});
  }
  const double simulated = seconds(record.played.reached);
  const Json document = {{"format", 1},
                         {"kind", "run"},
                         {"unit", unit_record(record.options.unit, record.description)},
                         {"runner", runner_record()},
                         {"settings", settings_json(record)},
                         {"inputs", inputs_json(record)},
                         {"outputs", outputs},
                         {"result",
                          {{"file", record.options.output_file.filename().string()},
                           {"rows", record.rows},
                           {"variables", record.plan.outputs.size()}}},
                         {"run",
                          {{"startedAt", utc_text(record.started)},
                           {"simulatedTime", simulated},
                           {"wallTime", record.wall_time},
                           {"realTimeFactor", simulated / record.wall_time},
                           {"exitCode", static_cast<int>(record.exit_code)},
                           {"state", state_text(record.played, record.plan)},
                           {"warnings", record.warnings},
                           {"errors", record.errors},
                           {"failures", failures}}},
                         {"summary", summary}};
  return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace runner
