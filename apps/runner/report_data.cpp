#include "apps/runner/report_data.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

#include "apps/runner/text.h"

namespace runner {
namespace {

using Json = nlohmann::ordered_json;

/// What an engineer takes for usual; the first row that fits counts.
struct UsualRange {
  const char *name, *unit;  ///< name: a pattern
  double least, largest;
};
constexpr UsualRange kUsualRanges[] = {
    {"*setpoint", "degC", -60, 150},
    {"tank.temperature", "degC", -40, 85},  // limits of the gas in tanks of type III and IV, UN GTR No. 13
    {"*ambient*temperature", "degC", -40, 60},
    {"coolant.*", "degC", -40, 95},
    {"ejector_inlet.temperature", "degC", -40, 250},  // its filling heats it
    {"*", "degC", -40, 200},
    {"*", "K", 233.15, 473.15},
    {"*difference*", "bar", -0.5, 0.5},  // over the membrane
    {"tank.pressure", "bar", 10, 875},   // 125 % of 700 bar, UN GTR No. 13
    {"reducer_outlet.pressure", "bar", 0.5, 30},
    {"ejector_inlet.pressure", "bar", 0.5, 20},
    {"*", "bar", 0.5, 5},
};

std::string text_of(double value, int digits) {
  char text[kNumberWidth];
  return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, digits).ptr};
}

std::string base64(const std::vector<unsigned char>& bytes) {
  constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) group = group << 8U | (k < count ? bytes[i + k] : 0U);
    for (std::size_t k = 0; k < 4; ++k) text += k <= count ? kDigits[group >> (18U - 6U * k) & 63U] : '=';
  }
  return text;
}

/// The nearest number of single precision; what is finite stays so.
float to_float(double value) {
  constexpr double kMost = std::numeric_limits<float>::max();
  return static_cast<float>(std::isfinite(value) ? std::clamp(value, -kMost, kMost) : value);
}

std::string float32_text(const std::vector<double>& values) {
  std::vector<unsigned char> bytes;
  bytes.reserve(4 * values.size());
  for (const double value : values) {
    const auto bits = std::bit_cast<std::uint32_t>(to_float(value));
    for (unsigned k = 0; k < 4; ++k) bytes.push_back(static_cast<unsigned char>(bits >> 8U * k & 0xFFU));
  }
  return base64(bytes);
}

/// The least and the largest value of the rows [first, last), in the order of the rows; not-a-number if all are.
std::pair<double, double> extremes(const std::vector<double>& values, std::size_t first, std::size_t last) {
  std::size_t least = first, largest = first;
  for (std::size_t i = first; i < last; ++i) {
    if (std::isnan(values[least]) || values[i] < values[least]) least = i;
    if (std::isnan(values[largest]) || values[i] > values[largest]) largest = i;
  }
  return {values[std::min(least, largest)], values[std::max(least, largest)]};
}

}  // namespace

ResultTable thinned(const ResultTable& table) {
  const std::size_t rows = table.time.size();
  if (rows <= kMostDrawnRows) return table;
  const std::size_t stretch = (2 * rows + kMostDrawnRows - 1) / kMostDrawnRows;
  ResultTable few{table.names, {}, std::vector<std::vector<double>>(table.columns.size())};
  for (std::size_t first = 0; first < rows; first += stretch) {
    const std::size_t last = std::min(first + stretch, rows);
    const bool is_single = last - first == 1;
    few.time.push_back(table.time[first]);
    if (!is_single) few.time.push_back(table.time[last - 1]);
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      const auto [earlier, later] = extremes(table.columns[i], first, last);
      few.columns[i].push_back(earlier);
      if (!is_single) few.columns[i].push_back(later);
    }
  }
  return few;
}

Json encoded(const std::vector<double>& values) {
  const auto is_first = [&](double value) {
    return value == values.front() || (std::isnan(value) && std::isnan(values.front()));
  };
  if (!values.empty() && !std::isinf(values.front()) && std::all_of(values.begin(), values.end(), is_first)) {
    return {{"constant", values.front()}};  // not-a-number becomes null
  }
  std::string binary = float32_text(values);
  std::string text;
  for (const double value : values) {
    if (!std::isfinite(value)) return {{"float32", binary}};
    if (!text.empty()) text += ',';
    text += text_of(value, 7);
    if (text.size() > binary.size()) return {{"float32", binary}};
  }
  return {{"text", text}};
}

std::vector<Warning> check_signal(const std::string& name, const std::string& unit, const std::vector<double>& time,
                                  const std::vector<double>& values) {
  std::vector<Warning> warnings;
  const auto at = [&](std::size_t row) { return " at " + text_of(time[row], 10) + " s"; };

  const auto is_finite = [](double value) { return std::isfinite(value); };
  const auto odd = std::find_if_not(values.begin(), values.end(), is_finite);
  if (odd != values.end()) {
    const auto count = values.end() - odd - std::count_if(odd, values.end(), is_finite);
    warnings.push_back({true, name,
                        "is not finite in " + std::to_string(count) + " of " + std::to_string(values.size()) +
                            " rows, first" + at(static_cast<std::size_t>(odd - values.begin()))});
  }

  const auto range = std::find_if(std::begin(kUsualRanges), std::end(kUsualRanges), [&](const UsualRange& candidate) {
    return unit == candidate.unit && matches_pattern(name, candidate.name);
  });
  if (range == std::end(kUsualRanges)) return warnings;
  std::size_t least = values.size(), largest = values.size();
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!std::isfinite(values[i])) continue;
    if (values[i] < range->least && (least == values.size() || values[i] < values[least])) least = i;
    if (values[i] > range->largest && (largest == values.size() || values[i] > values[largest])) largest = i;
  }
  const auto tell = [&](const char* verb, std::size_t row, const char* bound, double limit) {
    if (row == values.size()) return;
    warnings.push_back({false, name,
                        verb + text_of(values[row], 4) + " " + unit + at(row) + "; usual is " + bound +
                            text_of(limit, 6) + " " + unit});
  };
  tell("falls to ", least, "at least ", range->least);
  tell("reaches ", largest, "at most ", range->largest);
  return warnings;
}

}  // namespace runner
