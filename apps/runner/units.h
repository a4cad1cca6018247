#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace runner {

/// Relation of a unit to the SI base units: value in base units = factor * value + offset.
struct BaseUnit {
  std::array<int, 8> exponents{};  ///< of kg, m, s, A, K, mol, cd, rad
  double factor = 1.0;
  double offset = 0.0;
};

/// Another scale of a unit: value on this scale = factor * value in the unit + offset.
struct DisplayUnit {
  std::string name;
  double factor = 1.0;
  double offset = 0.0;
};

/// A unit as the model description defines it.
struct Unit {
  std::string name;
  std::optional<BaseUnit> base;  ///< absent: the unit converts to its display units only
  std::vector<DisplayUnit> displays;
};

/// Converts a value between two units of the list that measure the same quantity.
/// @param from  name of a unit or display unit
/// @param to    name of a unit
/// @return nullopt if `from` is unknown or measures something else
std::optional<double> convert(const std::vector<Unit>& units, double value, std::string_view from, std::string_view to);

/// Names of all units and display units that convert to `unit`, itself first.
std::vector<std::string> compatible_units(const std::vector<Unit>& units, std::string_view unit);

}  // namespace runner
