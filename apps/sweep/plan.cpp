#include "apps/sweep/plan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <optional>
#include <set>
#include <string_view>

#include "apps/runner/config.h"
#include "apps/runner/errors.h"
#include "apps/runner/text.h"
#include "apps/sweep/sampling.h"
#include "apps/sweep/table.h"

namespace sweep {
namespace {

using runner::Error;
using runner::ExitCode;

constexpr std::array<std::pair<const char*, Take>, 6> kTakes = {{{"last", Take::kLast},
                                                                 {"min", Take::kMin},
                                                                 {"max", Take::kMax},
                                                                 {"mean", Take::kMean},
                                                                 {"integral", Take::kIntegral},
                                                                 {"rise", Take::kRise}}};

Error usage(const std::string& message) { return {ExitCode::kUsage, message}; }

/// A value of the TOML file with its full name and where it stands.
struct Entry {
  std::string name;
  const toml::node* node;
  std::string where;

  Error wrong(const std::string& reason) const { return usage(where + reason); }
};

/// Reads the tables of the file. A table of a table is taken apart into entries with dotted names, in their order in
/// the file.
class Reader {
 public:
  Reader(const std::filesystem::path& file, const toml::table& root) : root_(root) { plan_.file = file.string(); }

  Plan read() {
    constexpr std::array<std::string_view, 4> kTables = {"run", "grid", "sample", "keep"};
    for (const auto& [key, node] : root_) {
      const Entry entry = {std::string(key.str()), &node, where(node, std::string(key.str()))};
      if (std::find(kTables.begin(), kTables.end(), key.str()) == kTables.end()) {
        throw entry.wrong("a plan has the tables run, grid, sample and keep" +
                          runner::did_you_mean(key.str(), {kTables.begin(), kTables.end()}));
      }
      if (!node.is_table()) throw entry.wrong("write it as a table [" + entry.name + "]");
    }
    if (const toml::table* run = root_["run"].as_table()) {
      plan_.run_where = where(*run, "run");
      runner::read_settings(*run, plan_.file, plan_.run,
                            {"output-variable", "output-file", "show-stats", "reference-file", "rtol", "atol",
                             "tolerance", "log-level", "log-file", "progress", "quiet"});
    }
    for (const Entry& entry : entries("grid", {"from", "to", "step", "count", "unit"})) read_grid_input(entry);
    if (const toml::table* sample = root_["sample"].as_table()) read_sample(*sample);
    for (const Entry& entry : entries("keep", {"signal", "take"})) read_kept(entry);
    if (plan_.grid.empty() && plan_.sample.empty()) {
      throw usage(plan_.file + ": the plan varies nothing; name inputs in [grid] or [sample]");
    }
    return std::move(plan_);
  }

 private:
  std::string where(const toml::node& node, const std::string& name) const {
    return plan_.file + ": line " + std::to_string(node.source().begin.line) + ": '" + name + "': ";
  }

  /// The entries of a table of the file; a table that has one of the `keys` is an entry, another one a part of a name.
  std::vector<Entry> entries(const char* name, const std::set<std::string_view>& keys) const {
    std::vector<Entry> found;
    const std::function<void(const toml::table&, const std::string&)> collect = [&](const toml::table& table,
                                                                                    const std::string& prefix) {
      for (const auto& [key, node] : table) {
        const std::string full = prefix + std::string(key.str());
        const toml::table* inner = node.as_table();
        const bool is_part = inner != nullptr && !inner->empty() &&
                             std::none_of(inner->begin(), inner->end(),
                                          [&](const auto& item) { return keys.contains(item.first.str()); });
        if (is_part) {
          collect(*inner, full + ".");
        } else {
          found.push_back({full, &node, where(node, std::string(name) + "." + full)});
        }
      }
    };
    if (const toml::table* table = root_[name].as_table()) collect(*table, "");
    std::stable_sort(found.begin(), found.end(), [](const Entry& a, const Entry& b) {
      const toml::source_position &first = a.node->source().begin, &second = b.node->source().begin;
      return first < second;
    });
    return found;
  }

  /// @return a number, a Boolean or a text with a unit, as text
  static std::string value_text(const Entry& entry, const toml::node& node) {
    if (const auto* flag = node.as_boolean()) return flag->get() ? "true" : "false";
    if (const auto* text = node.as_string()) return text->get();
    const std::optional<double> number = node.value<double>();
    if (!number || !std::isfinite(*number)) {
      throw entry.wrong("a value is a finite number, true, false, or text with a unit such as \"98kPa\"");
    }
    return runner::number_text(*number);
  }

  static double number(const Entry& entry, const toml::table& range, const char* key) {
    const std::optional<double> value = range[key].value<double>();
    if (!value || !std::isfinite(*value)) throw entry.wrong(std::string(key) + " is to be a finite number");
    return *value;
  }

  template <class Integer>
  static Integer whole(const Entry& entry, const toml::table& table, const char* key, Integer least, Integer most) {
    const auto* value = table[key].as_integer();
    if (value == nullptr || value->get() < static_cast<std::int64_t>(least) ||
        static_cast<std::uint64_t>(value->get()) > most) {
      throw entry.wrong(std::string(key) + " is to be a whole number from " + std::to_string(least) + " to " +
                        std::to_string(most));
    }
    return static_cast<Integer>(value->get());
  }

  static void allow_keys(const Entry& entry, const toml::table& table, const std::vector<std::string_view>& allowed) {
    for (const auto& [key, node] : table) {
      if (std::find(allowed.begin(), allowed.end(), key.str()) != allowed.end()) continue;
      std::string list;
      for (const std::string_view name : allowed) list += (list.empty() ? "" : ", ") + std::string(name);
      throw entry.wrong("'" + std::string(key.str()) + "' is none of " + list);
    }
  }

  /// @return the unit of a range as it stands behind a number: apart, since a unit such as 1 begins with a digit
  static std::string unit(const Entry& entry, const toml::table& range) {
    if (!range.contains("unit")) return {};
    if (!range["unit"].is_string()) throw entry.wrong("unit is to be text such as \"kPa\"");
    return std::string(1, ' ').append(*range["unit"].value<std::string>());
  }

  void read_grid_input(const Entry& entry) {
    GridInput input = {entry.name, entry.where, {}};
    if (const toml::array* list = entry.node->as_array()) {
      for (const toml::node& value : *list) input.values.push_back(value_text(entry, value));
      if (input.values.empty()) throw entry.wrong("the list is empty");
    } else if (const toml::table* range = entry.node->as_table()) {
      allow_keys(entry, *range, {"from", "to", "step", "count", "unit"});
      for (const double value : range_values(entry, *range)) {
        input.values.push_back(runner::number_text(value) + unit(entry, *range));
      }
    } else {
      throw entry.wrong(
          "needed is a list of values, {from, to, step} or {from, to, count}; what does not vary belongs "
          "to [run.start-value]");
    }
    plan_.grid.push_back(std::move(input));
  }

  static std::vector<double> range_values(const Entry& entry, const toml::table& range) {
    const double from = number(entry, range, "from");
    const double to = number(entry, range, "to");
    if (range.contains("step") == range.contains("count")) throw entry.wrong("give one of step and count");
    if (range.contains("count")) {
      if (from == to) throw entry.wrong("the range is empty, from and to are equal");
      return spaced(from, to, whole<std::uint32_t>(entry, range, "count", 2, 10'000'000));
    }
    const double step = number(entry, range, "step");
    const std::optional<std::vector<double>> values = stepped(from, to, step);
    if (!values) {
      throw entry.wrong("the range is empty or endless: no step of " + runner::number_text(step) + " leads from " +
                        runner::number_text(from) + " to " + runner::number_text(to));
    }
    return *values;
  }

  void read_sample(const toml::table& table) {
    const Entry sample = {"sample", &table, where(table, "sample")};
    constexpr std::uint32_t kMostSamples = 1U << 21U;
    plan_.sample_count = whole<std::uint32_t>(sample, table, "count", 1, kMostSamples);
    if (table.contains("seed")) {
      plan_.sample_seed = whole<std::uint64_t>(sample, table, "seed", 0, std::numeric_limits<std::int64_t>::max());
    }
    for (const Entry& entry : entries("sample", {"from", "to", "unit"})) {
      if (entry.name == "count" || entry.name == "seed") continue;
      const toml::table* range = entry.node->as_table();
      if (range == nullptr) throw entry.wrong("needed is a range {from, to}; lists of values belong to [grid]");
      allow_keys(entry, *range, {"from", "to", "unit"});
      const double from = number(entry, *range, "from");
      const double to = number(entry, *range, "to");
      if (!(from < to)) throw entry.wrong("the range is empty: from is to be less than to");
      const std::string suffix = unit(entry, *range);
      plan_.sample.push_back(
          {entry.name, entry.where, runner::number_text(from) + suffix, runner::number_text(to) + suffix});
    }
    if (plan_.sample.empty()) throw sample.wrong("name inputs, each with a range {from, to}");
  }

  void read_kept(const Entry& entry) {
    const std::string needed = std::string("needed is one of ") + kTakeNames + ", a list of them, or {signal, take}";
    if (entry.name == "scalars") {
      const toml::array* names = entry.node->as_array();
      if (names == nullptr || !names->is_homogeneous(toml::node_type::string)) {
        throw entry.wrong("needed is a list of names");
      }
      plan_.scalars_where = entry.where;
      for (const toml::node& name : *names) plan_.scalars.push_back(*name.value<std::string>());
    } else if (const toml::table* spec = entry.node->as_table()) {
      allow_keys(entry, *spec, {"signal", "take"});
      const std::optional<std::string> take = (*spec)["take"].value<std::string>();
      if (!take) throw entry.wrong(needed);
      plan_.keep.push_back(
          {entry.name, (*spec)["signal"].value_or(entry.name), parse_take(*take, entry.where), entry.where});
    } else if (const toml::array* takes = entry.node->as_array()) {
      if (takes->empty()) throw entry.wrong(needed);
      for (const toml::node& take : *takes) keep(entry, take.value<std::string>(), needed);
    } else {
      keep(entry, entry.node->value<std::string>(), needed);
    }
  }

  void keep(const Entry& entry, const std::optional<std::string>& take, const std::string& needed) {
    if (!take) throw entry.wrong(needed);
    plan_.keep.push_back({entry.name + "." + *take, entry.name, parse_take(*take, entry.where), entry.where});
  }

  const toml::table& root_;
  Plan plan_;
};

Plan read_csv(const std::filesystem::path& file) {
  Plan plan;
  plan.file = file.string();
  const std::string text = read_file(file.string());
  std::size_t number = 0;
  for (std::size_t start = text.starts_with("\xEF\xBB\xBF") ? 3 : 0, end = 0; start < text.size(); start = end + 1) {
    end = std::min(text.find('\n', start), text.size());
    ++number;
    const std::string_view line = runner::trimmed(std::string_view(text).substr(start, end - start));
    if (line.empty()) continue;
    const std::string where = file.string() + ": line " + std::to_string(number) + ": ";
    std::vector<std::string> cells = csv_cells(line);
    if (std::find(cells.begin(), cells.end(), "") != cells.end()) throw usage(where + "a cell is empty");
    if (plan.row_inputs.empty()) {
      plan.row_inputs = std::move(cells);
      plan.rows_where = where;
    } else if (cells.size() != plan.row_inputs.size()) {
      throw usage(where + std::to_string(cells.size()) + " cells under " + std::to_string(plan.row_inputs.size()) +
                  " names");
    } else {
      plan.rows.push_back({where, std::move(cells)});
    }
  }
  if (plan.rows.empty()) {
    throw usage(file.string() +
                ": the plan has no points; write names of inputs in the first line and a point in "
                "each further one");
  }
  return plan;
}

}  // namespace

const char* take_name(Take take) {
  return std::find_if(kTakes.begin(), kTakes.end(), [&](const auto& known) { return known.second == take; })->first;
}

Take parse_take(const std::string& text, const std::string& where) {
  std::vector<std::string_view> names;
  for (const auto& [name, take] : kTakes) {
    if (text == name) return take;
    names.emplace_back(name);
  }
  throw usage(where + "'" + text + "' is none of " + kTakeNames + runner::did_you_mean(text, names));
}

Plan read_plan(const std::filesystem::path& file) {
  if (file.extension() == ".csv") return read_csv(file);
  const toml::table root = runner::parse_toml(file);
  return Reader(file, root).read();
}

void add_keep(const std::string& text, Plan& plan) {
  const std::string where = "--keep '" + text + "': ";
  const std::size_t equals = text.rfind('=');
  if (equals == std::string::npos) {
    plan.scalars.push_back(text);
    plan.scalars_where = where;
    return;
  }
  const std::string signal(runner::trimmed(std::string_view(text).substr(0, equals)));
  const std::string take(runner::trimmed(std::string_view(text).substr(equals + 1)));
  plan.keep.push_back({signal + "." + take, signal, parse_take(take, where), where});
}

}  // namespace sweep
