#include "apps/sweep/setup.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "apps/runner/errors.h"
#include "apps/runner/run_record.h"
#include "apps/runner/text.h"
#include "apps/runner/times.h"
#include "apps/runner/unit_archive.h"
#include "apps/sweep/scalars.h"
#include "apps/sweep/table.h"

namespace sweep {

using Json = nlohmann::ordered_json;
using runner::Error;
using runner::ExitCode;

namespace {

/// FNV-1a, 64 bits. http://www.isthe.com/chongo/tech/comp/fnv
class Fingerprint {
 public:
  void add(std::string_view bytes) {
    for (const char byte : bytes) hash_ = (hash_ ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
  }
  std::string text() const {
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(hash_));
    return digits;
  }

 private:
  std::uint64_t hash_ = 0xcbf29ce484222325U;
};

}  // namespace

Setup::Setup(Plan plan)
    : plan_(std::move(plan)),
      description_(runner::load_model_description(runner::UnitArchive(plan_.run.unit))),
      study_(plan_, description_),
      settled_(settle()) {
  for (const runner::Write& write : settled_.start) {
    const bool varies = std::find(inputs().begin(), inputs().end(), write.variable) != inputs().end();
    if (varies && write.variable->type == runner::VariableType::kReal) {
      throw Error(ExitCode::kUsage,
                  plan_.run_where + write.variable->name + " is varied and has a start value as well; remove one");
    }
  }
  if (plan_.keep.empty() && plan_.scalars.empty()) {
    for (const Scalar& scalar : scalars()) {
      if (offers(description_, scalar)) plan_.scalars.emplace_back(scalar.name);
    }
  }
  columns_ = result_columns(plan_, study_, description_);
  if (columns_.size() == inputs().size()) {
    throw Error(ExitCode::kUsage, plan_.file + ": nothing is kept; name outputs in [keep] or by --keep");
  }
  job_ = {plan_.run, {}, {}, plan_.scalars};
  for (const runner::Variable* input : inputs()) job_.inputs.push_back(input->name);
  for (const Kept& kept : plan_.keep) job_.keep.push_back({kept.signal, kept.take});
}

std::string Setup::job_line() const { return to_line(job_); }

std::optional<std::chrono::milliseconds> Setup::timeout() const {
  if (!settled_.timeout) return std::nullopt;
  return std::chrono::milliseconds(static_cast<std::int64_t>(std::ceil(std::min(*settled_.timeout, 1e9) * 1000.0)));
}

Task Setup::task(std::uint64_t point) const {
  Task task;
  for (const double value : study_.point(point - 1)) task.push_back(runner::number_text(value));
  return task;
}

std::string Setup::header() const {
  std::string header = "\"point\",\"status\",\"reason\"";
  for (const Column& column : columns_) header.append(1, ',').append(csv_quoted(column.name));
  return header;
}

std::string Setup::row(std::uint64_t point, const Outcome& outcome) const {
  std::string row = std::to_string(point) + "," + csv_cell(outcome.status) + "," + csv_cell(outcome.reason);
  for (const std::string& value : task(point)) row.append(1, ',').append(value);
  for (std::size_t i = inputs().size(); i < columns_.size(); ++i) {
    row += ',';
    if (!outcome.values.empty()) row += outcome.values.at(i - inputs().size());
  }
  return row;
}

std::string Setup::text() const {
  Fingerprint unit, points;
  unit.add(read_file(plan_.run.unit.string()));
  for (std::uint64_t point = 1; point <= count(); ++point) points.add(to_line(task(point)));
  Json job = Json::parse(job_line());
  job.erase("unit");  // the same unit may lie elsewhere
  const Json text = {{"unit", description_.guid + " " + unit.text()},
                     {"columns", header()},
                     {"points", std::to_string(count()) + " " + points.text()},
                     {"settings", job}};
  return text.dump(1) + "\n";
}

Json Setup::record() const {
  Json columns = Json::array(), starts = Json::array(), changes = Json::array();
  for (const Column& column : columns_) {
    columns.push_back({{"name", column.name}, {"unit", column.unit}, {"role", column.is_input ? "input" : "output"}});
  }
  const auto assigned = [](const runner::Write& write) -> Json {
    return {{"name", write.variable->name}, {"value", write.value}, {"unit", write.variable->unit}};
  };
  for (const runner::Write& write : settled_.start) starts.push_back(assigned(write));
  for (const runner::TimedWrites& change : settled_.changes) {
    for (const runner::Write& write : change.writes) {
      changes.push_back({{"time", runner::seconds(change.time)}});
      changes.back().update(assigned(write));
    }
  }
  return {{"format", 1},
          {"kind", "sweep"},
          {"unit", runner::unit_record(plan_.run.unit, description_)},
          {"runner", runner::runner_record()},
          {"settings",
           {{"stopTime", runner::seconds(settled_.stop)},
            {"outputInterval", runner::seconds(settled_.interval)},
            {"recordFrom", runner::seconds(settled_.record_from)},
            {"startValues", starts},
            {"changes", changes},
            {"keepGates", plan_.run.keep_gates},
            {"allowNonFinite", plan_.run.allow_non_finite}}},
          {"columns", columns}};
}

runner::Plan Setup::settle() const {
  try {
    return runner::make_plan(plan_.run, description_);
  } catch (const Error& error) {
    throw Error(error.code(), plan_.run_where + error.what());
  }
}

}  // namespace sweep
