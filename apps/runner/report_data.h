#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "apps/runner/result_reader.h"

namespace runner {

/// More rows than these are thinned to about as many: a chart has some thousand pixels.
inline constexpr std::size_t kMostDrawnRows = 10000;

/// The table with at most kMostDrawnRows rows: of each stretch of rows, every column keeps its least and its largest
/// value in the order in which they came, at the first and the last time of the stretch.
ResultTable thinned(const ResultTable& table);

/// Values for a page, in about seven digits: {"constant": value}, {"text": "1,2.5"} or {"float32": base64 of
/// little-endian numbers}, whichever is shortest. What is not finite is null or kept by float32.
nlohmann::ordered_json encoded(const std::vector<double>& values);

struct Warning {
  bool is_error = false;  ///< the run itself went wrong; else a figure to check
  std::string signal;     ///< empty: of the run as a whole
  std::string text;
};

/// What an engineer should check in a signal: values that are not finite; temperatures and pressures (by unit and name)
/// out of the usual.
std::vector<Warning> check_signal(const std::string& name, const std::string& unit, const std::vector<double>& time,
                                  const std::vector<double>& values);

}  // namespace runner
