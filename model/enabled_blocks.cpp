#include "model/enabled_blocks.h"

#include <cmath>
#include <limits>

#include "runtime/integrators.h"

namespace {

constexpr double kInverseBoilingT = 0.0026798874447273215;  // 1 / 373.15 K
constexpr double kAnchorP = 100000.0;                       // Pa, at 373.15 K

double integrator(StateSubBlock& block, double& x, double enable, double start, bool major_step) {
  if (major_step) block.active = enable > 0.0;
  if (block.active && block.start) x = start;
  return x;
}

}  // namespace

double SaturationPressureLaw(double T) { return kAnchorP * std::exp(4892.67505926415 * (kInverseBoilingT - 1.0 / T)); }

void Tessera_PsatT_Init(SaturationBlock& block) { block.stage = {0.0, 0.0, 0.0, 0.0, 0.0, kAnchorP}; }

void Tessera_PsatT_Disable(SaturationBlock& block) { block.active = false; }

double Tessera_PsatT(SaturationBlock& block, double enable, double T, bool major_step) {
  if (major_step) block.active = enable > 0.0;
  auto& stage = block.stage;
  if (block.active) {
    stage[0] = T;
    stage[1] = 1.0 / stage[0];
    stage[2] = kInverseBoilingT - stage[1];
    stage[3] = 4892.67505926415 * stage[2];
    stage[4] = std::exp(stage[3]);
    stage[5] = kAnchorP * stage[4];
  }
  return stage[5];
}

void Tessera_TPsat_Init(SaturationBlock& block) { Tessera_PsatT_Init(block); }

void Tessera_TPsat_Disable(SaturationBlock& block) { block.active = false; }

double Tessera_TPsat(SaturationBlock& block, double enable, double P, bool major_step) {
  if (major_step) block.active = enable > 0.0;
  auto& stage = block.stage;
  if (block.active) {
    stage[0] = P / kAnchorP;
    stage[1] = std::log(stage[0]);
    stage[2] = 0.00020438716814159293 * stage[1];
    stage[3] = kInverseBoilingT - stage[2];
    stage[4] = 1.0 / stage[3];
    stage[5] = stage[4];
  }
  return stage[5];
}

double Tessera_dTdt(StateSubBlock& block, double& x, double enable, double start, bool major_step) {
  return integrator(block, x, enable, start, major_step);
}

double Tessera_dPdt(StateSubBlock& block, double& x, double enable, double start, bool major_step) {
  return integrator(block, x, enable, start, major_step);
}

void Tessera_With_purge_Init(PurgeBlock& block) {
  block.W = block.C = 0.0;
  Tessera_PsatT_Init(block.PsatT);
  Tessera_TPsat_Init(block.TPsat);
}

void Tessera_With_purge(PurgeBlock& block, StateSubBlock& sub_block, double& n, double enable, double M, double W_in,
                        double V, double T, double R, double n_start, bool major_step) {
  if (major_step) {
    if (enable > 0.0) {
      sub_block.active = true;
    } else if (sub_block.active) {
      sub_block.active = false;
      Tessera_PsatT_Disable(block.PsatT);
      Tessera_TPsat_Disable(block.TPsat);
      block.W = block.C = 0.0;
    }
  }
  if (!sub_block.active) return;

  if (sub_block.start) n = n_start;
  n = clamped(n, 0.0, std::numeric_limits<double>::infinity());
  const double inflow = (1.0 / M) * (1000.0 * W_in);  // mol/s
  const double Psat = Tessera_PsatT(block.PsatT, 1.0, T, major_step);
  Tessera_TPsat(block.TPsat, 0.0, Psat, major_step);
  const double n_sat = Psat * V / T / R;
  const double to_saturation = 10.0 * (n_sat - n);
  block.dndt = to_saturation > inflow || std::isnan(to_saturation) ? inflow : to_saturation;
  block.W = 0.001 * (block.dndt * M);
  block.C = W_in - block.W;
}
