// What the importer program reads from files and texts: each is read, or refused with the program's own error.

#include <algorithm>
#include <iostream>
#include <sstream>
#include <vector>

#include "apps/runner/assignments.h"
#include "apps/runner/compare.h"
#include "apps/runner/config.h"
#include "apps/runner/errors.h"
#include "apps/runner/info.h"
#include "apps/runner/props.h"
#include "apps/runner/report.h"
#include "apps/runner/study_reader.h"
#include "apps/runner/text.h"
#include "fuzz/fuzz_support.h"

using namespace runner;

namespace {

constexpr const char* kDescription = R"(<fmiModelDescription fmiVersion="2.0"><UnitDefinitions>
<Unit name="K"><BaseUnit K="1"/><DisplayUnit name="degC" offset="-273.15"/></Unit></UnitDefinitions><ModelVariables>
<ScalarVariable name="a.b" valueReference="0" causality="output"><Real unit="K"/></ScalarVariable>
<ScalarVariable name="t_set" causality="parameter" variability="tunable"><Real unit="K" min="-9"/></ScalarVariable>
<ScalarVariable name="t_gate" causality="parameter"><Boolean start="0"/></ScalarVariable>
</ModelVariables></fmiModelDescription>)";

void read_results(const std::string& file) {
  const ResultTable table = read_result_csv(file);
  EXPECT(std::is_sorted(table.time.begin(), table.time.end()) && table.columns.size() == table.names.size());
  for (const auto& column : table.columns) EXPECT(column.size() == table.time.size());
  EXPECT((Comparison(table, {}, {}).print(table) == ExitCode::kOk) == !table.names.empty());
}

void read_config(const std::string& file) {
  const ModelDescription description = parse_model_description(kDescription);
  RunOptions options;
  read_settings(parse_toml(file), file, options);
  const Assignments assignments(description, !options.keep_gates);
  for (const std::string& text : options.start_values) assignments.start_value(text);
  for (const std::string& text : options.changes) assignments.set_at(text, parse_time("10", "end", 1));
  select_outputs(description, options.output_variables);
}

void read_description(const std::string& text) {
  const ModelDescription description = parse_model_description(text);
  for (const Variable& variable : description.variables) {
    gate_of(description, variable);
    EXPECT(description.find(variable.name) != nullptr);
    for (const std::string& unit : compatible_units(description.units, variable.unit)) {
      convert(description.units, 1.0, unit, variable.unit);
    }
  }
  select_outputs(description, {});
}

void read_archive(const std::string& file) {
  const UnitArchive archive(file);
  for (const std::string& entry : archive.entries()) archive.read(entry);
  info({.unit = file, .as_json = true});
}

void read_study(const std::string& file) {
  const StudyTable table = read_study_csv(file);
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    EXPECT(table.columns[i].size() == table.columns[0].size());
    table.is_numeric(i);
  }
  report({.results = {file}, .page = write_file("page.html", "")});
}

void read_texts(const std::string& text) {
  if (const auto number = parse_number(text)) EXPECT(is_same(parse_number(number_text(*number)).value(), *number));
  const std::size_t line = std::min(text.find('\n'), text.size());
  const std::string first = text.substr(0, line), second = text.substr(std::min(line + 1, text.size()));
  EXPECT(edit_distance(first, second) == edit_distance(second, first));
  matches_pattern(first, second);
  const ModelDescription description = parse_model_description(kDescription);
  const Assignments assignments(description, true);
  const auto read = [](const auto& step) {
    try {
      step();
    } catch (const Error&) {
    }
  };
  read([&] { EXPECT(parse_time(seconds_text(parse_time(first, "t", 0)), "t", 0) == parse_time(first, "t", 0)); });
  read([&] { assignments.start_value(first); });
  read([&] { assignments.set_at(first, 1000); });
  read([&] { select_outputs(description, {first, second}); });
  read([&] { Comparison({{"a.b"}, {0}, {{1}}}, {.per_signal = {first}}, {}); });
  read([&] { props({.fluid = "Water", .properties = {second}, .inputs = {"300", first}}); });
}

void read_record(const std::string& text) {
  write_file("run.meta.json", text);
  report({.results = {write_file("run.csv", "time,a.b\n0,1\n1,2\n")}, .page = write_file("page.html", "")});
}

void read_fluid(const std::string& file) {
  for (const char* type : {"gas", "moist_air", "brine", "liquid"}) {
    try {
      props({.fluid = "A", .inputs = {"300", "1e5"}, .file = file, .type = type, .all = true});
    } catch (const Error&) {
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static std::ostringstream output;
  output.str("");
  std::cout.rdbuf(output.rdbuf());
  std::cerr.rdbuf(output.rdbuf());
  if (size == 0) return 0;
  const std::string text(data + 1, data + size), file = write_file("file", text);
  constexpr void (*kReaders[])(const std::string&) = {read_results, read_config,      read_archive, read_study,
                                                      read_fluid,   read_description, read_texts,   read_record};
  try {
    kReaders[data[0] % 8](data[0] % 8 < 5 ? file : text);
  } catch (const Error& error) {
    EXPECT(*error.what() != '\0');
  }
  return 0;
}
