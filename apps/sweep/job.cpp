#include "apps/sweep/job.h"

#include <nlohmann/json.hpp>

namespace sweep {

using nlohmann::json;

namespace {

json optional_text(const std::optional<std::string>& text) { return text ? json(*text) : json(); }
std::optional<std::string> optional_text(const json& text) {
  return text.is_null() ? std::nullopt : std::optional(text.get<std::string>());
}

/// A unit may say anything in a message: what is no UTF-8 is replaced.
std::string line(const json& value) { return value.dump(-1, ' ', false, json::error_handler_t::replace); }

}  // namespace

std::string to_line(const Job& job) {
  json keep = json::array();
  for (const Job::Value& value : job.keep) keep.push_back({value.signal, take_name(value.take)});
  return line({{"unit", job.run.unit.string()},
               {"stop-time", optional_text(job.run.stop_time)},
               {"output-interval", optional_text(job.run.output_interval)},
               {"record-from", optional_text(job.run.record_from)},
               {"start-value", job.run.start_values},
               {"set-at", job.run.changes},
               {"keep-gates", job.run.keep_gates},
               {"allow-non-finite", job.run.allow_non_finite},
               {"inputs", job.inputs},
               {"keep", keep},
               {"scalars", job.scalars}});
}

Job job_of(const std::string& line) {
  const json text = json::parse(line);
  Job job;
  job.run.unit = text["unit"].get<std::string>();
  job.run.stop_time = optional_text(text["stop-time"]);
  job.run.output_interval = optional_text(text["output-interval"]);
  job.run.record_from = optional_text(text["record-from"]);
  text["start-value"].get_to(job.run.start_values);
  text["set-at"].get_to(job.run.changes);
  text["keep-gates"].get_to(job.run.keep_gates);
  text["allow-non-finite"].get_to(job.run.allow_non_finite);
  text["inputs"].get_to(job.inputs);
  for (const json& value : text["keep"]) job.keep.push_back({value[0], parse_take(value[1], "")});
  text["scalars"].get_to(job.scalars);
  return job;
}

std::string to_line(const Task& task) { return line(task); }
Task task_of(const std::string& line) { return json::parse(line).get<Task>(); }

std::string to_line(const Outcome& outcome) { return line({outcome.status, outcome.reason, outcome.values}); }
Outcome outcome_of(const std::string& line) {
  const json text = json::parse(line);
  return {text.at(0), text.at(1), text.at(2).get<std::vector<std::string>>()};
}

}  // namespace sweep
