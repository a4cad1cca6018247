#pragma once

/// The fluids that the plant asks properties of.

#include <cstddef>
#include <string_view>

namespace fluid {
enum Index : std::size_t { N2_IDG, O2_IDG, H2_IDG, Moist_Air, Glycerol_Water, Ethylene_Glycol_Water };
}  // namespace fluid

struct FluidRow {
  std::string_view name;
  int type;              ///< type code
  double concentration;  ///< of a brine [percent]
};

inline constexpr FluidRow kFluids[] = {
    {"N2_IDG", 3, 0.0},    {"O2_IDG", 3, 0.0},          {"H2_IDG", 3, 0.0},
    {"Moist_Air", 6, 0.0}, {"Glycerol_Water", 1, 50.0}, {"Ethylene_Glycol_Water", 1, 50.0},
};

/// Property codes in use.
namespace property {
inline constexpr int all = 0, enthalpy = 2, Cp = 5, Cv = 6;
}
