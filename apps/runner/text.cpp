#include "apps/runner/text.h"

#include <fnmatch.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <numeric>
#include <utility>

namespace runner {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<double> leading_number(std::string_view text, std::string_view& rest) {
  text = trimmed(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc()) return std::nullopt;
  rest = trimmed(text.substr(static_cast<std::size_t>(end - text.data())));
  return value;
}

std::optional<double> parse_number(std::string_view text) {
  std::string_view rest;
  const std::optional<double> value = leading_number(text, rest);
  return rest.empty() ? value : std::nullopt;
}

std::optional<unsigned> parse_unsigned(std::string_view text) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

char* write_number(char* first, double value) {
  if (std::isnan(value)) value = std::fabs(value);  // the sign of a NaN says nothing
  return std::to_chars(first, first + kNumberWidth, value).ptr;
}

std::string number_text(double value) {
  char digits[kNumberWidth];
  return {digits, write_number(digits, value)};
}

std::size_t edit_distance(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
  std::vector<std::size_t> row(b.size() + 1);  // distances of the prefixes of b to the present prefix of a
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (lower(a[i]) == lower(b[j]) ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

std::string did_you_mean(std::string_view name, const std::vector<std::string_view>& candidates) {
  const std::size_t limit = std::max<std::size_t>(3, name.size() / 2);
  std::vector<std::pair<std::size_t, std::string_view>> near;
  for (const std::string_view candidate : candidates) {
    const std::size_t distance = edit_distance(name, candidate);
    if (distance <= limit) near.emplace_back(distance, candidate);
  }
  std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  if (near.size() > 3) near.resize(3);

  std::string hint;
  for (std::size_t i = 0; i < near.size(); ++i) {
    hint += i == 0 ? "; did you mean '" : i + 1 < near.size() ? ", '" : " or '";
    hint += std::string(near[i].second) + "'";
  }
  return hint.empty() ? hint : hint + "?";
}

bool matches_pattern(const std::string& name, const std::string& pattern) {
  return name == pattern || fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

}  // namespace runner
