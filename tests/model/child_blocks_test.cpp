// The plant's child blocks, and what a failing child does to a simulation.

#include "model/child_blocks.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <numeric>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide_vector.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG_vectors.h"
#include "fluids/fluid_test.h"
#include "fmi/shell_fixture.h"
#include "model/columns.h"
#include "runtime/block_host.h"

namespace {

using namespace Vk_fl_prop_lib;
using ::testing::ElementsAre;

using ChildBlocks = Shell;

const auto kN2 = values(kN2_IDG), kO2 = values(kO2_IDG), kH2 = values(kH2_IDG);
const auto kAir = values(kMoist_Air);
const struct {
  Fl_data data;
  double Cp, Cv;  // near 320 K, of the dry gas [J/(kg K)]
} kGases[] = {{{"N2_IDG", 3, kN2.data(), 0}, 1040, 743},
              {{"O2_IDG", 3, kO2.data(), 0}, 922, 662},
              {{"H2_IDG", 3, kH2.data(), 0}, 14360, 10236},
              {{"Moist_Air", 6, kAir.data(), 0}, 1007, 720}};

double ask(fluid::Index fluid, int code, double T, double P, double x) {
  const double in[] = {T, P, x};
  double out = NAN;
  char message[256];
  EXPECT_FALSE(fl_prop_calc(&kGases[fluid].data, in, code, &out, message)) << message;
  return out;
}

TEST_F(ChildBlocks, EveryGasBlockIsAnsweredAtItsOwnPlace) {
  start();
  // Temperatures [K] apart from each other, and vapour [mg].
  for (std::size_t v = 0; v < kVolumeCount; ++v) Tessera_X[kVolumes[v].T] = 300.0 + 3.0 * static_cast<double>(v);
  for (const state::Index vapour : {state::cathode_m3, state::GV03A_m3}) Tessera_X[vapour] = 30;
  Tessera_step();
  ASSERT_GT(Tessera_B.gas.at[gas_node::GV03A].x, 0.001);

  int answered = 0;
  for (const ChildBlockRow& row : kChildBlocks) {
    const bool at_compressor = row.place == Place::compressed_air;
    if (row.evaluation == Evaluation::idle || (row.place != Place::gas && !at_compressor)) continue;
    const MoistGas gas = Tessera_B.gas.at[at_compressor ? gas_node::GV01A1 : row.index];
    const CompressorSignals& compressor = Tessera_B.compressor;
    const double T = at_compressor ? compressor.T_enthalpy : gas.state.T;
    const double cell = row.cell == Cell::h1       ? at_compressor ? compressor.h1 : gas.h1
                        : row.cell == Cell::h2     ? at_compressor ? compressor.h2 : gas.h2
                        : row.cell == Cell::Cp_dry ? gas.Cp_dry
                                                   : Tessera_B.gas.Cv_dry[row.index];
    EXPECT_EQ(cell, ask(row.fluid, row.code, T, gas.state.P, gas.x)) << row.group << '/' << row.path;
    // Enthalpies are 1e5 J/kg at 273.15 K; vapour adds its own heat capacity to the dry air's.
    const auto& [data, Cp, Cv] = kGases[row.fluid];
    const double vapour = row.fluid == fluid::Moist_Air ? gas.x : 0.0;
    const double expected = row.code == property::enthalpy ? 1e5 + Cp * (T - 273.15)
                            : row.code == property::Cp     ? Cp + 1870 * vapour
                                                           : Cv + 1410 * vapour;
    EXPECT_NEAR(cell, expected, 0.02 * expected) << row.group << '/' << row.path;
    ++answered;
  }
  EXPECT_EQ(answered, 98 - 6);  // all property blocks in use but the coolant's
}

TEST(Columns, ARowComesBackAndItsCellsAreWhereChildrenReadAndWrite) {
  std::array<double, sizeof(MoistGas) / sizeof(double)> numbers;
  std::iota(numbers.begin(), numbers.end(), 1.0);
  const auto gas = std::bit_cast<MoistGas>(numbers);
  Columns<MoistGas, 3> gases{};
  gases.set(1, gas);
  EXPECT_EQ(std::bit_cast<decltype(numbers)>(gases[1]), numbers);
  for (const std::size_t other : {0U, 2U})
    EXPECT_EQ(std::bit_cast<decltype(numbers)>(gases[other]), decltype(numbers){});
  *COLUMN_CELL(gases, 2, h1) = 7.0;
  EXPECT_EQ(gases[2].h1, 7.0);
  EXPECT_EQ(*COLUMN_CELL(gases, 1, state.P), gas.state.P);
  EXPECT_EQ(*COLUMN_CELL(gases, 1, state.T), gas.state.T);
  EXPECT_EQ(*COLUMN_CELL(gases, 1, x), gas.x);
  gases.set(1, MoistGasState{});
  EXPECT_EQ(gases[1].state.T, 0.0);
  EXPECT_EQ(gases[1].h, gas.h);
}

TEST_F(ChildBlocks, AmbientAirFollowsEachOfItsConditions) {
  start();
  constexpr AmbientConditions kScenario = {313.15, 1e5, 30};
  for (const auto& [T, P, RH] : {kScenario, {290, 1e5, 30}, {290, 8e4, 30}, {290, 8e4, 90}, kScenario}) {
    Tessera_X[state::ambient_temperature] = T;
    Tessera_X[state::ambient_pressure] = P;
    Tessera_X[state::ambient_humidity] = RH;
    Tessera_step();  // in which they move a little towards the scenario's
    const MoistGas air = Tessera_B.gas.at[gas_node::ambient];
    EXPECT_NEAR(air.state.T, T, 0.05);
    EXPECT_NEAR(air.state.P, P, 50);
    // The law of the humidity takes air for 27.8 g/mol, that of the pressures for 28.83 when dry.
    EXPECT_NEAR(air.state.p3, 28.83 / 27.8 * 0.01 * RH * SaturationPressureLaw(T), 0.01 * air.state.p3);
    EXPECT_EQ(Tessera_B.gas.Cv_dry[gas_node::ambient],
              ask(fluid::Moist_Air, property::Cv, air.state.T, air.state.P, air.x));
  }
}

TEST_F(ChildBlocks, AFailureShowsWhenTheInstanceIsFreed) {
  fmi2Component c = start();
  const MoistGasState gas = Tessera_B.gas.at[gas_node::cathode].state;
  const double type[] = {1, 1, 3}, name[] = {1, 2, 'N', '2'}, vector[27] = {25, 1}, code[] = {1, 1, 13};
  const ParameterArray parameters[] = {type, name, vector, code, code};
  const double* const inputs[] = {&gas.T, &gas.P};
  double result = -77;
  double* const output[] = {&result};
  const BlockInformation information = {&Tessera_M_.errorStatus, &Tessera_M_.stopRequested, Tessera_M_.time.data()};
  ChildBlock block;
  set_up(block, {Vk_fl_prop_sfun, "a block", "its/path", parameters, inputs, output}, information);
  ::start({&block, 1}, information);
  run(block);
  EXPECT_EQ(result, -77);
  EXPECT_EQ(step(c, 0, 0.001), fmi2OK);  // the simulation goes on
  take_log();
  fmi2FreeInstance(c);
  EXPECT_THAT(take_log(), ElementsAre(error("The 2nd parameter must be between 0-12")));
}

}  // namespace
