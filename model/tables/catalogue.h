#pragma once

/// What the unit consists of, as rows: units, continuous states, outputs, inputs and memories. Everything that needs a
/// name, a number, a unit or a text of theirs (the store, the pointer tables, the model description, the
/// documentation, the tests) takes it from here.

#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

// ---- Rates ---------------------------------------------------------------------------------------------------------

/// When a signal is computed. The ticks belong to major steps; between them a sample holds.
enum class Rate { constant, continuous, tick_1ms, tick_10ms, tick_100ms, tick_1s };

// ---- Units ---------------------------------------------------------------------------------------------------------

struct UnitRow {
  std::string_view id, name;
  std::string_view type;  ///< name of the declared type of a variable in this unit
  double factor, offset;  ///< value in the base unit = factor * value + offset
  int kg, m, s, A, K, rad;
};

struct DisplayUnitRow {
  std::string_view unit;  ///< id of the UnitRow
  std::string_view name;
  double factor, offset;  ///< shown value = factor * value + offset
};

inline constexpr auto kUnits = std::to_array<UnitRow>({
#define UNIT(id, name, type, factor, offset, kg, m, s, A, K, rad) {#id, name, type, factor, offset, kg, m, s, A, K, rad},
#include "model/tables/units.def"
});

inline constexpr auto kDisplayUnits = std::to_array<DisplayUnitRow>({
#define DISPLAY_UNIT(unit, name, factor, offset) {#unit, name, factor, offset},
#include "model/tables/units.def"
});

namespace unit {
/// Index of each unit in kUnits.
enum Index : std::size_t {
#define UNIT(id, ...) id,
#include "model/tables/units.def"
};
}  // namespace unit

// ---- Continuous states ---------------------------------------------------------------------------------------------

/// How the derivative of a state x follows from its input signal u.
enum class StateRule {
  plain,                ///< u
  limit_0_inf,          ///< u, cut at the limits 0 and +Inf
  limit_0_1,            ///< u, cut at the limits 0 and 1
  lag_1,                ///< -x + u
  lag_3_over_7,         ///< -0.42857142857142855 x + u
  lag_1_over_3,         ///< -0.3333333333333333 x + u
  lag_10,               ///< -10 x + u
  plain_enabled,        ///< as plain while the state's sub-block is active, else 0
  limit_0_inf_enabled,  ///< as limit_0_inf while the state's sub-block is active, else 0
  lag_1_enabled,        ///< as lag_1 while the state's sub-block is active, else 0
};

/// Start value of a state: a number, or what its block sets in the first evaluation.
struct StateStart {
  double value;
  bool from_block;
};

struct StateRow {
  std::string_view id, block, quantity, unit;
  StateRule rule;
  StateStart start;
};

inline constexpr auto kStates = [] {
  using enum StateRule;
  constexpr StateStart from_block{0.0, true};
  struct Start : StateStart {
    constexpr Start(double number) : StateStart{number, false} {}
    constexpr Start(StateStart given) : StateStart(given) {}
  };
  return std::to_array<StateRow>({
#define STATE(id, block, quantity, unit, rule, value) {#id, block, quantity, unit, rule, Start(value)},
#include "model/tables/states.def"
  });
}();

namespace state {
/// Index of each state in Tessera_X.
enum Index : std::size_t {
#define STATE(id, ...) id,
#include "model/tables/states.def"
};
}  // namespace state

inline constexpr std::size_t kStateCount = kStates.size();
static_assert(kStateCount == 130);
static_assert(state::GV01H1_T == 12 && state::distance == 83 && state::stack_power_pi == 103);

// ---- Outputs -------------------------------------------------------------------------------------------------------

enum class OutputGroup { hydrogen, air, cooling, electrical, displays };

struct OutputRow {
  std::string_view name;  ///< as an importer sees it: component.quantity
  OutputGroup group;
  Rate rate;
  unit::Index unit;
  std::string_view text;
};

inline constexpr auto kOutputs = [] {
  using enum OutputGroup;
  using enum Rate;
  return std::to_array<OutputRow>({
#define OUTPUT(component, quantity, group, rate, unit_id, value, text) \
  {#component "." #quantity, group, rate, unit::unit_id, text},
#include "model/tables/outputs.def"
  });
}();

namespace output {
/// Value reference of each output.
enum Index : std::size_t {
#define OUTPUT(component, quantity, ...) component##_##quantity,
#include "model/tables/outputs.def"
};
}  // namespace output

inline constexpr std::size_t kOutputCount = kOutputs.size();
static_assert(kOutputCount == 146);
static_assert(output::ambient_temperature == 28 && output::stack_voltage == 52 && output::vehicle_distance == 143);

/// Number of outputs in a group.
constexpr std::size_t count(OutputGroup group) {
  std::size_t n = 0;
  for (const OutputRow& row : kOutputs) n += row.group == group ? 1 : 0;
  return n;
}
static_assert(count(OutputGroup::hydrogen) == 28 && count(OutputGroup::air) == 24 && count(OutputGroup::cooling) == 19 &&
              count(OutputGroup::electrical) == 38 && count(OutputGroup::displays) == 37);

/// The outputs of the hydrogen loop. In stretches of the scenario the ejector loop flips from step to step there and
/// magnifies a rounding to the full size of the signal.
inline constexpr output::Index kHydrogenLoop[] = {
    output::tank_pressure,          output::tank_temperature,        output::tank_outflow,
    output::ejector_inlet_pressure, output::ejector_inlet_temperature, output::ejector_flow,
    output::anode_inlet_pressure,   output::anode_inlet_temperature, output::anode_outlet_flow,
    output::anode_outlet_pressure,  output::anode_outlet_temperature, output::supply_valve_command,
    output::reducer_outlet_pressure, output::reducer_outlet_temperature, output::stack_pressure_difference,
    output::supply_valve_position,  output::bleed_valve_flow,        output::recirculation_flow,
    output::supply_valve_flow,      output::tank_hydrogen_mass,      output::hydrogen_account_mass,
    output::hydrogen_account_fill,
};
static_assert(std::size(kHydrogenLoop) == 22);

constexpr bool is_in_hydrogen_loop(std::size_t vr) {
  for (const output::Index index : kHydrogenLoop) {
    if (index == vr) return true;
  }
  return false;
}

// ---- Inputs --------------------------------------------------------------------------------------------------------

/// What becomes of a value on its way into the model.
struct Scale {
  enum class Operation { none, add, multiply, multiply_by_own_source } operation;
  double by;
};

namespace scale {
inline constexpr Scale as_is{Scale::Operation::none, 0.0};
inline constexpr Scale times_own_source{Scale::Operation::multiply_by_own_source, 0.0};
constexpr Scale plus(double by) { return {Scale::Operation::add, by}; }
constexpr Scale times(double by) { return {Scale::Operation::multiply, by}; }
}  // namespace scale

struct InputRow {
  std::string_view parameter, gate;  ///< as an importer sees them: component.quantity_set, component.quantity_gate
  unit::Index unit;
  double start, min, max, nominal;
  Scale parameter_scale, own_scale;
  std::string_view text;
};

inline constexpr auto kInputs = [] {
  using namespace scale;
  return std::to_array<InputRow>({
#define INPUT(component, quantity, unit_id, start, min, max, nominal, parameter_scale, own_source, own_scale, text) \
  {#component "." #quantity "_set", #component "." #quantity "_gate", unit::unit_id, start, min, max, nominal,      \
   parameter_scale, own_scale, text},
#include "model/tables/inputs.def"
  });
}();

namespace input {
/// Index k of each input: Real value reference 146 + k, Boolean value reference k.
enum Index : std::size_t {
#define INPUT(component, quantity, ...) component##_##quantity,
#include "model/tables/inputs.def"
};
}  // namespace input

inline constexpr std::size_t kInputCount = kInputs.size();
static_assert(kInputCount == 23);
static_assert(input::ambient_temperature == 2 && input::vehicle_speed == 15 && input::pump_command == 22);

// ---- Memories ------------------------------------------------------------------------------------------------------

struct MemoryRow {
  std::string_view id;
  Rate rate;
  double start;
  std::string_view unit, text;
};

inline constexpr auto kMemories = [] {
  using enum Rate;
  return std::to_array<MemoryRow>({
#define MEMORY(id, rate, start, unit, text) {#id, rate, start, unit, text},
#include "model/tables/memories.def"
  });
}();

// ---- Value references of the Real variables ------------------------------------------------------------------------

inline constexpr std::size_t kFirstParameter = kOutputCount;                   ///< 146
inline constexpr std::size_t kTimeReference = kFirstParameter + kInputCount;   ///< 169
inline constexpr std::size_t kRealCount = kTimeReference + 1;                  ///< 170
inline constexpr std::size_t kBooleanCount = kInputCount;                      ///< 23
