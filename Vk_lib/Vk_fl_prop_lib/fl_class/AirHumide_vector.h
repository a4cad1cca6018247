#pragma once

namespace Vk_fl_prop_lib {

/// The 10 values of a moist air vector, in vector order. Only Ma, Mw and hRef reach a result.
struct MoistAirVector {
  double Ma, Mw;            ///< molar masses of dry air and of water [kg/mol]
  double pRefAir, tRefAir;  ///< [Pa], [K]
  double hRef;              ///< enthalpy of dry air at 273.15 K [J/kg]
  double CpAir, CpVap;      ///< [J/(kg K)]
  double satA, satB, satC;  ///< a saturation line
};
static_assert(sizeof(MoistAirVector) == 10 * sizeof(double));

// clang-format off
inline constexpr MoistAirVector kMoist_Air = {
    .Ma = 0.0289645, .Mw = 0.01801528, .pRefAir = 101325, .tRefAir = 273.15, .hRef = 100000,
    .CpAir = 1006, .CpVap = 1826.6, .satA = 7.625, .satB = 241, .satC = 2.7877};
// clang-format on

}  // namespace Vk_fl_prop_lib
