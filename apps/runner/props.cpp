#include "apps/runner/props.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <optional>
#include <string_view>
#include <utility>

#include "apps/runner/errors.h"
#include "apps/runner/text.h"

namespace runner {
namespace {

using Vk_fl_prop_lib::Quantity;

Error usage(const std::string& message) { return {ExitCode::kUsage, message}; }

std::string unit_list(const Input& input) {
  std::string list;
  for (const Unit& unit : input.units) list += (list.empty() ? "" : ", ") + unit.name;
  return list;
}

/// A number in SI units.
/// @param subject  what the number belongs to, for the error
double in_si(const std::string& subject, const Input& input, double number, std::string_view unit) {
  const std::string& si = input.units[0].name;
  const std::optional<double> value = convert(input.units, number, unit.empty() ? si : unit, si);
  if (!value) {
    throw usage(subject + "'" + std::string(unit) + "' is no unit of " + input.name + "; it takes " + unit_list(input));
  }
  return *value;
}

double parse_input(const Input& input, const std::string& text) {
  const std::string subject = std::string("--") + input.name + " '" + text + "': ";
  std::string_view unit;
  const std::optional<double> number = leading_number(text, unit);
  if (!number || !std::isfinite(*number)) {
    throw usage(subject + "give a finite number, and a unit if you like: " + unit_list(input));
  }
  return in_si(subject, input, *number, unit);
}

GivenState parse_inputs(const PropsOptions& options) {
  GivenState given;
  for (std::size_t i = 0; i < kInputCount; ++i) {
    if (!options.inputs[i].empty()) given[i] = parse_input(inputs()[i], options.inputs[i]);
  }
  return given;
}

/// One input that runs from start to stop.
struct Sweep {
  InputIndex input = kT;
  std::vector<double> values;  ///< SI
};

/// Reads VAR=START:STOP:STEP, with a unit behind it or none.
Sweep parse_sweep(const std::string& text) {
  const std::string subject = "--table '" + text + "': ";
  const std::size_t equals = std::min(text.find('='), text.size());
  const std::string name(trimmed(text.substr(0, equals)));
  const auto* input =
      std::find_if(inputs().begin(), inputs().end(), [&](const Input& i) { return is_same_name(i.name, name); });
  bool is_readable = input != inputs().end();
  std::array<double, 3> numbers{};
  std::string_view rest = std::string_view(text).substr(equals);
  for (std::size_t i = 0; i < numbers.size() && is_readable; ++i) {
    is_readable = rest.starts_with(i == 0 ? '=' : ':');
    if (is_readable) numbers[i] = leading_number(rest.substr(1), rest).value_or(std::nan(""));
    is_readable = is_readable && std::isfinite(numbers[i]);
  }
  if (!is_readable) {
    throw usage(subject +
                "write VAR=START:STOP:STEP, with a unit behind it or none; VAR is T, P, w, x or concentration");
  }

  const auto [start, stop, step] = numbers;
  const double steps = std::round((stop - start) / step);
  if (!(steps >= 0)) throw usage(subject + "steps of " + number_text(step) + " do not lead from START to STOP");
  if (steps > 1e6) throw usage(subject + "more than a million steps");
  if (std::abs(start + steps * step - stop) > 1e-6 * std::abs(step)) {
    throw usage(subject + "START to STOP is no whole number of steps; the nearest STOP is " +
                number_text(start + steps * step));
  }
  Sweep sweep = {static_cast<InputIndex>(input - inputs().begin()), {}};
  const double first = in_si(subject, *input, start, rest), last = in_si(subject, *input, stop, rest);
  for (int i = 0; i <= static_cast<int>(steps); ++i) {  // weighted, so that decimal steps give the decimals between
    sweep.values.push_back(i == steps ? last : (first * (steps - i) + last * i) / steps);
  }
  return sweep;
}

std::vector<std::size_t> chosen_properties(const PropsOptions& options, const Fluid& fluid,
                                           const std::vector<Quantity>& quantities) {
  std::vector<std::size_t> chosen;
  if (options.all && !options.properties.empty()) throw usage("--all: leave the names of properties away");
  for (std::size_t i = 0; options.all && i < quantities.size(); ++i) chosen.push_back(i);
  for (const std::string& name : options.properties) {
    const auto found = std::find_if(quantities.begin(), quantities.end(),
                                    [&](const Quantity& quantity) { return is_same_name(quantity.symbol, name); });
    if (found == quantities.end()) {
      std::vector<std::string_view> symbols;
      symbols.reserve(quantities.size());
      for (const Quantity& quantity : quantities) symbols.emplace_back(quantity.symbol);
      throw usage("'" + name + "': " + fluid.name() + " has no such property" + did_you_mean(name, symbols));
    }
    chosen.push_back(static_cast<std::size_t>(found - quantities.begin()));
  }
  if (chosen.empty()) throw usage("name the properties, or give --all (see 'tessera props --list')");
  return chosen;
}

/// The remarks on all states, each once.
class Notes {
 public:
  void add(std::vector<Note> notes) {
    for (Note& note : notes) {
      const auto known =
          std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.first.remark == note.remark; });
      known != rows_.end() ? void(++known->count) : rows_.push_back({std::move(note), 1});
    }
  }
  void tell() const {
    for (const auto& [first, count] : rows_) {
      std::cerr << "tessera: note: " << first.state;
      if (count > 1) std::cerr << " (the first of " << count << " rows)";
      std::cerr << ": " << first.remark << "\n";
    }
  }

 private:
  struct Row {
    Note first;
    std::size_t count;
  };
  std::vector<Row> rows_;
};

void list(std::string_view only) {
  const auto line = [](const std::string& label, const char* unit, const std::string& text) {
    std::cout << "  " << std::left << std::setw(17) << label << std::setw(10) << unit << text << "\n";
  };
  for (const FluidType& type : fluid_types()) {
    const std::vector<std::string_view> fluids = built_in_fluids(type);
    if (!only.empty() && std::find(fluids.begin(), fluids.end(), only) == fluids.end()) continue;
    std::cout << type.name << (fluids.empty() ? ": with --file" : ":");
    for (const std::string_view name : fluids) std::cout << " " << name;
    std::cout << "\n";
    for (const InputIndex i : type.inputs) {
      const auto& [name, text, units] = inputs()[i];
      const std::string accepted = units.size() > 1 ? " (" + unit_list(inputs()[i]) + ")" : "";
      line(std::string("--") + name, units[0].name.c_str(), text + accepted);
    }
    for (const Quantity& quantity : properties(type)) line(quantity.symbol, quantity.unit, quantity.name);
    std::cout << "\n";
  }
}

}  // namespace

void props(const PropsOptions& options) {
  if (options.list) return list(options.fluid.empty() ? "" : Fluid(options.fluid).name());
  if (options.fluid.empty()) throw usage("name a fluid (see 'tessera props --list')");
  if (options.file.empty() && !options.type.empty()) throw usage("--type: belongs to --file");
  Fluid fluid = options.file.empty() ? Fluid(options.fluid) : Fluid(options.fluid, options.file, options.type);
  const std::vector<Quantity> quantities = properties(fluid.type());
  const std::vector<std::size_t> chosen = chosen_properties(options, fluid, quantities);
  GivenState given = parse_inputs(options);

  Notes notes;
  std::string failure;  // the first property that is not finite
  const auto evaluate = [&](const auto& print) {
    const State state = fluid.complete(given);
    for (const std::size_t i : chosen) {
      const double value = fluid.value(i, state);
      print(quantities[i], value);
      if (!std::isfinite(value) && failure.empty()) {
        failure = std::string(quantities[i].symbol) + " is " + number_text(value);
        for (const InputIndex input : fluid.type().inputs) failure.append(", ").append(input_text(input, state[input]));
      }
    }
    notes.add(fluid.notes(state));
  };

  if (options.table.empty()) {
    evaluate([](const Quantity& quantity, double value) {
      const std::string unit = quantity.unit;
      std::cout << quantity.symbol << " = " << number_text(value) << (unit == "1" ? "" : " " + unit) << "\n";
    });
  } else {
    const Sweep sweep = parse_sweep(options.table);
    const Input& input = inputs()[sweep.input];
    if (given[sweep.input]) throw usage(std::string("--") + input.name + ": is in --table already");
    given[sweep.input] = sweep.values.front();
    fluid.complete(given);  // throws before the header is out
    std::cout << "\"" << input.name << " [" << input.units[0].name << "]\"";
    for (const std::size_t i : chosen) {
      std::cout << ",\"" << quantities[i].symbol << " [" << quantities[i].unit << "]\"";
    }
    std::cout << "\n";
    for (const double value : sweep.values) {
      given[sweep.input] = value;
      std::cout << number_text(value);
      evaluate([](const Quantity&, double property) { std::cout << "," << number_text(property); });
      std::cout << "\n";
    }
  }
  notes.tell();
  if (!failure.empty()) throw Error(ExitCode::kNonFinite, failure);
}

}  // namespace runner
