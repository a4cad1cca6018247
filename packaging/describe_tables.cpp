// The tables that the documents share.

#include <algorithm>
#include <array>

#include "model/tables/scenario.h"
#include "packaging/describe.h"

namespace {

using Kind = Table::Kind;

std::string_view text(Rate rate) {
  switch (rate) {
    case Rate::constant:
      return "constant";
    case Rate::continuous:
      return "every step";
    case Rate::tick_1ms:
      return "1 ms";
    case Rate::tick_10ms:
      return "10 ms";
    case Rate::tick_100ms:
      return "100 ms";
    case Rate::tick_1s:
      return "1 s";
  }
  return "";
}

std::string_view text(StateRule rule) {
  switch (rule) {
    case StateRule::plain:
      return "u";
    case StateRule::limit_0_inf:
      return "u, x held at or above 0";
    case StateRule::limit_0_1:
      return "u, x held in 0 to 1";
    case StateRule::lag_1:
      return "u - x";
    case StateRule::lag_3_over_7:
      return "u - 3/7 x";
    case StateRule::lag_1_over_3:
      return "u - 1/3 x";
    case StateRule::lag_10:
      return "u - 10 x";
    case StateRule::plain_enabled:
      return "u while active, else 0";
    case StateRule::limit_0_inf_enabled:
      return "u while active, else 0, x held at or above 0";
    case StateRule::lag_1_enabled:
      return "u - x while active, else 0";
  }
  return "";
}

std::string text(const Scale& scale) {
  switch (scale.operation) {
    case Scale::Operation::add:
      return join({"+ ", number(scale.by)});
    case Scale::Operation::multiply:
      return join({"× ", number(scale.by)});
    case Scale::Operation::multiply_by_own_source:
      return "× own source";
    case Scale::Operation::none:
      break;
  }
  return "as it is";
}

/// What feeds an input while its gate is false: a table, or the controller's logic.
struct OwnSource {
  bool is_table;
  const ScenarioTable* table;
};

constexpr std::nullptr_t logic = nullptr;
constexpr OwnSource own_source_of(const ScenarioTable& table) { return {true, &table}; }
constexpr OwnSource own_source_of(std::nullptr_t) { return {false, nullptr}; }

constexpr auto kOwnSources = std::to_array<OwnSource>({
#define INPUT(component, quantity, unit, start, min, max, nominal, parameter_scale, own_source, own_scale, text) \
  own_source_of(own_source),
#include "model/tables/inputs.def"
});

/// Unit of an input's table: the parameter's, but for the two whose table is scaled in another way.
constexpr unit::Index own_source_unit(std::size_t k) {
  if (k == input::wind_speed) return unit::m_per_s;
  if (k == input::coolant_temperature) return unit::degC;
  return kInputs[k].unit;
}

/// Are a parameter and its table in one unit exactly where they share one scale?
constexpr bool own_source_units_follow_the_scales() {
  for (std::size_t k = 0; k < kInputCount; ++k) {
    if (!kOwnSources[k].is_table) continue;
    const Scale &a = kInputs[k].parameter_scale, &b = kInputs[k].own_scale;
    const bool one_scale = a.operation == b.operation && !(a.by < b.by) && !(b.by < a.by);
    if (one_scale != (own_source_unit(k) == kInputs[k].unit)) return false;
  }
  return true;
}
static_assert(own_source_units_follow_the_scales());

std::string own_source_text(std::size_t k) {
  if (!kOwnSources[k].is_table) return "controller";
  const auto [low, high] = std::minmax_element(kOwnSources[k].table->begin(), kOwnSources[k].table->end());
  const unit::Index unit = own_source_unit(k);
  std::string text = join({"table, ", number(*low)});
  if (*low < *high) text += join({" to ", number(*high)});
  if (unit != unit::one) text += join({" ", kUnits[unit].name});
  return text;
}

/// Dimension of a unit as a product of base units, "1" when it has none.
std::string dimension(const UnitRow& row) {
  const std::pair<std::string_view, int> factors[] = {{"kg", row.kg}, {"m", row.m}, {"s", row.s},
                                                      {"A", row.A},   {"K", row.K}, {"rad", row.rad}};
  std::string product;
  for (const auto& [name, exponent] : factors) {
    if (exponent == 0) continue;
    if (!product.empty()) product += ' ';
    product += name;
    if (exponent != 1) product += join({"^", std::to_string(exponent)});
  }
  return product.empty() ? "1" : product;
}

}  // namespace

Table input_table() {
  Table result{{{"Real VR", Kind::number},
                {"Parameter", Kind::name},
                {"Boolean VR", Kind::number},
                {"Gate", Kind::name},
                {"Unit", Kind::text},
                {"Start", Kind::number},
                {"Range", Kind::text},
                {"Parameter's scale", Kind::text},
                {"Own source", Kind::text},
                {"Its scale", Kind::text},
                {"Description", Kind::text}},
               {}};
  for (std::size_t k = 0; k < kInputCount; ++k) {
    const InputRow& row = kInputs[k];
    result.rows.push_back({std::to_string(kFirstParameter + k), std::string(row.parameter), std::to_string(k),
                           std::string(row.gate), std::string(kUnits[row.unit].name), number(row.start),
                           join({number(row.min), " to ", number(row.max)}), text(row.parameter_scale),
                           own_source_text(k), text(row.own_scale), std::string(row.text)});
  }
  return result;
}

Table output_table(OutputGroup group) {
  Table result{{{"Real VR", Kind::number},
                {"Output", Kind::name},
                {"Unit", Kind::text},
                {"Rate", Kind::text},
                {"Mark", Kind::text},
                {"Description", Kind::text}},
               {}};
  for (std::size_t vr = 0; vr < kOutputCount; ++vr) {
    const OutputRow& row = kOutputs[vr];
    if (row.group != group) continue;
    result.rows.push_back({std::to_string(vr), std::string(row.name), std::string(kUnits[row.unit].name),
                           std::string(text(row.rate)), is_in_hydrogen_loop(vr) ? "loop" : "", std::string(row.text)});
  }
  return result;
}

Table unit_table() {
  Table result{{{"Unit", Kind::name},
                {"Declared type", Kind::text},
                {"Base units", Kind::text},
                {"Factor", Kind::number},
                {"Offset", Kind::number},
                {"Can be shown in", Kind::text}},
               {}};
  for (const UnitRow& row : kUnits) {
    std::string shown;
    for (const DisplayUnitRow& display : kDisplayUnits) {
      if (display.unit == row.id) shown += join({shown.empty() ? "" : ", ", display.name});
    }
    result.rows.push_back(
        {std::string(row.name), std::string(row.type), dimension(row), number(row.factor), number(row.offset), shown});
  }
  return result;
}

Table state_table() {
  Table result{{{"No.", Kind::number},
                {"State", Kind::name},
                {"Block", Kind::text},
                {"Quantity", Kind::text},
                {"Unit", Kind::text},
                {"Derivative", Kind::text},
                {"Start", Kind::number}},
               {}};
  for (std::size_t i = 0; i < kStateCount; ++i) {
    const StateRow& row = kStates[i];
    result.rows.push_back({std::to_string(i), std::string(row.id), std::string(row.block), std::string(row.quantity),
                           std::string(row.unit), std::string(text(row.rule)),
                           row.start.from_block ? "its block" : number(row.start.value)});
  }
  return result;
}

Table memory_table() {
  Table result{{{"Memory", Kind::name},
                {"Rate", Kind::text},
                {"Unit", Kind::text},
                {"Start", Kind::number},
                {"Content", Kind::text}},
               {}};
  for (const MemoryRow& row : kMemories) {
    result.rows.push_back({std::string(row.id), std::string(text(row.rate)), std::string(row.unit), number(row.start),
                           std::string(row.text)});
  }
  return result;
}
