#include "apps/runner/compare.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <utility>

#include "apps/runner/errors.h"
#include "apps/runner/table.h"
#include "apps/runner/text.h"

namespace runner {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::vector<std::string_view> views(const std::vector<std::string>& names) { return {names.begin(), names.end()}; }

std::string short_text(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.4g", value);
  return text;
}

/// "1 signal", "2 signals"
std::string counted(std::size_t count, const char* noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

bool is_same_time(double a, double b) { return std::fabs(a - b) <= 1e-9 * std::max(1.0, std::fabs(b)); }

/// Signals or times that one of the two lacks.
struct Missing {
  std::vector<std::string> signals;
  std::size_t times = 0;
  double first_time = 0.0;

  void add_time(double time) {
    if (times++ == 0) first_time = time;
  }
  bool is_empty() const { return signals.empty() && times == 0; }
  void print(const char* where) const {
    constexpr std::size_t kMostNames = 5;
    if (!signals.empty()) {
      std::string names = signals[0];
      for (std::size_t i = 1; i < std::min(signals.size(), kMostNames); ++i) names.append(", ").append(signals[i]);
      if (signals.size() > kMostNames) names += " and " + std::to_string(signals.size() - kMostNames) + " more";
      std::printf("missing in the %s: %s (%s)\n", where, counted(signals.size(), "signal").c_str(), names.c_str());
    }
    if (times > 0) {
      std::printf("missing in the %s: %s, the first at %s s\n", where, counted(times, "time").c_str(),
                  number_text(first_time).c_str());
    }
  }
};

/// Pairs of rows with the same time, first of the result, then of the reference.
std::vector<std::pair<std::size_t, std::size_t>> match_times(const std::vector<double>& result,
                                                             const std::vector<double>& reference, Missing& in_result,
                                                             Missing& in_reference) {
  std::vector<std::pair<std::size_t, std::size_t>> pairs;
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < result.size() || j < reference.size()) {
    if (i < result.size() && j < reference.size() && is_same_time(result[i], reference[j])) {
      pairs.emplace_back(i++, j++);
    } else if (j == reference.size() || (i < result.size() && result[i] < reference[j])) {
      in_reference.add_time(result[i++]);
    } else {
      in_result.add_time(reference[j++]);
    }
  }
  return pairs;
}

std::string in_quotes(std::string_view text) { return std::string("'").append(text).append("'"); }

[[noreturn]] void fail_tolerance(const std::string& text, const std::string& reason) {
  throw Error(ExitCode::kUsage, "--tolerance " + in_quotes(text) + ": " + reason);
}

/// How far a value is from its reference, measured by what is allowed.
double ratio_of(double value, double reference, double allowed) {
  if (value == reference || (std::isnan(value) && std::isnan(reference))) return 0.0;
  if (!std::isfinite(value) || !std::isfinite(reference)) return kInfinity;
  return std::fabs(value - reference) / allowed;  // infinite if nothing is allowed
}

}  // namespace

std::optional<double> parse_tolerance(std::string_view text) {
  const std::optional<double> value = parse_number(text);
  return value && *value >= 0.0 ? value : std::nullopt;
}

Comparison::Comparison(ResultTable reference, const Tolerances& tolerances, const std::vector<std::string>& signals)
    : reference_(std::move(reference)),
      limits_(reference_.names.size(), Limit{tolerances.rtol, tolerances.atol}),
      signals_(signals) {
  for (const std::string& text : tolerances.per_signal) {
    const std::size_t equals = std::min(text.rfind('='), text.size());
    const std::string pattern(trimmed(std::string_view(text).substr(0, equals)));
    const Limit limit = read_limit(text, equals, tolerances);
    bool has_match = false;
    for (std::size_t i = 0; i < limits_.size(); ++i) {
      if (!matches_pattern(reference_.names[i], pattern)) continue;
      limits_[i] = limit;
      has_match = true;
    }
    if (!has_match) {
      fail_tolerance(text, "matches no signal of the reference" + did_you_mean(pattern, views(reference_.names)));
    }
  }
}

Comparison::Limit Comparison::read_limit(const std::string& text, std::size_t equals, const Tolerances& tolerances) {
  if (equals == text.size()) fail_tolerance(text, "write it as PATTERN=rtol:R,atol:A, or with one of the two");
  Limit limit = {tolerances.rtol, tolerances.atol};
  std::string_view left = std::string_view(text).substr(equals + 1);
  bool is_at_end = false;
  while (!is_at_end) {
    const std::size_t comma = left.find(',');
    is_at_end = comma == std::string_view::npos;
    const std::string_view part = trimmed(left.substr(0, comma));
    if (!is_at_end) left.remove_prefix(comma + 1);
    const bool is_relative = part.starts_with("rtol:");
    if (!is_relative && !part.starts_with("atol:")) {
      fail_tolerance(text, in_quotes(part).append(" is neither rtol:R nor atol:A"));
    }
    const std::optional<double> value = parse_tolerance(part.substr(5));
    if (!value) fail_tolerance(text, in_quotes(part).append(": ").append(kToleranceNeeds));
    (is_relative ? limit.rtol : limit.atol) = *value;
  }
  return limit;
}

void Comparison::start_at(double time) {
  const auto first = std::find_if(reference_.time.begin(), reference_.time.end(),
                                  [&](double t) { return t >= time || is_same_time(t, time); });
  const auto count = first - reference_.time.begin();
  reference_.time.erase(reference_.time.begin(), first);
  for (std::vector<double>& column : reference_.columns) column.erase(column.begin(), column.begin() + count);
}

bool Comparison::is_compared(const std::string& name) const {
  return signals_.empty() || std::any_of(signals_.begin(), signals_.end(),
                                         [&](const std::string& pattern) { return matches_pattern(name, pattern); });
}

ExitCode Comparison::print(const ResultTable& result) const {
  Missing in_result;
  Missing in_reference;
  const auto rows = match_times(result.time, reference_.time, in_result, in_reference);

  std::map<std::string_view, std::size_t> left;  // signals of the result that the reference has not asked for yet
  for (std::size_t i = 0; i < result.names.size(); ++i) {
    if (is_compared(result.names[i])) left.emplace(result.names[i], i);
  }
  std::vector<Deviation> deviations;
  std::size_t compared = 0;
  for (std::size_t i = 0; i < reference_.names.size(); ++i) {
    const std::string& name = reference_.names[i];
    if (!is_compared(name)) continue;
    const auto found = left.find(name);
    if (found == left.end()) {
      in_result.signals.push_back(name);
      continue;
    }
    const std::vector<double>& values = result.columns[found->second];
    left.erase(found);
    ++compared;
    Deviation worst = {.name = name};
    for (const auto& [row, reference_row] : rows) {
      const double value = values[row];
      const double reference = reference_.columns[i][reference_row];
      const double allowed = std::max(limits_[i].atol, limits_[i].rtol * std::fabs(reference));
      const double ratio = ratio_of(value, reference, allowed);
      if (ratio > worst.ratio) worst = {name, ratio, value, reference, reference_.time[reference_row], allowed};
    }
    if (worst.ratio > 0.0) deviations.push_back(worst);
  }
  for (const std::string& name : result.names) {
    if (left.contains(name)) in_reference.signals.push_back(name);
  }

  std::stable_sort(deviations.begin(), deviations.end(),
                   [](const Deviation& a, const Deviation& b) { return a.ratio > b.ratio; });
  std::size_t beyond = 0;
  std::vector<std::vector<std::string>> table = {{"signal", "deviation", "allowed", "ratio", "time [s]", "verdict"}};
  for (const Deviation& d : deviations) {
    const bool is_finite = std::isfinite(d.value) && std::isfinite(d.reference);
    const bool is_within = d.ratio <= 1.0;
    beyond += is_within ? 0 : 1;
    table.push_back({d.name,
                     is_finite ? short_text(std::fabs(d.value - d.reference))
                               : number_text(d.value) + " against " + number_text(d.reference),
                     is_finite ? short_text(d.allowed) : "none", short_text(d.ratio), number_text(d.time),
                     is_within ? "ok" : "beyond"});
  }
  if (table.size() > 1) std::printf("%s\n", table_text(table, "lrrrrl").c_str());
  in_result.print("result");
  in_reference.print("reference");

  const bool is_empty = compared == 0 || rows.empty();
  const bool agrees = beyond == 0 && in_result.is_empty() && in_reference.is_empty() && !is_empty;
  std::printf("%s: %s at %s compared, %zu without any deviation, %zu beyond the tolerance\n",
              agrees ? "agreement" : "no agreement", counted(compared, "signal").c_str(),
              counted(rows.size(), "time").c_str(), compared - deviations.size(), beyond);
  return agrees ? ExitCode::kOk : ExitCode::kFindings;
}

ExitCode compare(const CompareOptions& options) {
  const ResultTable result = read_result_csv(options.result);
  ResultTable reference = read_result_csv(options.reference);
  for (const std::string& pattern : options.signals) {
    const auto matches = [&](const std::string& name) { return matches_pattern(name, pattern); };
    if (std::any_of(result.names.begin(), result.names.end(), matches)) continue;
    if (std::any_of(reference.names.begin(), reference.names.end(), matches)) continue;
    throw Error(ExitCode::kUsage,
                "--signal '" + pattern + "': matches no signal" + did_you_mean(pattern, views(reference.names)));
  }
  return Comparison(std::move(reference), options.tolerances, options.signals).print(result);
}

}  // namespace runner
