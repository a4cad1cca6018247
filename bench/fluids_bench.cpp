// One property call of each family, and what it is measured against.

#include <benchmark/benchmark.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <span>
#include <string>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide_vector.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine_vectors.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG_vectors.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_prop_calc.h"
#include "ratios.h"

namespace {

using namespace Vk_fl_prop_lib;

template <class Vector>
constexpr auto values(const Vector& vector) {
  return std::bit_cast<std::array<double, sizeof(Vector) / sizeof(double)>>(vector);
}

constexpr LiquidVector kOil = {.kappa = 6e-10,
                               .tMin = 200,
                               .tMax = 450,
                               .pRef = 1e5,
                               .tRef = 290,
                               .hRef = 5000,
                               .sRef = 20,
                               .rho = {1000, -0.3, -4e-4, 2e-7, -3e-10, 4e-13},
                               .cp = {1500, 2, -1e-3, 3e-6, -2e-9, 1e-12},
                               .lambda = {0.15, -1e-4, 1e-7, -2e-10, 1e-13, -1e-16},
                               .mu = {2, -0.03, 4e-5, -1e-8, 1e-11, -1e-14}};
constexpr auto kO2 = values(kO2_IDG), kN2 = values(kN2_IDG), kH2 = values(kH2_IDG);
constexpr auto kGlycerol = values(kGlycerol_Water), kGlycol = values(kEthylene_Glycol_Water);
constexpr auto kAir = values(kMoist_Air);
constexpr auto kLiquid = values(kOil);

// Fluids that take turns, as the blocks of a model do.
constexpr Fl_data kGases[] = {{"O2_IDG", 3, kO2.data(), 0}, {"N2_IDG", 3, kN2.data(), 0}, {"H2_IDG", 3, kH2.data(), 0}};
constexpr Fl_data kAirs[] = {{"Moist_Air", 6, kAir.data(), 0}};
constexpr Fl_data kBrines[] = {{"Glycerol_Water", 1, kGlycerol.data(), 50},
                               {"Ethylene_Glycol_Water", 1, kGlycol.data(), 50}};
constexpr Fl_data kLiquids[] = {{"oil", 2, kLiquid.data(), 0}};

/// A call: its fluid and its inputs T, P, w.
struct Call {
  const Fl_data* fluid;
  double in[3];
};
using Calls = std::array<Call, 96>;

/// The fluids in turn, at states that jump; most of the air is unsaturated.
Calls calls(std::span<const Fl_data> fluids) {
  Calls result{};
  for (std::size_t i = 0; i < result.size(); ++i) {
    const double x = static_cast<double>(i * 37 % result.size()) / static_cast<double>(result.size());
    result[i] = {&fluids[i % fluids.size()], {290 + 60 * x, 1e5 + 1e5 * x, 0.02 * x}};
  }
  return result;
}

/// Calls that do not wait for each other, or, chained, each at a temperature that the result before it decides.
template <class Function>
void run(benchmark::State& state, std::span<const Fl_data> fluids, bool chained, Function function) {
  const Calls all = calls(fluids);
  std::array<double, 16> out{};
  for (auto _ : state) {
    for (const Call& call : all) {
      if (chained) {
        const double in[] = {call.in[0] + 1e-12 * out[0], call.in[1], call.in[2]};
        function(*call.fluid, in, out.data());
      } else {
        function(*call.fluid, call.in, out.data());
      }
      benchmark::DoNotOptimize(out);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<benchmark::IterationCount>(all.size()));
}

void front_end(benchmark::State& state, std::span<const Fl_data> fluids, bool chained, int code) {
  run(state, fluids, chained, [code](const Fl_data& fluid, const double* in, double* out) {
    char msg[256];
    if (fl_prop_calc(&fluid, in, code, out, msg)) std::abort();
  });
}

/// The enthalpy of an ideal gas at T by the operations of CIdG::hTP, straight from its vector.
double enthalpy(const double* vector, double T) {
  const double Tr = vector[4], hr = vector[5], *a = vector + 7;
  const double T2 = T * T, T3 = T2 * T, T4 = T3 * T, T5 = T4 * T, T6 = T5 * T;
  const double r2 = Tr * Tr, r3 = r2 * Tr, r4 = r3 * Tr, r5 = r4 * Tr, r6 = r5 * Tr;
  return hr + a[0] * (T - Tr) + a[1] * (T2 - r2) / 2 + a[2] * (T3 - r3) / 3 + a[3] * (T4 - r4) / 4 +
         a[4] * (T5 - r5) / 5 + a[5] * (T6 - r6) / 6;
}

void by_hand(benchmark::State& state, bool chained) {
  run(state, kGases, chained,
      [](const Fl_data& fluid, const double* in, double* out) { *out = enthalpy(fluid.coeffs, in[0]); });
}

void thirty_exp(benchmark::State& state) {
  double x = 0.5;
  for (auto _ : state) {
    for (int i = 0; i < 30; ++i) x = std::exp(-x);
    benchmark::DoNotOptimize(x);
  }
  state.SetItemsProcessed(state.iterations());
}

}  // namespace

Figures add_fluid_benchmarks() {
  const struct {
    const char* name;
    std::span<const Fl_data> fluids;
    int code;
  } families[] = {
      {"ideal gas, enthalpy", kGases, 2}, {"ideal gas, Cp", kGases, 5},    {"ideal gas, Cv", kGases, 6},
      {"ideal gas, all 12", kGases, 0},   {"moist air, Cp", kAirs, 5},     {"moist air, Cv", kAirs, 6},
      {"moist air, all 16", kAirs, 0},    {"brine, enthalpy", kBrines, 2}, {"brine, all 13", kBrines, 0},
      {"liquid, all 12", kLiquids, 0},
  };
  for (const bool chained : {false, true}) {
    const std::string suffix = chained ? ", chained" : "";
    benchmark::RegisterBenchmark(("enthalpy by hand" + suffix).c_str(), by_hand, chained);
    for (const auto& family : families) {
      benchmark::RegisterBenchmark((family.name + suffix).c_str(), front_end, family.fluids, chained, family.code);
    }
  }
  benchmark::RegisterBenchmark("30 exp, chained", thirty_exp);
  return {.ratios = {{"ideal gas, enthalpy", "enthalpy by hand", 2},
                     {"ideal gas, enthalpy, chained", "enthalpy by hand, chained", 2},
                     {"moist air, Cp", "ideal gas, enthalpy", 1},
                     {"moist air, Cp, chained", "ideal gas, enthalpy, chained", 1},
                     {"brine, all 13", "30 exp, chained", 1},
                     {"brine, all 13, chained", "30 exp, chained", 1}},
          .costs = {}};
}
