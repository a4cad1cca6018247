#pragma once

/// ModeNonReturnValve2, a restriction of the coolant loop: flow laws and a selector between them. In this plant the
/// selector passes the imposed flow, whatever the laws say beside it.

#include "model/liquid_volume.h"

struct LiquidRestrictionFlow {
  double mdot;  ///< mass flow [kg/s]
  double Qv;    ///< volume flow [m3/s]
};

/// How the flow of a restriction is chosen.
enum class FlowSelector {
  imposed,    ///< the imposed flow
  quadratic,  ///< the flow of Tessera_aQB, but the forced flow against a negative pressure difference
};

/// @param imposed    kg/s
/// @param quadratic  flow of Tessera_aQB [kg/s]
/// @param dp         pressure difference [Pa]
/// @param v          specific volume of the upstream liquid [m3/kg]
LiquidRestrictionFlow ModeNonReturnValve2(FlowSelector selector, double imposed, double quadratic, double dp, double v);

/// Sign of a pressure difference with a hysteresis: plus from the band upwards, minus from its negative downwards, as
/// it was in between.
double sign_with_hysteresis(double difference, double band, double before);

/// Work of a flow law with an enable input, see model/enabled_blocks.h.
struct FlowLawBlock {
  LiquidRestrictionFlow flow;
  double sign;  ///< of the pressure difference
  bool active;
};

void Tessera_aQB_Init(FlowLawBlock& block);
void Tessera_aQB_Disable(FlowLawBlock& block);
/// Flow by a power of the pressure difference, linear near zero: min(gain1 r^(1/exponent), gain2 r) for r = |dp| over
/// the nominal difference, with the sign of the block.
LiquidRestrictionFlow Tessera_aQB(FlowLawBlock& block, double enable, const LiquidRestrictionRow& row, double dp,
                                  double v, bool major_step);

/// Constants of Tessera_DTAQfCv.
struct FlowCoefficient {
  double Cv, G;          ///< flow coefficient, specific gravity
  double d, k1, k2, k3;  ///< density ratio of a liquid, unit factors
};
inline constexpr FlowCoefficient kFlowCoefficient = {
    5.069444444444444e-05, 0.06960556844547564, 0.09, 395.0, 197.5, 862.0};

void Tessera_DTAQfCv_Init(FlowLawBlock& block);
void Tessera_DTAQfCv_Disable(FlowLawBlock& block);
/// Flow by a valve coefficient between two ports, for a gas (gas_flag >= 0.5) or a liquid. The gas test stands the
/// other way round than in the literature, on purpose. No block of the plant enables it.
/// @param P1, P2  pressures [Pa]
/// @param T1, T2  temperatures [K]; that of the upstream port counts
double Tessera_DTAQfCv(FlowLawBlock& block, double enable, double gas_flag, double P1, double T1, double P2, double T2,
                       const FlowCoefficient& coefficient, bool major_step);
