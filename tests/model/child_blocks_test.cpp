// The plant's child blocks, and what a failing child does to a simulation.

#include "model/child_blocks.h"

#include <cmath>
#include <set>
#include <tuple>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide_vector.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG_vectors.h"
#include "fluids/fluid_test.h"
#include "fmi/shell_fixture.h"
#include "runtime/block_host.h"

namespace {

using namespace Vk_fl_prop_lib;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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

TEST(ChildBlockTable, NoTwoRowsAreTheSameBlock) {
  std::set<std::tuple<std::string_view, std::string_view, std::string_view>> blocks;
  for (const ChildBlockRow& row : kChildBlocks) {
    EXPECT_TRUE(blocks.insert({row.group, row.path, row.name}).second) << row.group << '/' << row.path;
  }
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
    const MoistGas& gas = Tessera_B.gas.at[at_compressor ? gas_node::GV01A1 : row.index];
    const CompressorSignals& compressor = Tessera_B.compressor;
    const double T = at_compressor ? compressor.T_enthalpy : gas.state.T;
    const double cell = row.cell == Cell::h1       ? at_compressor ? compressor.h1 : gas.h1
                        : row.cell == Cell::h2     ? at_compressor ? compressor.h2 : gas.h2
                        : row.cell == Cell::Cp_dry ? gas.Cp_dry
                                                   : gas.Cv_dry;
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

TEST_F(ChildBlocks, AFailureShowsWhenTheInstanceIsFreed) {
  fmi2Component c = start();
  const double codes[][3] = {{1, 1, 2}, {1, 1, 13}, {1, 1, 5}}, type[] = {1, 1, 3}, name[] = {1, 2, 'N', '2'};
  std::array<double, kN2.size() + kParameterHead> vector{kN2.size(), 1};
  std::ranges::copy(kN2, vector.begin() + kParameterHead);
  const MoistGasState& gas = Tessera_B.gas.at[gas_node::cathode].state;
  const double* const inputs[] = {&gas.T, &gas.P};

  const BlockInformation information = {&Tessera_M_.errorStatus, &Tessera_M_.stopRequested, Tessera_M_.time.data()};
  std::array<std::array<ParameterArray, 5>, 3> parameters;
  std::array<double, 3> result = {-77, -77, -77};
  std::array<ChildBlock, 3> table;
  for (std::size_t i = 0; i < table.size(); ++i) {
    parameters[i] = {type, name, vector.data(), codes[i], codes[i]};
    double* const output[] = {&result[i]};
    set_up(table[i], {Vk_fl_prop_sfun, "a block", "its/path", parameters[i], inputs, output}, information);
  }
  ::start(table, information);
  for (int i = 0; i < 3; ++i) {
    for (ChildBlock& block : table) run(block);
    EXPECT_THAT(result,
                ElementsAre(ask(fluid::N2_IDG, 2, gas.T, gas.P, 0), -77, ask(fluid::N2_IDG, 5, gas.T, gas.P, 0)));
    EXPECT_EQ(step(c, 0.001 * i, 0.001), fmi2OK);  // the simulation goes on
  }
  EXPECT_NEAR(Tessera_M_.time[0], 0.004, 1e-15);
  take_log();
  fmi2FreeInstance(c);
  EXPECT_THAT(take_log(), ElementsAre(error("The 2nd parameter must be between 0-12")));
  EXPECT_EQ(fmi2EnterInitializationMode(c), fmi2OK);  // clears it
  fmi2FreeInstance(c);
  EXPECT_THAT(take_log(), IsEmpty());
}

}  // namespace
