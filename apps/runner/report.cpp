#include "apps/runner/report.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "apps/runner/errors.h"
#include "apps/runner/report_data.h"
#include "apps/runner/report_pages.h"
#include "apps/runner/result_file.h"
#include "apps/runner/result_reader.h"
#include "apps/runner/run_record.h"
#include "apps/runner/study_reader.h"
#include "apps/runner/text.h"

namespace runner {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

/// What the file beside a result tells of it; null if there is none.
/// @throws Error kFile if it is there and makes no sense
Json read_meta(const fs::path& result) {
  const fs::path file = record_path(result);
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return nullptr;
  const auto limit_depth = [&](int depth, Json::parse_event_t, Json&) {
    constexpr int kMostDepth = 100;  // to write JSON takes a call for each depth
    if (depth > kMostDepth) throw Error(ExitCode::kFile, file.string() + ": nested too deeply");
    return true;
  };
  try {
    Json meta = Json::parse(stream, limit_depth);
    if (meta.at("format") != 1) {
      throw Error(ExitCode::kFile, file.string() + ": its format is " + meta.at("format").dump() + ", known is 1");
    }
    const auto kind = meta.at("kind").get<std::string>();
    if (kind != "run" && kind != "sweep") {
      throw Error(ExitCode::kFile, file.string() + ": its kind is '" + kind + "', known are 'run' and 'sweep'");
    }
    return meta;
  } catch (const Json::exception& error) {
    throw Error(ExitCode::kFile, "cannot read '" + file.string() + "': " + error.what());
  }
}

bool is_study(const fs::path& result, const Json& meta) {
  if (!meta.is_null()) return meta["kind"] == "sweep";
  std::ifstream stream(result, std::ios::binary);
  std::string cell;
  std::getline(stream, cell, ',');
  return cell == "point" || cell == "\"point\"";
}

/// Names for the page: the files' own, or their whole paths where those are the same.
std::vector<std::string> names_of(const std::vector<fs::path>& files) {
  std::vector<std::string> names;
  for (const fs::path& file : files) {
    const auto has_name = [&](const fs::path& other) { return other.stem() == file.stem(); };
    const bool is_unique = std::count_if(files.begin(), files.end(), has_name) == 1;
    names.push_back(is_unique ? file.stem().string() : file.string());
  }
  for (std::size_t i = 0; i < names.size(); ++i) {  // the same file twice
    if (std::count(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(i), names[i]) > 0) {
      names[i] += " (" + std::to_string(i + 1) + ")";
    }
  }
  return names;
}

Json to_json(const Warning& warning) {
  return {{"severity", warning.is_error ? "error" : "check"}, {"signal", warning.signal}, {"text", warning.text}};
}

/// Did the run end as it should, and is what is told of it told of these rows?
std::vector<Warning> check_run(const Json& meta, const fs::path& file, const ResultTable& table) {
  std::vector<Warning> warnings;
  if (meta.is_null()) return warnings;
  const Json run = meta.value("run", Json::object());
  const double stop_time = meta.value("/settings/stopTime"_json_pointer, table.time.back());
  const std::string state = run.value("state", "");
  if (run.value("exitCode", 0.0) != 0) {
    warnings.push_back({true, "", "the run did not end as it should: " + (state.empty() ? "no reason told" : state)});
  } else if (table.time.back() < stop_time) {
    warnings.push_back({true, "",
                        "the rows end at " + number_text(table.time.back()) + " s, before the stop time of " +
                            number_text(stop_time) + " s"});
  }
  const auto rows = static_cast<double>(table.time.size());
  const double told_rows = meta.value("/result/rows"_json_pointer, rows);  // any number, as the file has it
  if (told_rows != rows) {
    warnings.push_back({true, "",
                        record_path(file).string() + " tells of " + number_text(told_rows) + " rows, but " +
                            file.string() + " has " + std::to_string(table.time.size()) +
                            ": it may belong to another run"});
  }
  return warnings;
}

Json run_json(const fs::path& file, const std::string& name, const Json& meta) {
  const ResultTable table = read_result_csv(file);
  const ResultTable drawn = thinned(table);

  Json notes = Json::array();
  if (meta.is_null()) {
    notes.push_back("There is no " + record_path(file).filename().string() + " beside " + file.filename().string() +
                    ": units, descriptions and settings are not known.");
  }
  if (drawn.time.size() < table.time.size()) {
    notes.push_back("The charts are thinned to " + std::to_string(drawn.time.size()) +
                    " rows: of each stretch of rows they show the least and the largest value.");
  }

  Json warnings = Json::array();
  for (const Warning& warning : check_run(meta, file, table)) warnings.push_back(to_json(warning));
  std::map<std::string, Json> told;
  if (!meta.is_null()) {
    for (const Json& output : meta.value("outputs", Json::array())) told[output.at("name")] = output;
  }
  Json columns = Json::array();
  for (std::size_t i = 0; i < table.names.size(); ++i) {
    const std::string& signal = table.names[i];
    const Json output = told.contains(signal) ? told[signal] : Json::object();
    const std::string unit = output.value("unit", "");
    for (const Warning& warning : check_signal(signal, unit, table.time, table.columns[i])) {
      warnings.push_back(to_json(warning));
    }
    columns.push_back({{"name", signal},
                       {"unit", unit},
                       {"description", output.value("description", "")},
                       {"values", encoded(drawn.columns[i])}});
  }

  std::string times;  // with all their digits: the charts are drawn over each other by them
  for (const double time : drawn.time) {
    if (!times.empty()) times += ',';
    times += number_text(time);
  }
  return {{"name", name},
          {"file", file.string()},
          {"meta", meta},
          {"notes", notes},
          {"warnings", warnings},
          {"rows", table.time.size()},
          {"end", table.time.back()},
          {"drawnRows", drawn.time.size()},
          {"time", {{"text", times}}},
          {"columns", columns}};
}

Json study_json(const fs::path& file, const Json& meta) {
  const StudyTable table = read_study_csv(file);
  std::map<std::string, Json> told;
  if (!meta.is_null()) {
    for (const Json& column : meta.value("columns", Json::array())) told[column.at("name")] = column;
  }
  Json columns = Json::array();
  for (std::size_t i = 0; i < table.names.size(); ++i) {
    const Json column = told.contains(table.names[i]) ? told[table.names[i]] : Json::object();
    Json values = Json::array();
    const bool is_text = !table.is_numeric(i);
    for (const std::string& cell : table.columns[i]) {
      const std::optional<double> number = is_text ? std::nullopt : parse_number(cell);
      values.push_back(is_text ? Json(cell) : number ? Json(*number) : Json(nullptr));
    }
    columns.push_back({{"name", table.names[i]},
                       {"unit", column.value("unit", "")},
                       {"role", column.value("role", "")},
                       {"isText", is_text},
                       {"values", values}});
  }
  return {{"file", file.string()}, {"meta", meta}, {"rows", table.columns.front().size()}, {"columns", columns}};
}

void check_file(const fs::path& file, const fs::path& page) {
  std::error_code ignored;
  if (fs::equivalent(file, page, ignored)) {
    throw Error(ExitCode::kUsage,
                "the page cannot take the place of '" + file.string() + "': give another --output-file");
  }
  if (file.extension() == ".npz") {
    throw Error(ExitCode::kUsage, "'" + file.string() + "': pages are made from CSV files");
  }
}

std::string html(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    escaped += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
  }
  return escaped;
}

/// JSON that may stand in a script element: no "<" ends it or begins a comment.
std::string embeddable(const Json& data) {
  const std::string json = data.dump(-1, ' ', false, Json::error_handler_t::replace);
  std::string escaped;
  escaped.reserve(json.size());
  for (const char c : json) c == '<' ? escaped += "\\u003c" : escaped += c;
  return escaped;
}

std::string filled(std::string_view page, std::string_view title, const Json& data) {
  std::string text(page);
  const auto fill = [&](std::string_view mark, const std::string& content) {
    text.replace(text.find(mark), mark.size(), content);
  };
  fill("@data@", embeddable(data));
  fill("@title@", html(title));  // which stands first, whatever the data hold
  return text;
}

}  // namespace

void report(const ReportOptions& options) {
  const std::vector<std::string> names = names_of(options.results);
  std::string page;
  Json runs = Json::array();
  for (std::size_t i = 0; i < options.results.size(); ++i) {
    const fs::path& file = options.results[i];
    check_file(file, options.page);
    const Json meta = read_meta(file);
    try {
      if (!is_study(file, meta)) {
        runs.push_back(run_json(file, names[i], meta));
      } else if (options.results.size() == 1) {
        Json data = study_json(file, meta);
        data["version"] = TESSERA_VERSION;
        data["name"] = fs::absolute(file).parent_path().filename().string();
        page = filled(sweep_page, names[i], data);
      } else {
        throw Error(ExitCode::kUsage,
                    "'" + file.string() + "' is the table of a study: it has a report of its own, name it alone");
      }
    } catch (const Json::exception& error) {  // such as a text where a number belongs
      throw Error(ExitCode::kFile, "cannot read '" + record_path(file).string() + "': " + error.what());
    }
  }
  if (page.empty()) {
    std::string title = names.front();
    for (std::size_t i = 1; i < names.size(); ++i) title += ", " + names[i];
    page = filled(run_page, title, {{"version", TESSERA_VERSION}, {"runs", runs}});
  }
  ResultFile file(options.page);
  file.append(page);
  file.publish();
  std::cout << "report          " << options.page.string() << "\n";
}

}  // namespace runner
