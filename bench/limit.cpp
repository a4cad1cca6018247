#include "limit.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace {

constexpr std::size_t kVolumes = 14, kHydrogenVolumes = 6, kOrifices = 4, kTables = 28;
using PerVolume = std::array<double, kVolumes>;

constexpr double kMolarMass[3] = {2.0, 28.0, 18.0};
constexpr double kCp[6] = {1.4e4, 1.1, -2.0e-3, 3.0e-6, -2.1e-9, 5.3e-13};
constexpr double kGasR = 8.314, kStep = 1e-9;

double polynomial(double T) {
  const double T2 = T * T, T3 = T2 * T, T4 = T3 * T, T5 = T4 * T;
  return kCp[0] + kCp[1] * T + kCp[2] * T2 + kCp[3] * T3 + kCp[4] * T4 + kCp[5] * T5;
}

/// The integral of the polynomial from 298.15 K: a polynomial and 5 divisions.
double integral(double T) {
  constexpr double r = 298.15, r2 = r * r, r3 = r2 * r, r4 = r3 * r, r5 = r4 * r, r6 = r5 * r;
  const double T2 = T * T, T3 = T2 * T, T4 = T3 * T, T5 = T4 * T, T6 = T5 * T;
  return kCp[0] * (T - r) + kCp[1] * (T2 - r2) / 2 + kCp[2] * (T3 - r3) / 3 + kCp[3] * (T4 - r4) / 4 +
         kCp[4] * (T5 - r5) / 5 + kCp[5] * (T6 - r6) / 6;
}

/// A table search with its interpolation: 2 divisions.
double table(double x) {
  static constexpr double at[] = {0.0, 0.1, 0.3, 0.45, 0.6, 0.8, 0.95, 1.0};
  static constexpr double value[] = {1.0, 1.2, 1.1, 1.5, 1.7, 1.6, 1.9, 2.0};
  std::size_t low = 0, high = std::size(at) - 1;
  while (high - low > 1) {
    const std::size_t middle = (low + high) / 2;
    (at[middle] > x ? high : low) = middle;
  }
  const double slope = (value[high] - value[low]) / (at[high] - at[low]);
  return (value[low] + slope * (x - at[low])) / value[high];
}

}  // namespace

LimitState limit_start() {
  LimitState state{};
  for (std::size_t v = 0; v < kVolumes; ++v) {
    const auto x = static_cast<double>(v);
    state.volume[0][v] = 1e-4 + 1e-6 * x;
    state.volume[1][v] = 1e-3 - 1e-6 * x;
    state.volume[2][v] = 1e-5 + 1e-7 * x;
    state.volume[3][v] = 300.0 + 3.0 * x;
  }
  state.coolant.fill(330.0);
  for (std::size_t i = 0; i < state.electrical.size(); ++i) state.electrical[i] = 0.3 + 0.05 * static_cast<double>(i);
  return state;
}

void limit_evaluation(LimitState& state) {
  auto& [m1, m2, m3, T] = state.volume;

  // Volumes: 8 divisions each, 2 enthalpies each and 4 more, 6 heat capacities. 112 + 160 divisions, 38 polynomials.
  PerVolume n, mass, P, rho, X1, h, cp;
  for (std::size_t v = 0; v < kVolumes; ++v) {
    const double n1 = m1[v] / kMolarMass[0], n2 = m2[v] / kMolarMass[1], n3 = m3[v] / kMolarMass[2];
    n[v] = n1 + n2 + n3;
    mass[v] = m1[v] + m2[v] + m3[v];
    P[v] = n[v] * (kGasR * T[v] / 0.0011) * 1000.0;
    const double per_mass = 1.0 / mass[v];
    X1[v] = per_mass * m1[v];
    rho[v] = mass[v] / 0.0011;
    const double x = m3[v] / (m1[v] + m2[v]);
    h[v] = X1[v] * integral(T[v]) + (1.0 - X1[v]) * integral(T[v] + x);
    cp[v] = (v < kHydrogenVolumes ? polynomial(T[v]) : 1000.0 * (1.0 + 1.8 * x)) / (1.0 + x);
  }
  const double air = integral(T[6] + 1.0) + integral(T[6] + 2.0) + integral(T[7] + 1.0) + integral(T[7] + 2.0);

  // Saturation, ejector, humidifier: 7 exp, 14 divisions, 2 tanh.
  double saturation = 0.0;
  for (std::size_t i = 0; i < 7; ++i) saturation += std::exp(-1.0 / T[i + 7] - n[i] / mass[i] * 1e-3);
  saturation += std::tanh(saturation * 1e-3) + std::tanh(T[8] * 1e-3);

  // Restrictions between neighbours: 20 roots, 8 atan, 8 powers, 32 divisions.
  PerVolume flow{};
  for (std::size_t v = 0; v < kOrifices; ++v) {
    const double ratio = 0.9 + 1e-9 * P[v + 1] / P[v];
    const double drop = 1.0 - std::pow(ratio, 0.2857142857142857);
    flow[v] = std::pow(ratio, 0.7142857142857143) * std::sqrt(P[v] * rho[v] * drop) / 7.0;
  }
  for (std::size_t v = kOrifices; v < 12; ++v) {
    const double dP = std::fabs(P[v] - P[v + 1]);
    const double turbulent = std::sqrt(dP * rho[v]), laminar = std::sqrt(rho[v] / 1000.0) * dP;
    const double share = 0.5 - std::atan((dP - 1000.0) / 150.0) / 3.141592653589793;
    flow[v] = turbulent - (turbulent - laminar) * share;
  }

  // Stack and compressor: 2 powers, 1 root, 3 log, 10 divisions.
  const double j = state.electrical[0] / 200.0, limiting = std::pow(m1[9] / mass[9], 8.0) + 1.0;
  const double losses = std::log(1.0 + j / 0.001) + std::log((1.0 - 0.8 * j / limiting) / (1.0 - j / limiting));
  const double work = std::pow(1.0 + std::fabs(P[6] - P[7]) / P[7], 0.28) * cp[6] / cp[7];
  const double access = std::log(T[9] / T[8]) + std::sqrt(losses * losses + work) / T[9];

  // Coolant: 4 polynomials, 3 exp, 1 log, 12 divisions for each volume. 24, 18, 6, 72.
  double coolant = 0.0;
  for (std::size_t v = 0; v < state.coolant.size(); ++v) {
    const double t = state.coolant[v];
    const double density = polynomial(t), heat = polynomial(t + 1.0), slope = polynomial(t + 2.0);
    const double curvature = polynomial(t + 3.0);
    const double e = std::exp(density * 1e-6) + std::exp(-heat * 1e-6) + std::exp(slope * 1e-6);
    const double v0 = 1.0 / density, k = v0 / heat, alpha = slope / density, beta = curvature / heat;
    const double c1 = k / t, c2 = alpha / (t + e), c3 = c1 / (v0 + 1.0), c4 = (c2 + beta) / e;
    const double rate = (c3 + c4) / (c1 / (beta + 2.0) + alpha / 0.0011) / (e + std::log(t));
    state.coolant[v] = t + kStep * rate;
    coolant += rate;
  }

  // Tables: 56 divisions.
  double tables = 0.0;
  for (std::size_t i = 0; i < kTables; ++i) {
    tables += table(state.electrical[i % state.electrical.size()] + 1e-3 * static_cast<double>(i));
  }

  // Electrical network and heat exchange, 8 branches of one bus: 72 divisions.
  const double voltage = 200.0 + 1e-9 * (losses + access);
  double bus = voltage;
  for (double& x : state.electrical) {
    double current = x;
    for (int i = 0; i < 9; ++i) current = (current + 3.0) / (voltage + current);
    bus += kStep * current;
    x += kStep * (current + 1e-6 * tables);
  }

  // Balances: 3 divisions each, 42.
  const double common = kStep * (air * 1e-9 + saturation + coolant + bus);
  for (std::size_t v = 0; v < kVolumes; ++v) {
    const double in = v == 0 ? 0.0 : flow[v - 1], net = 1e-6 * (in - flow[v]);
    const double gas = kGasR * (n[v] / mass[v]);
    const double rate = ((T[v] * gas - h[v]) * net + h[v] * 1e-9) / mass[v] / (cp[v] - gas);
    m1[v] += kStep * net * 1e-6;
    T[v] += kStep * rate + common;
  }
}

double checksum(const LimitState& state) {
  double sum = 0.0;
  for (const auto& values : state.volume) sum = std::accumulate(values.begin(), values.end(), sum);
  sum = std::accumulate(state.coolant.begin(), state.coolant.end(), sum);
  return std::accumulate(state.electrical.begin(), state.electrical.end(), sum);
}
