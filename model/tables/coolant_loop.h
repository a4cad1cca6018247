#pragma once

/// The coolant loop as rows: its volumes, and the connections between them in flow direction.

#include <array>
#include <cstddef>

#include "model/tables/catalogue.h"
#include "model/tables/fluids.h"

namespace liquid {
enum Index : std::size_t {
  Water_Inlet_Rad,
  Water_Outlet_Rad,
  Water_Outlet_Stack,
  Water_OutletPump,
  Water_Inlet_Stack,
  CoolantVolume,
  count
};
}  // namespace liquid
inline constexpr std::size_t kLiquidCount = liquid::count;

struct LiquidVolumeRow {
  const char* path;
  fluid::Index fluid;  ///< the stack's own differs from the others', and their enthalpies with it
  double V0;           ///< nominal volume [m3]
  state::Index T, p, V;
};

inline constexpr LiquidVolumeRow kLiquidVolumes[kLiquidCount] = {
    {"Front_End_Underhood2/Water_Inlet_Rad",     fluid::Glycerol_Water,        0.001,  state::Water_Inlet_Rad_T,    state::Water_Inlet_Rad_p,    state::Water_Inlet_Rad_V},
    {"Front_End_Underhood2/Water_Outlet_Rad",    fluid::Glycerol_Water,        0.001,  state::Water_Outlet_Rad_T,   state::Water_Outlet_Rad_p,   state::Water_Outlet_Rad_V},
    {"Front_End_Underhood2/Water_Outlet_Stack",  fluid::Glycerol_Water,        0.0005, state::Water_Outlet_Stack_T, state::Water_Outlet_Stack_p, state::Water_Outlet_Stack_V},
    {"Front_End_Underhood2/Water_OutletPump",    fluid::Glycerol_Water,        0.0005, state::Water_OutletPump_T,   state::Water_OutletPump_p,   state::Water_OutletPump_V},
    {"Front_End_Underhood2/Water_Inlet_Stack",   fluid::Glycerol_Water,        0.0005, state::Water_Inlet_Stack_T,  state::Water_Inlet_Stack_p,  state::Water_Inlet_Stack_V},
    {"MoistGasFuelCell_v2/PAC/CoolantVolume",    fluid::Ethylene_Glycol_Water, 0.0005, state::CoolantVolume_T,      state::CoolantVolume_p,      state::CoolantVolume_V},
};

/// The flows that are imposed on the connections.
namespace coolant_flow {
enum Index : std::size_t { pump, radiator, bypass, count };
}  // namespace coolant_flow

/// A ModeNonReturnValve2: the restrictions of the coolant loop.
struct LiquidRestrictionRow {
  const char* path;
  double dp_nominal;  ///< Pa
  double exponent, gain1, gain2;
};

/// What the singular pressure drop blocks of the restrictions are given, beside the liquid and the pressures.
struct SingularDropRow {
  double A, D;  ///< m2, m
  double ksi, beta, Re_crit, Cq;
};
inline constexpr SingularDropRow kSingularDrop = {1e-4, 0.01, 1.0, 2.0, 2000.0, 0.7};

namespace liquid_restriction {
enum Index : std::size_t { radiator, stack_inlet, stack_outlet, count, none };
}  // namespace liquid_restriction
inline constexpr std::size_t kLiquidRestrictionCount = liquid_restriction::count;

inline constexpr LiquidRestrictionRow kLiquidRestrictions[kLiquidRestrictionCount] = {
    {"Front_End_Underhood2/Radiator/PressureDrop",   100000.0, 2.0, 1.0, 100.0},
    {"MoistGasFuelCell_v2/PAC/PressureDrop",         10000.0,  2.0, 0.3, 9.0},
    {"MoistGasFuelCell_v2/PAC/PressureDrop1",        10000.0,  2.0, 0.3, 9.0},
};

struct CoolantConnection {
  liquid::Index first, second;
  coolant_flow::Index flow;  ///< imposed, positive from the first to the second
  liquid_restriction::Index restriction;
};

inline constexpr CoolantConnection kCoolantConnections[] = {
    {liquid::Water_Outlet_Stack, liquid::Water_OutletPump,   coolant_flow::pump,     liquid_restriction::none},
    {liquid::Water_OutletPump,   liquid::Water_Inlet_Rad,    coolant_flow::radiator, liquid_restriction::none},
    {liquid::Water_Inlet_Rad,    liquid::Water_Outlet_Rad,   coolant_flow::radiator, liquid_restriction::radiator},
    {liquid::Water_Outlet_Rad,   liquid::Water_Inlet_Stack,  coolant_flow::radiator, liquid_restriction::none},
    {liquid::Water_OutletPump,   liquid::Water_Inlet_Stack,  coolant_flow::bypass,   liquid_restriction::none},
    {liquid::Water_Inlet_Stack,  liquid::CoolantVolume,      coolant_flow::pump,     liquid_restriction::stack_inlet},
    {liquid::CoolantVolume,      liquid::Water_Outlet_Stack, coolant_flow::pump,     liquid_restriction::stack_outlet},
};
