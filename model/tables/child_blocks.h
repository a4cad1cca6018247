#pragma once

/// The 180 child blocks as rows, block group by block group. Blocks that stand in many places alike (the property
/// blocks of a volume, of an enthalpy calculation) are told once and repeated over the instances.

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "model/tables/coolant_loop.h"
#include "model/tables/fluids.h"
#include "model/tables/gas_network.h"

enum class Adaptor { properties, pressure_drop, heat_exchanger };

/// Where a child reads its state. A shared child whose place depends on the direction of a flow names one of them.
enum class Place { gas, compressed_air, liquid, restriction, exchanger };

/// Which cell of its place a property block writes.
enum class Cell { h1, h2, Cp_dry, Cv_dry, vector };

/// How the step gets a child's result.
enum class Evaluation {
  direct,  ///< from the fluid's own laws, which the step asks itself
  runs,    ///< from the child, through its host
  shared,  ///< from another child, which asks for the same fluid and code at the same place
  idle,    ///< not at all: nothing reads it; mostly the branch for the other kind of gas
};

struct ChildBlockRow {
  Adaptor adaptor;
  const char* name;        ///< the block's own
  std::string_view group;  ///< path of the block group that holds it, below FuelCellSystem
  std::string_view path;   ///< path within the group
  fluid::Index fluid;
  int code;
  Place place;
  std::size_t index;  ///< of the place among those of its kind
  Cell cell;
  Evaluation evaluation;
};

namespace child_block_rows {

struct Rows {
  std::array<ChildBlockRow, 180> row{};
  std::size_t count = 0;

  constexpr void add(const ChildBlockRow& next) { row[count++] = next; }

  constexpr void property(const char* name, std::string_view group, std::string_view path, fluid::Index fluid,
                          int code, std::size_t node, Cell cell, Evaluation evaluation) {
    add({Adaptor::properties, name, group, path, fluid, code, Place::gas, node, cell, evaluation});
  }

  /// The pair of a branch that computes the enthalpy of slots 1 and 2.
  constexpr void enthalpy(GasKind gas, const char* name1, const char* name2, std::string_view group,
                          std::string_view path, std::size_t node, Evaluation evaluation) {
    const auto first = gas == GasKind::hydrogen ? fluid::H2_IDG : fluid::O2_IDG;
    property(name1, group, path, first, property::enthalpy, node, Cell::h1, evaluation);
    property(name2, group, path, fluid::N2_IDG, property::enthalpy, node, Cell::h2, evaluation);
  }

  /// Both branches of an enthalpy calculation, of which the one for the gas is evaluated as told.
  constexpr void enthalpy_branches(GasKind gas, std::string_view group, std::string_view hydrogen_path,
                                   std::string_view air_path, std::size_t node, Evaluation evaluation) {
    const bool is_air = gas == GasKind::air;
    enthalpy(GasKind::hydrogen, "StandardFluidProperties H2", "StandardFluidProperties N2", group, hydrogen_path, node,
             is_air ? Evaluation::idle : evaluation);
    enthalpy(GasKind::air, "StandardFluidProperties O2", "StandardFluidProperties N2", group, air_path, node,
             is_air ? evaluation : Evaluation::idle);
  }
};

constexpr Rows build() {
  using enum Evaluation;
  namespace node = gas_node;
  Rows rows;

  // Each volume: heat capacity and enthalpy, a branch each for either kind of gas.
  for (std::size_t v = 0; v < kVolumeCount; ++v) {
    const auto& [path, gas] = std::pair{std::string_view(kVolumes[v].path), kVolumes[v].gas};
    const Evaluation air = gas == GasKind::air ? direct : idle, hydrogen = gas == GasKind::air ? idle : direct;
    rows.property("StandardFluidPropertiesAir", path, "Cp1/Cp_Air", fluid::Moist_Air, property::Cp, v, Cell::Cp_dry, air);
    rows.property("StandardFluidProperties", path, "Cp1/Cp_H2", fluid::H2_IDG, property::Cp, v, Cell::Cp_dry, hydrogen);
    rows.enthalpy(GasKind::hydrogen, "StandardFluidProperties H2", "StandardFluidProperties N2", path, "Enthalpy/h_H2", v, hydrogen);
    rows.enthalpy(GasKind::air, "StandardFluidProperties H2", "StandardFluidProperties N2", path, "Enthalpy/air_H1", v, air);
  }

  // Each restriction: the enthalpy of its upstream gas, which that gas's node has. Nobody else has that of the bleed
  // valve's fixed outside, so the valve's own children compute it.
  for (const RestrictionRow& restriction : kRestrictions) {
    const bool is_bleed = restriction.B == node::bleed_outlet;
    rows.enthalpy_branches(restriction.gas, restriction.path, "Enthalpy/Enthalpy_H2", "Enthalpy/Enthalpy_Air",
                           is_bleed ? restriction.B : restriction.A, is_bleed ? direct : shared);
  }

  constexpr std::string_view kEjector = "Front_End_Underhood/Ejector/Ejecteur_v1";
  rows.enthalpy_branches(GasKind::hydrogen, kEjector, "Em_Enthalpy/Enthalpy_H2", "Em_Enthalpy/Enthalpy_Air", node::GV01H1, shared);
  rows.enthalpy_branches(GasKind::hydrogen, kEjector, "Ea_Enthalpy/Enthalpy_H2", "Ea_Enthalpy/Enthalpy_Air", node::GV03H1, shared);

  constexpr std::string_view kCompressor = "Front_End_Underhood1/Electrical_CPR/MoistAirVolumetricCompressor_v1/Compressor_volumetric_v1";
  constexpr const char *kAir = "StandardFluidPropertiesAir", *kH2 = "StandardFluidProperties_H2";
  rows.property(kAir, kCompressor, "Subsystem1/Cp1/Cp_Air", fluid::Moist_Air, property::Cp, node::ambient, Cell::Cp_dry, direct);
  rows.property(kH2,  kCompressor, "Subsystem1/Cp1/Cp_H2",  fluid::H2_IDG,    property::Cp, node::ambient, Cell::Cp_dry, idle);
  rows.property(kAir, kCompressor, "Subsystem1/Cp2/Cp_Air", fluid::Moist_Air, property::Cp, node::GV01A1,  Cell::Cp_dry, shared);
  rows.property(kH2,  kCompressor, "Subsystem1/Cp2/Cp_H2",  fluid::H2_IDG,    property::Cp, node::GV01A1,  Cell::Cp_dry, idle);
  rows.property(kAir, kCompressor, "Subsystem1/Cv/Cv_Air",  fluid::Moist_Air, property::Cv, node::ambient, Cell::Cv_dry, direct);
  rows.property(kH2,  kCompressor, "Subsystem1/Cv/Cv_H2",   fluid::H2_IDG,    property::Cv, node::ambient, Cell::Cv_dry, idle);
  rows.property(kAir, kCompressor, "Subsystem1/Cv1/Cv_Air", fluid::Moist_Air, property::Cv, node::GV01A1,  Cell::Cv_dry, direct);
  rows.property(kH2,  kCompressor, "Subsystem1/Cv1/Cv_H2",  fluid::H2_IDG,    property::Cv, node::GV01A1,  Cell::Cv_dry, idle);
  rows.enthalpy_branches(GasKind::air, kCompressor, "Enthalpy/h_H2", "Enthalpy/air_H1", node::ambient, direct);

  constexpr std::string_view kPower = "Front_End_Underhood1/Electrical_CPR/Power_calculation";
  constexpr const char *kO2 = "StandardFluidProperties_O2", *kN2 = "StandardFluidProperties_N2";
  rows.add({Adaptor::properties, kO2, kPower, "Moist_Air_Enthalpy1", fluid::O2_IDG, property::enthalpy, Place::compressed_air, 0, Cell::h1, direct});
  rows.add({Adaptor::properties, kN2, kPower, "Moist_Air_Enthalpy1", fluid::N2_IDG, property::enthalpy, Place::compressed_air, 0, Cell::h2, direct});
  rows.enthalpy(GasKind::air, kO2, kN2, kPower, "Moist_Air_Enthalpy3", node::ambient, shared);

  constexpr std::string_view kExchange = "Front_End_Underhood1/Humidifier1/HumidificateurAirNUT/VapEchange1234";
  constexpr const char* kOwn = "StandardFluidProperties";
  rows.property(kOwn, kExchange, "Heat exchange equation/Moist_Air_Cp",  fluid::Moist_Air, property::Cp, node::GV01A1, Cell::Cp_dry, shared);
  rows.property(kOwn, kExchange, "Heat exchange equation/Moist_Air_Cp1", fluid::Moist_Air, property::Cp, node::GV03A,  Cell::Cp_dry, shared);
  rows.property(kOwn, kExchange, "Heat lost  equation1/Moist_Air_Cp",    fluid::Moist_Air, property::Cp, node::GV01A1, Cell::Cp_dry, shared);
  rows.property(kOwn, kExchange, "Heat lost  equation2/Moist_Air_Cp",    fluid::Moist_Air, property::Cp, node::GV03A,  Cell::Cp_dry, shared);

  constexpr std::string_view kStack = "MoistGasFuelCell_v2/PAC/ElectrochemicalPhenomena/ElectrochemicalBalance";
  rows.property(kOwn, kStack, "MonoGas Flow Convertor1", fluid::N2_IDG, property::enthalpy, node::cathode, Cell::h2, shared);
  rows.property(kOwn, kStack, "MonoGas Flow Convertor3", fluid::O2_IDG, property::enthalpy, node::cathode, Cell::h1, shared);
  rows.property(kOwn, kStack, "MonoGas Flow Convertor4", fluid::N2_IDG, property::enthalpy, node::anode,   Cell::h2, shared);
  rows.property(kOwn, kStack, "MonoGas Flow Convertor6", fluid::H2_IDG, property::enthalpy, node::anode,   Cell::h1, shared);

  rows.enthalpy_branches(GasKind::air, "Front_End_Underhood2/Radiator/FlowSource/MoistGasFlowSource_v1", "Enthalpy/Enthalpy_H2", "Enthalpy/Enthalpy_Air", node::ambient, shared);

  constexpr std::string_view kRadiator = "Front_End_Underhood2/Radiator/MoistAirHeatExchangeModule/MoistAirHeatExchangeModule_v1";
  rows.property(kOwn, kRadiator, "Moist_Air_Cp",  fluid::Moist_Air, property::Cp, node::ambient,      Cell::Cp_dry, shared);
  rows.property(kOwn, kRadiator, "Moist_Air_Cp1", fluid::Moist_Air, property::Cp, node::Air_outRadia, Cell::Cp_dry, shared);

  for (std::size_t v = 0; v < kLiquidCount; ++v) {
    rows.add({Adaptor::properties, kOwn, kLiquidVolumes[v].path, "OnePhaseVolume2", kLiquidVolumes[v].fluid, property::all, Place::liquid, v, Cell::vector, direct});
  }

  for (std::size_t r = 0; r < kLiquidRestrictionCount; ++r) {
    rows.add({Adaptor::pressure_drop, "Vk_fl_SingPDrop_sfun", kLiquidRestrictions[r].path, "ModeNonReturnValve2", {}, 0, Place::restriction, r, {}, idle});
  }
  rows.add({Adaptor::heat_exchanger, "Vk_hexch_NTU_Method_sfun", kRadiator, "NTUMethod1", {}, 0, Place::exchanger, 0, {}, runs});
  return rows;
}

constexpr Rows kRows = build();
static_assert(kRows.count == kRows.row.size());

}  // namespace child_block_rows

inline constexpr auto& kChildBlocks = child_block_rows::kRows.row;
inline constexpr std::size_t kChildBlockCount = kChildBlocks.size();

// ---- Counts --------------------------------------------------------------------------------------------------------

constexpr std::ptrdiff_t count_child_blocks(fluid::Index fluid, int code) {
  return std::ranges::count_if(kChildBlocks, [=](const ChildBlockRow& row) {
    return row.adaptor == Adaptor::properties && row.fluid == fluid && row.code == code;
  });
}
static_assert(count_child_blocks(fluid::N2_IDG, property::enthalpy) == 64);
static_assert(count_child_blocks(fluid::O2_IDG, property::enthalpy) == 33);
static_assert(count_child_blocks(fluid::H2_IDG, property::enthalpy) == 31);
static_assert(count_child_blocks(fluid::Moist_Air, property::Cp) == 22);
static_assert(count_child_blocks(fluid::H2_IDG, property::Cp) == 16);
static_assert(count_child_blocks(fluid::Glycerol_Water, property::all) == 5);
static_assert(count_child_blocks(fluid::Moist_Air, property::Cv) == 2);
static_assert(count_child_blocks(fluid::H2_IDG, property::Cv) == 2);
static_assert(count_child_blocks(fluid::Ethylene_Glycol_Water, property::all) == 1);
static_assert(std::ranges::count(kChildBlocks, Adaptor::properties, &ChildBlockRow::adaptor) == 176);
static_assert(std::ranges::count(kChildBlocks, Adaptor::pressure_drop, &ChildBlockRow::adaptor) == 3);
static_assert(std::ranges::count(kChildBlocks, Adaptor::heat_exchanger, &ChildBlockRow::adaptor) == 1);
static_assert(std::ranges::count_if(kChildBlocks, [](const ChildBlockRow& row) {
  return row.adaptor == Adaptor::properties && row.evaluation == Evaluation::idle;
}) == 78);

/// Number of children that are evaluated for what the row asks: its fluid and code at its place.
constexpr std::ptrdiff_t count_evaluated_like(const ChildBlockRow& row) {
  return std::ranges::count_if(kChildBlocks, [&](const ChildBlockRow& other) {
    const bool is_evaluated = other.evaluation == Evaluation::runs || other.evaluation == Evaluation::direct;
    return is_evaluated && other.place == row.place && other.index == row.index &&
           other.cell == row.cell && other.fluid == row.fluid && other.code == row.code;
  });
}
static_assert(std::ranges::all_of(kChildBlocks, [](const ChildBlockRow& row) {
  return row.evaluation == Evaluation::idle || count_evaluated_like(row) == 1;
}), "each cell is written by one child, and what is shared is evaluated");
