#include "apps/runner/units.h"

#include <algorithm>

namespace runner {
namespace {

/// A way to state a value: in a unit, or on one of its display scales.
struct Scale {
  std::string_view name;
  const Unit* unit;
  const DisplayUnit* display;  ///< null: the unit itself
};

const Unit* find_unit(const std::vector<Unit>& units, std::string_view name) {
  const auto found = std::find_if(units.begin(), units.end(), [&](const Unit& unit) { return unit.name == name; });
  return found == units.end() ? nullptr : &*found;
}

/// The scales that convert to `target`; its own come first, since names of display units are unique within a unit only.
std::vector<Scale> compatible_scales(const std::vector<Unit>& units, const Unit& target) {
  std::vector<const Unit*> compatible = {&target};
  for (const Unit& unit : units) {
    if (&unit == &target || !unit.base || !target.base) continue;
    if (unit.base->exponents == target.base->exponents) compatible.push_back(&unit);
  }
  std::vector<Scale> scales;
  scales.reserve(compatible.size());
  for (const Unit* unit : compatible) scales.push_back({unit->name, unit, nullptr});
  for (const Unit* unit : compatible) {
    for (const DisplayUnit& display : unit->displays) scales.push_back({display.name, unit, &display});
  }
  return scales;
}

}  // namespace

std::optional<double> convert(const std::vector<Unit>& units, double value, std::string_view from,
                              std::string_view to) {
  if (from == to) return value;
  const Unit* target = find_unit(units, to);
  if (target == nullptr) return std::nullopt;
  const std::vector<Scale> scales = compatible_scales(units, *target);
  const auto scale = std::find_if(scales.begin(), scales.end(), [&](const Scale& s) { return s.name == from; });
  if (scale == scales.end()) return std::nullopt;

  if (scale->display != nullptr) value = (value - scale->display->offset) / scale->display->factor;
  if (scale->unit == target) return value;
  const double base_value = scale->unit->base->factor * value + scale->unit->base->offset;
  return (base_value - target->base->offset) / target->base->factor;
}

std::vector<std::string> compatible_units(const std::vector<Unit>& units, std::string_view unit) {
  std::vector<std::string> names = {std::string(unit)};
  if (const Unit* target = find_unit(units, unit)) {
    for (const Scale& scale : compatible_scales(units, *target)) {
      if (std::find(names.begin(), names.end(), scale.name) == names.end()) names.emplace_back(scale.name);
    }
  }
  return names;
}

}  // namespace runner
