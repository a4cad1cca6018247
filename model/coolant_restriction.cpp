#include "model/coolant_restriction.h"

#include <cmath>

#include "kernels/math_kernels.h"
#include "model/scalar_laws.h"
#include "runtime/nonfinite.h"

namespace {

constexpr double kSignBand = 1.0;     // Pa
constexpr double kSignBandBar = 1.0;  // bar

double signed_root(double x) { return Vk_math_lib::signed_sqrt_smooth(x, 0.0); }

}  // namespace

LiquidRestrictionFlow ModeNonReturnValve2(FlowSelector selector, double imposed, double quadratic, double dp,
                                          double v) {
  constexpr double kForcedFlow = 1e-05;  // kg/s
  const double mdot = selector == FlowSelector::imposed ? imposed : dp < 0.0 ? kForcedFlow : quadratic;
  return {mdot, mdot * v};
}

double sign_with_hysteresis(double difference, double band, double before) {
  return difference >= band ? 1.0 : difference <= -band ? -1.0 : before;
}

void Tessera_aQB_Init(FlowLawBlock& block) { block.flow = {}; }

void Tessera_aQB_Disable(FlowLawBlock& block) { block.active = false; }

LiquidRestrictionFlow Tessera_aQB(FlowLawBlock& block, double enable, const LiquidRestrictionRow& row, double dp,
                                  double v, bool major_step) {
  if (major_step) {
    block.active = enable > 0.0;
    block.sign = sign_with_hysteresis(dp, kSignBand, block.sign);
  }
  if (block.active) {
    const double r = std::fabs(dp) / row.dp_nominal;
    const double root = rt_powd_snf(r, 1.0 / row.exponent);
    const double q = smaller(row.gain1 * root, row.gain2 * r) * block.sign;
    block.flow = {q, v * q};
  }
  return block.flow;
}

void Tessera_DTAQfCv_Init(FlowLawBlock& block) { block.flow = {}; }

void Tessera_DTAQfCv_Disable(FlowLawBlock& block) { block.active = false; }

double Tessera_DTAQfCv(FlowLawBlock& block, double enable, double gas_flag, double P1, double T1, double P2, double T2,
                       const FlowCoefficient& coefficient, bool major_step) {
  const auto& [Cv, G, d, k1, k2, k3] = coefficient;
  if (major_step) block.active = enable > 0.0;
  if (block.active) {
    const double p1 = 1e-5 * P1, p2 = 1e-5 * P2;  // bar
    const double difference = std::fabs(p1 - p2);
    if (major_step) block.sign = sign_with_hysteresis(p1 - p2, kSignBandBar, block.sign);
    const double T = block.sign > 0.0 ? T1 : T2;
    if (gas_flag >= 0.5) {
      const double p_max = larger(p1, p2), p_min = smaller(p1, p2);
      block.flow.Qv = difference >= 0.5 * p_max ? Cv * signed_root(p_min * difference / (T * G)) * k1
                                                : (1.0 / signed_root(G * T)) * Cv * k2 * p_max;
    } else {
      block.flow.Qv = Cv * signed_root(difference / d) * k3;
    }
  }
  return block.flow.Qv;
}
