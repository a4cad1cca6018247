#include "model/moist_gas_volume.h"

#include <cstddef>

#include "model/scalar_laws.h"

GasContent volume_content(const VolumeRow& volume, std::array<double, 3> mass_g) {
  if (volume.FixedComposition) {
    const double sum = mass_g[2] + (mass_g[1] + mass_g[0]);
    const auto X0 = start_fractions(volume.gas);
    for (std::size_t i = 0; i < 3; ++i) mass_g[i] = X0[i] * sum;
  }
  const auto M = molar_masses(volume.gas);
  GasContent content;
  for (std::size_t i = 0; i < 3; ++i) {
    content.m[i] = 0.001 * mass_g[i];
    content.n[i] = (1000.0 * content.m[i]) / M[i];
  }
  return content;
}

MoistGasState volume_state(const VolumeRow& volume, const GasContent& content, double T) {
  std::array<double, 3> p;
  if (volume.FixedPressure) {
    const double n = content.moles();
    for (std::size_t i = 0; i < 3; ++i) p[i] = (content.n[i] / n) * volume.P0;
  } else {
    const double a = kGasConstant * T / volume.V;
    for (std::size_t i = 0; i < 3; ++i) p[i] = content.n[i] * a;
  }
  const double mass = content.mass();
  auto X = start_fractions(volume.gas);
  if (!volume.FixedComposition) {
    const double per_mass = 1.0 / floored(mass, 1e-6);  // kg
    for (std::size_t i = 0; i < 3; ++i) X[i] = per_mass * content.m[i];
  }
  return {.P = p[2] + (p[1] + p[0]),
          .p1 = p[0],
          .p2 = p[1],
          .p3 = p[2],
          .T = T,
          .rho = mass / volume.V,
          .X1 = X[0],
          .X2 = X[1],
          .X3 = X[2]};
}

VolumeDerivatives volume_balance(const VolumeRow& volume, const GasContent& content, const MoistGas& gas,
                                 const MoistGasFlow& inflow, double W) {
  const double net = inflow.mdot1 + inflow.mdot2 + W;
  const double mass = content.mass();
  const double R = kGasConstant * (content.moles() / mass);
  const double flow_work = volume.FixedPressure ? 0.0 : 1.0;
  return {.m_mg = {1000.0 * (1000.0 * inflow.mdot1), 1000.0 * (1000.0 * inflow.mdot2), 1000.0 * (1000.0 * W)},
          .T = (((gas.state.T * R * flow_work - gas.h) * net + inflow.Hdot) / mass) / (gas.Cp - R)};
}
