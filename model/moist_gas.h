#pragma once

/// Moist gas: what a volume tells the blocks at its ports (MoistGasState), and what they send into it (MoistGasFlow).
///
/// A moist gas has three species: slot 1 is hydrogen or oxygen (GasKind), slot 2 nitrogen, slot 3 water vapour.

#include <array>

#include "model/tables/gas_network.h"

struct MoistGasState {
  double P;           ///< pressure [Pa]
  double p1, p2, p3;  ///< partial pressures of the slots [Pa]
  double T;           ///< temperature [K]
  double rho;         ///< density [kg/m3]
  double X1, X2, X3;  ///< mass fractions of the slots
};

/// All of it positive into the volume that receives it.
struct MoistGasFlow {
  double mdot;                 ///< total mass flow [kg/s]; the balances use those of the slots
  double mdot1, mdot2, mdot3;  ///< mass flows of the slots [kg/s]
  double Hdot;                 ///< enthalpy flow, and heat [W]
};

constexpr MoistGasFlow operator-(const MoistGasFlow& f) { return {-f.mdot, -f.mdot1, -f.mdot2, -f.mdot3, -f.Hdot}; }
constexpr MoistGasFlow operator+(const MoistGasFlow& f, const MoistGasFlow& g) {
  return {f.mdot + g.mdot, f.mdot1 + g.mdot1, f.mdot2 + g.mdot2, f.mdot3 + g.mdot3, f.Hdot + g.Hdot};
}
constexpr MoistGasFlow operator-(const MoistGasFlow& f, const MoistGasFlow& g) {
  return {f.mdot - g.mdot, f.mdot1 - g.mdot1, f.mdot2 - g.mdot2, f.mdot3 - g.mdot3, f.Hdot - g.Hdot};
}

/// A gas with what the blocks ask of it. Its specific values are those of its own temperature and pressure, so that
/// each is computed at most once an evaluation, however many blocks read it.
struct MoistGas {
  MoistGasState state;
  double x;       ///< humidity ratio [kg/kg]
  double Cp_dry;  ///< specific heat at constant pressure per kg of dry gas [J/(kg K)]
  double h1, h2;  ///< specific enthalpies of slots 1 and 2 [J/kg]
  double Cp;      ///< specific heat at constant pressure of the gas [J/(kg K)]
  double h;       ///< specific enthalpy of the gas [J/kg]
};

inline constexpr double kGasConstant = 8.314;  ///< J/(mol K)

/// Molar masses of the slots [g/mol]; round numbers, unlike those of the property vectors.
constexpr std::array<double, 3> molar_masses(GasKind gas) {
  return gas == GasKind::hydrogen ? std::array{2.0, 28.0, 18.0} : std::array{32.0, 28.0, 18.0};
}

/// Humidity ratio [kg water / kg dry gas], kept finite for pure vapour.
constexpr double humidity_ratio(const MoistGasState& gas) { return gas.X3 / ((gas.X2 + gas.X1) + 1e-6); }

/// Specific enthalpy of water vapour [J/kg] at T [K], a fixed line.
constexpr double vapour_enthalpy_law(double T) { return (T - 273.15) * 2000.0 + 2.25e6; }

/// Specific enthalpy [J/kg] of a gas from those of its slots.
constexpr double mixture_enthalpy(const MoistGasState& gas, double h1, double h2, double h3) {
  return gas.X3 * h3 + (gas.X2 * h2 + gas.X1 * h1);
}

/// Flow of a gas: its fractions and its enthalpy times the mass flow w [kg/s].
constexpr MoistGasFlow flow_of(const MoistGas& gas, double w) {
  return {w, gas.state.X1 * w, gas.state.X2 * w, gas.state.X3 * w, gas.h * w};
}
