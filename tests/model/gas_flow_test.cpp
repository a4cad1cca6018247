#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>
#include <vector>

#include "model/air_compressor.h"
#include "model/ambient_air.h"
#include "model/enabled_blocks.h"
#include "model/gas_restriction.h"
#include "model/humidifier.h"
#include "model/hydrogen_supply.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A gas of which the flow laws read pressure, density, fractions and enthalpy.
MoistGas gas_of(double P, double rho) {
  MoistGas gas{};
  gas.state = {.P = P, .p1 = 0, .p2 = 0, .p3 = 0, .T = 300, .rho = rho, .X1 = 0.2, .X2 = 0.7, .X3 = 0.1};
  gas.h = 3e5;
  return gas;
}

template <std::size_t n>
using Rows = std::initializer_list<std::array<double, n>>;

std::vector<double> fields(const MoistGasFlow& f) { return {f.mdot, f.mdot1, f.mdot2, f.mdot3, f.Hdot}; }

/// Compares field by field; the tolerance is absolute below 1 and relative above.
void expect_near(const MoistGasFlow& f, const MoistGasFlow& g, double tolerance) {
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_NEAR(fields(f)[i], fields(g)[i], tolerance * (1 + std::fabs(fields(g)[i]))) << "field " << i;
  }
}

TEST(Orifice, ChokesAtTheTextbookFluxAndStandsNearVacuum) {
  // Air near 1 bar and 293 K: w sqrt(T) / (A P) = 0.0404 (kg K / J)^0.5.
  const MoistGasState air = gas_of(1e5, 1e5 / (287.0 * 293)).state;
  const double choked = orifice_mass_flow(air, 0, 1, 1);
  EXPECT_NEAR(choked * std::sqrt(293.0) / 1e5, 0.0404, 5e-5);
  EXPECT_NEAR(choked, std::sqrt(1.4 * air.P * air.rho) * std::pow(2 / 2.4, 3), 1e-10 * choked);
  for (const double ratio : {0.1, 0.5, 0.5282817877}) EXPECT_EQ(orifice_mass_flow(air, ratio * 1e5, 1, 1), choked);
  EXPECT_NEAR(orifice_mass_flow(air, 0.5282817878 * 1e5, 1, 1), choked, 1e-12 * choked);  // no step where it chokes
  // Below 1 Pa the pressure ratio is taken to 1 Pa.
  EXPECT_NEAR(orifice_mass_flow(gas_of(0.9, 2).state, 0.8, 1, 1),
              std::sqrt(7 * 0.9 * 2 * (1 - std::pow(0.8, 2 / 7.0))) * std::pow(0.8, 5 / 7.0), 1e-14);
  for (const auto& [opening, share] : Rows<2>{{0.25, 0.25}, {7, 1}, {-0.1, 0}}) {
    EXPECT_NEAR(orifice_mass_flow(air, 0, 1e-6, opening), share * 1e-6 * choked, 1e-20) << opening;
  }
}

TEST(Bernoulli, BlendsTheLinearLawIntoTheRootLaw) {
  constexpr double rho = 1.3, C = 2e-4;
  const auto flux = [](double dP) { return bernoulli_mass_flow(gas_of(1e5 + dP, rho).state, 1e5, C) / C; };
  const auto root = [](double dP) { return std::sqrt(2 * dP * rho); };
  const auto line = [](double dP) { return std::sqrt(rho / 1000) * dP; };
  for (const auto& [dP, share] : Rows<2>{{1 / 4096.0, 0.95}, {1000, 0.5}, {2000, 0.05}}) {
    const double expected = share * line(dP) + (1 - share) * root(dP);
    EXPECT_NEAR(flux(dP), expected, 1e-6 * expected) << dP;
  }
  EXPECT_EQ(flux(0), 0);
  EXPECT_NEAR(flux(1e8), root(1e8), 2e-4 * root(1e8));
  for (double dP = 1; dP < 1e6; dP *= 1.1) EXPECT_LT(flux(dP), flux(1.1 * dP));
}

TEST(Actuator, FollowsItsCommandWithItsTimeConstants) {
  const std::pair<ActuatorRow, double> actuators[] = {
      {kH2_Valve1Actuator, 1 / 30.0}, {kH2_Valve2Actuator, 0.02}, {kMoistGasValveActuator, 1 / 60.0}};
  for (const auto& [actuator, opening] : actuators) {
    const double closing = actuator.position == state::H2_Valve2_position ? 13 / 30.0 : opening;
    for (const double error : {1.0, 0.3, 0.01}) {
      EXPECT_NEAR(actuator_speed(actuator, 0.2 + error, 0.2), error / opening, 1e-13 / opening);
      EXPECT_NEAR(actuator_speed(actuator, 0.2, 0.2 + error), -error / closing, 1e-13 / closing);
    }
    EXPECT_NEAR(actuator_speed(actuator, 3, 0), 1 / opening, 1e-12 / opening);
  }
}

TEST(Reducer, SetpointDroopsWithTheFlowAndStaysBelowTheTank) {
  // clang-format off
  constexpr std::array<double, 3> kSetpoints[] = {  // tank [Pa], flow [g/s], setpoint [bar]
      {7e7, 0, 15.500000000000002}, {7e7, 1, 15}, {7e7, 2, 14.5}, {7e7, -1, 16}, {1.5e7, 1, 13.5}, {5.5e6, 1, 11.5},
      {1e6, 0, 10}, {1e6, 1, 10}, {4e7, 1, 14.5}, {9e7, 1, 15.3}, {-1e6, 2, -31.5}, {1.2e6, kNaN, 12}};
  // clang-format on
  for (const auto& [P_tank, flow, bar] : kSetpoints) EXPECT_NEAR(reducer_setpoint_bar(P_tank, flow), bar, 1e-12);
  // 20 per bar and second as long as the target stays within 0 and 1; 1 kg/s of flow is 1000 g/s.
  for (const auto& [x, P_outlet, w, speed] : Rows<4>{
           {0.3, 15.4e5, 0, 2}, {0.3, 15.55e5, 0, -1}, {0.3, 1e6, 0, 14}, {1, 2e6, 0, -20}, {0.3, 14.9e5, 1e-3, 2}}) {
    EXPECT_NEAR(reducer_speed(x, 7e7, P_outlet, w), speed, 1e-12);
  }
  expect_near(tank_heat_input(gas_of(7e7, 54).state), {0, 0, 0, 0, 131500}, 1e-12);  // 10 kW/K from 300 to 313.15 K
}

TEST(Ejector, EntrainmentStartsAtItsThresholdAndPeaksWhereTheExcessEqualsTheDecay) {
  for (const auto& [Rp, B, alpha] : Rows<3>{{1, 0.0234, 0.000276}, {3, 0.0702, 0.00094}, {5, 0.162, 0.0029}}) {
    for (const double Po : {1e5, 1.6e5}) {
      const double P1 = Rp * Po, threshold = 1.0374 - 0.0312 * Rp;
      const auto E = [&](double excess) { return entrainment_ratio(P1, (threshold + excess) * Po, Po); };
      EXPECT_EQ(E(-1e-9), 0);
      EXPECT_NEAR(E(B), B / (alpha * std::exp(1)), 1e-12 * E(B));
      EXPECT_NEAR(E(B / 2), B / 2 / (alpha * std::exp(0.5)), 1e-12 * E(B));
    }
  }
  // Ratios are taken to at least 1 bar, and the primary's is at least 1.
  EXPECT_EQ(entrainment_ratio(3e5, 1e5, 4e4), entrainment_ratio(3e5, 1e5, 1e5));
  EXPECT_EQ(entrainment_ratio(2e4, 1.1e5, 1e5), entrainment_ratio(1e5, 1.1e5, 1e5));
}

TEST(Ejector, NozzlesNeverReverseAndTheLargerSecondaryFlowWins) {
  constexpr double kPo = 2e5;
  for (const auto& [P, Po, flow] :
       Rows<3>{{6e5, 3e5, 2}, {1e5, 5e4, 1 / 3.0}, {1.25 * kPo, kPo, 2 / 3.0}, {1e5, kPo, 0}}) {
    EXPECT_NEAR(Ejecteur_v1(P, 0, Po).primary, 1e-4 * flow, 1e-15) << P;  // below 2 Po an ellipse, 2 sqrt(Po (P - Po))
    EXPECT_NEAR(Ejecteur_v1(0, P, Po).secondary, 1e-3 * flow, 1e-14) << P;
  }
  // Near its threshold the entrained flow is the larger one, far above it the nozzle's own.
  EXPECT_NEAR(Ejecteur_v1(6e5, 1.95e5, kPo).secondary, 2e-4 * entrainment_ratio(6e5, 1.95e5, kPo), 1e-15);
  EXPECT_NEAR(Ejecteur_v1(6e5, 7e5, kPo).secondary, 1e-2 * 7 / 30, 1e-15);
}

TEST(Compressor, SpeedFlowPowerAndCurrent) {
  for (const auto& [command, free_speed, duty] :
       Rows<3>{{6000, 12000, 0.5}, {15000, 12000, 1}, {0, 12000, 0}, {-5, 12000, 0}, {6000, 0, 0}}) {
    EXPECT_NEAR(compressor_duty(command, free_speed), duty, 1e-15);
  }
  EXPECT_NEAR(compressor_free_speed(30), 15000, 1e-11);
  for (const double duty : {1.0, 3.0}) EXPECT_NEAR(1 - compressor_speed(duty, 15000) / 15000, 1.1e-9, 0.1e-9);

  const MoistGasState inlet = gas_of(1e5, 1.2).state;
  MoistGasState outlet = gas_of(2e5, 2).state;  // fractions 0.2, 0.7, 0.1
  outlet.T = 353.15;
  for (const double P : {0.5e5, 3e5}) {  // 0.95 x 1.2 kg/m3 x 200 1/s x 0.15 l
    EXPECT_NEAR(compressor_mass_flow(inlet, P, 12000), 0.0342, 1e-15);
    EXPECT_EQ(compressor_mass_flow(inlet, P, -12000), 0);
  }
  EXPECT_NEAR(compressor_enthalpy_temperature(inlet, outlet), 433.15, 1e-9);  // 2 x 80 degC
  // Vapour at 80 degC: 2.41e6 J/kg.
  EXPECT_NEAR(compressor_power(outlet, 3e5, 2e5, 3e5, 0.02), 0.02 * (4e4 + 21e4 + 24.1e4 - 3e5) / 0.95, 1e-8);
  EXPECT_EQ(compressor_power(outlet, 6e5, 2e5, 3e5, 0.02), 0);
  EXPECT_NEAR(compressor_current(200, 1000), 5, 1e-12);
  EXPECT_EQ(compressor_current(0, 1000), 0);
}

TEST(Compressor, RiseIsNineTenthsOfTheIsentropicOne) {
  for (const double ratio : {2.0, 1.0, 0.5}) {
    MoistGas inlet = gas_of(1e5, 1.2), outlet = gas_of(ratio * 1e5, 2);
    inlet.Cp = 1000, outlet.Cp = 1009;  // mean values 1004.5 and 717.5: k = 1.4
    const double w = 0.02, rise = 0.9 * 1004.5 * 300 * (std::pow(ratio, 2 / 7.0) - 1);
    expect_near(compressor_outflow(inlet, outlet, 710, 725, w), {w, 0.2 * w, 0.7 * w, 0.1 * w, w * (3e5 + rise)},
                1e-12);
  }
}

/// Humid air at 1 bar of the humidity ratio x, its relative humidity as given.
MoistGas humid_air(double T, double x, double RH) {
  MoistGas gas = gas_of(1e5, 1.1);
  gas.state.T = T, gas.state.p3 = RH * SaturationPressureLaw(T);
  gas.x = x, gas.Cp = (1006 + 1860 * x) / (1 + x);
  return gas;
}

MoistGasFlow air_flow(double dry, double vapour) { return {dry + vapour, 0.23 * dry, 0.77 * dry, vapour, 1e5 * dry}; }

HumidifierExchange exchange(const MoistGas& S1, const MoistGas& S2, const MoistGasFlow& F1, const MoistGasFlow& F2) {
  return VapEchange1234(S1, S2, F1, F2, SaturationPressureLaw(S1.state.T), SaturationPressureLaw(S2.state.T));
}

TEST(Humidifier, ConservesSpeciesAndEnthalpyAndTreatsItsSidesAlike) {
  const MoistGas cold_dry = humid_air(320, 0.01, 0.1), cold_wet = humid_air(330, 0.1, 0.9),
                 hot_dry = humid_air(350, 0.02, 0.05), hot_wet = humid_air(345, 0.2, 0.8);
  const auto h_vapour = [](const MoistGas& gas) { return (gas.state.T - 273.15) * 2000 + 2.25e6; };
  for (const auto& [S1, S2] : {std::pair{cold_dry, hot_wet}, {hot_dry, cold_wet}, {hot_wet, cold_dry}}) {
    for (const auto& [dry1, dry2, vapour2] : Rows<3>{{0.02, 0.03, 0.002}, {0.03, 0.01, 0}, {-0.02, -0.01, -0.003}}) {
      const MoistGasFlow F1 = air_flow(dry1, 0.1 * dry1), F2 = air_flow(dry2, vapour2);
      const auto [E1, E2] = exchange(S1, S2, F1, F2);
      const MoistGas &wet = S2.x > S1.x ? S2 : S1, &dry = S2.x > S1.x ? S1 : S2;
      const double w = vapour_exchange(wet.x, dry.x, std::fabs(dry1), std::fabs(dry2)) * (S2.x > S1.x ? 1 : -1);
      const double Q = heat_exchange(S2.state.T, S1.state.T, S2.Cp * F2.mdot, S1.Cp * F1.mdot);
      expect_near(E1, {w, 0, 0, w, w * h_vapour(wet) + Q}, 1e-12);
      expect_near(E1, -exchange(S2, S1, F2, F1).E1, 1e-13);

      const double drained = 0.4 * vapour2, lost = 0.1 * (S2.state.T - 313.15) * S2.Cp * F2.mdot;
      expect_near(E1 + E2, {-drained, 0, 0, -drained, -drained * h_vapour(S2) - lost}, 1e-12);
    }
  }
}

TEST(Humidifier, LimitsOfTheExchangeLaws) {
  const double e = 1 - std::exp(-1);  // at one transfer unit
  for (const auto& [x_wet, x_dry, G_dry, flow] :
       Rows<4>{{0.3, 0.1, 0, 1e-6 * 0.2}, {9, 1, 0, 1e-6 * 3}, {0.1, 0.3, 1, 0}, {0.3, 0.1, 0.004, 0.004 * 0.2 * e}}) {
    EXPECT_NEAR(vapour_exchange(x_wet, x_dry, 1, G_dry), flow, 1e-15) << G_dry;
    EXPECT_NEAR(vapour_exchange(x_wet, x_dry, G_dry, 1), flow, 1e-15) << G_dry;
  }
  EXPECT_NEAR(vapour_exchange(0.3, 0.1, 0.004, kNaN), 0.004 * 0.2 * e, 1e-15);
  // All that the small flow can take, one transfer unit of 5 W/K, all that the conductance lets through.
  for (const auto& [C_hot, C_cold, Q] :
       Rows<3>{{0.01, 20, 0.5}, {7, 5, 250 * e}, {5, 7, 250 * e}, {1e7, 2e7, 250}, {9, 0, 0}, {9, -5, 0}}) {
    EXPECT_NEAR(heat_exchange(350, 300, C_hot, C_cold), Q, 1e-4) << C_hot << ' ' << C_cold;
  }
}

TEST(Humidifier, RelativeHumidityDecidesTheDirectionAndTheRatioDrives) {
  const MoistGasFlow F = air_flow(0.02, 0);
  const auto vapour = [&](const MoistGas& S1, const MoistGas& S2) { return exchange(S1, S2, F, F).E1.mdot3; };
  const MoistGas cool = humid_air(310, 0.03, 0.7), warm = humid_air(350, 0.2, 0.3), as_cool = humid_air(350, 0.3, 0.7);
  EXPECT_EQ(vapour(cool, warm), 0);  // they disagree
  EXPECT_EQ(vapour(warm, cool), 0);
  ASSERT_EQ(cool.state.p3 / SaturationPressureLaw(310), as_cool.state.p3 / SaturationPressureLaw(350));
  EXPECT_LT(vapour(as_cool, cool), 0);  // a tie counts side 1 as the wet one
  EXPECT_EQ(vapour(cool, as_cool), 0);
}

TEST(AmbientAir, IsAnIdealMixtureOfNormalisedFractions) {
  const double T = 288.15, P = 101325, Psat = SaturationPressureLaw(T);
  for (const auto& [RH, held] : Rows<2>{{-20, 0}, {40, 0.4}, {130, 1}}) {
    const MoistGasState air = ambient_air(T, P, RH, Psat).state;
    EXPECT_NEAR(air.X1 + air.X2 + air.X3, 1, 1e-15);
    EXPECT_NEAR(air.X1, 0.23, 1e-15);
    EXPECT_NEAR(air.p1 + air.p2 + air.p3, P, 1e-10);
    EXPECT_NEAR(air.rho, 0.001 * (32 * air.p1 + 28 * air.p2 + 18 * air.p3) / (8.314 * T), 1e-14);
    EXPECT_NEAR(air.X3, 18 / 27.8 * held * Psat / P, 1e-15) << RH;  // a fixed factor of 18 / 27.8
  }
  // Standard atmosphere, 1.225 kg/m3 at 28.964 g/mol; the slots' round numbers give 28.829 g/mol.
  EXPECT_NEAR(ambient_air(T, P, 0, Psat).state.rho, 1.225 * 28.829 / 28.964, 2e-4);
  EXPECT_EQ(ambient_air(T, 0, 50, Psat).state.X3, 0);
  EXPECT_DOUBLE_EQ(ambient_air(T, P, kNaN, Psat).state.X3, 1 / 3.0);
  // Behind the radiator the density is that at 100000 Pa and 313.15 K, whatever the surroundings have.
  const auto mass_g = radiator_air_masses(ambient_air(260, 8e4, 0, 100), 0.001);
  EXPECT_NEAR(mass_g[0] / 32 + mass_g[1] / 28 + mass_g[2] / 18, 1e5 * 0.001 / (8.314 * 313.15), 1e-14);
  EXPECT_NEAR(mass_g[1] / mass_g[0], 77 / 23.0, 1e-14);
}

}  // namespace
