#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "model/enabled_blocks.h"
#include "model/moist_gas_volume.h"

namespace {

using testing::Each;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(GasVolume, StateObeysTheIdealGasLawDaltonAndTheSumOfFractions) {
  constexpr double T = 350;
  for (const VolumeRow& row : kVolumes) {
    const auto M = molar_masses(row.gas);
    const double n = row.P0 * row.V / (8.314 * T);  // mol
    for (const std::array<double, 3>& y : {std::array{1.0, 0.0, 0.0}, {0, 0, 1}, {0.2, 0.7, 0.1}}) {
      const GasContent content = volume_content(row, {n * y[0] * M[0], n * y[1] * M[1], n * y[2] * M[2]});
      const MoistGasState gas = volume_state(row, content, T);
      EXPECT_NEAR(gas.P, row.P0, 1e-12 * row.P0) << row.path;
      EXPECT_NEAR(gas.p1 + gas.p2 + gas.p3, gas.P, 1e-12 * gas.P);
      EXPECT_NEAR(gas.p3, y[2] * gas.P, 1e-12 * gas.P);
      EXPECT_NEAR(gas.X1 + gas.X2 + gas.X3, 1, 1e-14);
      EXPECT_NEAR(gas.X2 * content.mass(), 0.001 * n * y[1] * M[1], 1e-12 * content.mass());
      EXPECT_NEAR(gas.rho * row.V, content.mass(), 1e-12 * content.mass());
    }
    if (row.FixedPressure) continue;
    const auto [P, p1, p2, p3, T_empty, rho, X1, X2, X3] = volume_state(row, volume_content(row, {0, 0, 0}), T);
    EXPECT_THAT((std::array{P, p1, p2, p3, rho, X1, X2, X3}), Each(0.0)) << row.path;
  }
  // Below 1e-6 kg the fractions fade with the mass.
  const VolumeRow& row = kVolumes[gas_node::anode];
  const MoistGasState traces = volume_state(row, volume_content(row, {1e-4, 1e-4, 2e-4}), T);
  EXPECT_NEAR(traces.X1 + traces.X2 + traces.X3, 0.4, 1e-15);
}

TEST(GasVolume, HeldPressureStaysWhateverTheMass) {
  VolumeRow row = kVolumes[gas_node::GV02A1];
  row.FixedPressure = true;
  for (const double scale : {0.1, 30.0}) {
    const MoistGasState gas = volume_state(row, volume_content(row, {scale * 32, scale * 28, scale * 36}), 350);
    EXPECT_NEAR(gas.P, row.P0, 1e-10);
    EXPECT_NEAR(gas.p3, 0.5 * row.P0, 1e-10);
    EXPECT_NEAR(gas.rho, 0.096 * scale / row.V, 1e-12 * gas.rho);
  }
}

TEST(GasVolume, AdiabaticFillingRaisesTheInternalEnergyByTheEnthalpyThatFlowsIn) {
  constexpr double kGamma = 1.4, w = 1e-3, T_in = 300;  // of a perfect gas: m T rises by gamma T_in w
  for (const VolumeRow& row : {kVolumes[gas_node::GV01H1], kVolumes[gas_node::GV01A1]}) {
    const auto X = start_fractions(row.gas), M = molar_masses(row.gas);
    const double Cp = 8314 * (X[0] / M[0] + X[1] / M[1]) * kGamma / (kGamma - 1);
    for (const double m : {2e-3, 5.0}) {  // kg
      const GasContent content = volume_content(row, {1000 * m * X[0], 1000 * m * X[1], 0});
      MoistGas gas{};
      gas.state = volume_state(row, content, 400);
      gas.Cp = Cp, gas.h = Cp * 400;
      const auto d = volume_balance(row, content, gas, {w, w * X[0], w * X[1], 0, w * Cp * T_in}, 0);
      EXPECT_NEAR(d.m_mg[0] + d.m_mg[1], 1e6 * w, 1e-9);
      EXPECT_NEAR(m * d.T + 400 * w, kGamma * T_in * w, 1e-12);
    }
  }
}

TEST(GasVolume, BalanceTakesTheVapourThatStaysAndDropsTheFlowWorkAtHeldPressure) {
  VolumeRow row = kVolumes[gas_node::cathode];
  const GasContent content = volume_content(row, {3.2, 2.8, 1.8});  // 0.1 mol each, 7.8 g
  const double R = 8.314 * 0.3 / 0.0078, h = 4e5, T = 320;
  MoistGas gas{};
  gas.state = volume_state(row, content, T);
  gas.Cp = 1000 + R, gas.h = h;
  const MoistGasFlow inflow{99, 1e-3, 2e-3, 3e-3, 5000};  // the total is not read
  const VolumeDerivatives d = volume_balance(row, content, gas, inflow, 1e-3);
  EXPECT_THAT(d.m_mg, testing::Pointwise(testing::DoubleNear(1e-10), {1000.0, 2000.0, 1000.0}));
  EXPECT_NEAR(d.T, ((T * R - h) * 4e-3 + 5000) / 7.8, 1e-9);
  row.FixedPressure = true;
  EXPECT_NEAR(volume_balance(row, content, gas, inflow, 1e-3).T, (5000 - h * 4e-3) / 7.8, 1e-9);
}

TEST(Saturation, LawMeetsSteamTablesAndItsInverse) {
  for (const auto& [T, P] : {std::pair{333.15, 19946.0}, {353.15, 47414.0}, {373.15, 101420.0}, {393.15, 198670.0}}) {
    SaturationBlock PsatT{}, TPsat{};
    EXPECT_NEAR(SaturationPressureLaw(T), P, 0.04 * P) << T;
    EXPECT_EQ(Tessera_PsatT(PsatT, 1, T, true), SaturationPressureLaw(T));
    EXPECT_NEAR(Tessera_TPsat(TPsat, 1, SaturationPressureLaw(T), true), T, 1e-10 * T);
  }
  EXPECT_NEAR(SaturationPressureLaw(373.15), 100000, 1e-9);
  // Clausius and Clapeyron: R T^2 dlnP/dT is the heat of vaporisation, 2256.5 kJ/kg.
  const double slope = std::log(SaturationPressureLaw(374.15) / SaturationPressureLaw(372.15)) / 2;
  EXPECT_NEAR(8.314 / 0.018 * 373.15 * 373.15 * slope, 2256.5e3, 0.002 * 2256.5e3);
}

TEST(EnabledBlocks, KeepTheirStagesWhileInactiveAndSwitchInMajorStepsOnly) {
  for (const auto law : {Tessera_PsatT, Tessera_TPsat}) {
    SaturationBlock block{};
    (law == Tessera_PsatT ? Tessera_PsatT_Init : Tessera_TPsat_Init)(block);
    EXPECT_EQ(law(block, 1, 350, false), 100000);
    EXPECT_EQ(law(block, 0, 350, true), 100000);
    const double at_350 = law(block, 1, 350, true), at_360 = law(block, 0, 360, false);
    EXPECT_GT(at_360, at_350);
    const auto stages = block.stage;
    for (const double enable : {0.0, -1.0, kNaN}) EXPECT_EQ(law(block, enable, 390, true), at_360) << enable;
    EXPECT_EQ(block.stage, stages);
  }
  for (const auto integrator : {Tessera_dTdt, Tessera_dPdt}) {
    StateSubBlock block{.active = false, .start = true};
    double x = 7;
    EXPECT_EQ(integrator(block, x, 0, 300, true), 7);
    EXPECT_EQ(integrator(block, x, 1, 300, false), 7);
    EXPECT_EQ(integrator(block, x, 1, 300, true), 300);
    block.start = false, x = 310;
    EXPECT_EQ(integrator(block, x, 0, 300, false), 310);
    EXPECT_TRUE(block.active);
    EXPECT_EQ(integrator(block, x, 0, 300, true), 310);
    EXPECT_FALSE(block.active);
  }
}

class Purge : public ::testing::Test {
 protected:
  Purge() { Tessera_With_purge_Init(block); }
  void run(double W_in, double enable = 1, bool major_step = true) {
    Tessera_With_purge(block, sub_block, n, enable, 18, W_in, 0.0055, 350, 8.314, 0.01, major_step);
    sub_block.start = sub_block.start && !sub_block.active;
  }

  const double n_sat = SaturationPressureLaw(350) * 0.0055 / (8.314 * 350);  // mol
  PurgeBlock block{};
  StateSubBlock sub_block{.active = false, .start = true};
  double n = 99;
};

TEST_F(Purge, PassesWhatTheVapourCanTakeAndCondensesTheSurplus) {
  run(0);
  for (const double W_in : {1e-5, 0.0, -5e-6, 1e-3}) {
    // What the vapour takes at most drives it to saturation, at 10 per second of 0.018 kg/mol.
    for (const double missing : {0.05, -0.01, -0.5}) {
      n = n_sat - missing;
      run(W_in);
      EXPECT_NEAR(block.W, std::fmin(W_in, 0.18 * missing), 1e-15);
      EXPECT_NEAR(block.W + block.C, W_in, 1e-17);
      EXPECT_NEAR(0.018 * block.dndt, block.W, 1e-17);
    }
  }
  n = kNaN;
  run(2e-5);
  EXPECT_NEAR(block.W, 2e-5, 1e-19);
  n = -1;
  run(0);
  EXPECT_EQ(n, 0);
}

}  // namespace
