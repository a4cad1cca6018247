#include "model/child_blocks.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide_vector.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine_vectors.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG_vectors.h"
#include "model/columns.h"
#include "model/signals.h"
#include "runtime/block_host.h"
#include "runtime/model_store.h"

namespace {

using namespace Vk_fl_prop_lib;

// ---- Parameter arrays: rows, columns, values -----------------------------------------------------------------------

constexpr std::array<double, 3> scalar(double value) { return {1.0, 1.0, value}; }

template <class Vector>
constexpr auto vector_parameter(const Vector& vector) {
  constexpr std::size_t n = sizeof(Vector) / sizeof(double);
  const auto values = std::bit_cast<std::array<double, n>>(vector);
  std::array<double, n + kParameterHead> parameter{static_cast<double>(n), 1.0};
  for (std::size_t i = 0; i < n; ++i) parameter[i + kParameterHead] = values[i];
  return parameter;
}

constexpr auto text_parameter(std::string_view text) {
  std::array<double, 32> parameter{1.0, static_cast<double>(text.size())};
  for (std::size_t i = 0; i < text.size(); ++i) parameter[i + kParameterHead] = text[i];
  return parameter;
}

constexpr auto kN2 = vector_parameter(kN2_IDG);
constexpr auto kO2 = vector_parameter(kO2_IDG);
constexpr auto kH2 = vector_parameter(kH2_IDG);
constexpr auto kAir = vector_parameter(kMoist_Air);
constexpr auto kGlycerol = vector_parameter(kGlycerol_Water);
constexpr auto kGlycol = vector_parameter(kEthylene_Glycol_Water);
constexpr ParameterArray kCoefficients[] = {kN2.data(),  kO2.data(),       kH2.data(),
                                            kAir.data(), kGlycerol.data(), kGlycol.data()};

struct FluidParameters {
  std::array<double, 3> type, concentration;
  std::array<double, 32> name;
};

constexpr auto kFluidParameters = [] {
  std::array<FluidParameters, std::size(kFluids)> result{};
  for (std::size_t i = 0; i < result.size(); ++i) {
    result[i] = {scalar(kFluids[i].type), scalar(kFluids[i].concentration), text_parameter(kFluids[i].name)};
  }
  return result;
}();

constexpr std::array kCodes = {scalar(0), scalar(1), scalar(2), scalar(3), scalar(4), scalar(5), scalar(6)};

constexpr auto kPropertyParameters = [] {
  std::array<std::array<ParameterArray, 5>, kChildBlockCount> result{};
  for (std::size_t i = 0; i < kChildBlockCount; ++i) {
    const ChildBlockRow& row = kChildBlocks[i];
    const FluidParameters& fluid = kFluidParameters[row.fluid];
    const auto& code = kCodes[static_cast<std::size_t>(row.code)];
    result[i] = {fluid.type.data(), fluid.name.data(), kCoefficients[row.fluid], code.data(),
                 fluid.concentration.data()};
  }
  return result;
}();

constexpr auto kMethod = scalar(1.0);  // SingPDrop_ksi_beta
constexpr ParameterArray kPressureDropParameters[] = {kMethod.data()};

constexpr auto kCounterflow = scalar(7.0), kOneShell = scalar(1.0), kUnmixed = scalar(1.0);
constexpr ParameterArray kHeatExchangerParameters[] = {kCounterflow.data(), kOneShell.data(), kUnmixed.data(),
                                                       kUnmixed.data()};

// ---- Paths ---------------------------------------------------------------------------------------------------------

using PathText = std::array<char, 200>;
constexpr auto kPaths = [] {
  std::array<PathText, kChildBlockCount> result{};
  for (std::size_t i = 0; i < kChildBlockCount; ++i) {
    std::size_t length = 0;
    for (const std::string_view part :
         {std::string_view("FuelCellSystem/"), kChildBlocks[i].group, std::string_view("/"), kChildBlocks[i].path}) {
      for (const char c : part) result[i][length++] = c;
    }
  }
  return result;
}();

// ---- Wiring --------------------------------------------------------------------------------------------------------

std::array<ChildBlock, kChildBlockCount> children;
BlockInformation information;

/// Cells that a child reads and writes, in port order.
struct Cells {
  std::array<const double*, kMaxInputs> in{};
  std::array<double*, kMaxPorts> out{};
};

#define GAS_CELL(node, value) COLUMN_CELL(Tessera_B.gas.at, node, value)
#define LIQUID_CELL(volume, value) COLUMN_CELL(Tessera_B.liquid, volume, value)

Cells property_cells(const ChildBlockRow& row) {
  if (row.place == Place::liquid) {
    return {{LIQUID_CELL(row.index, T), LIQUID_CELL(row.index, P)}, {Tessera_B.liquid_vector[row.index].data()}};
  }
  if (row.place == Place::compressed_air) {
    CompressorSignals& compressor = Tessera_B.compressor;
    return {{&compressor.T_enthalpy, GAS_CELL(gas_node::GV01A1, state.P)},
            {row.cell == Cell::h1 ? &compressor.h1 : &compressor.h2}};
  }
  double* const out = row.cell == Cell::h1       ? GAS_CELL(row.index, h1)
                      : row.cell == Cell::h2     ? GAS_CELL(row.index, h2)
                      : row.cell == Cell::Cp_dry ? GAS_CELL(row.index, Cp_dry)
                                                 : &Tessera_B.gas.Cv_dry[row.index];
  return {{GAS_CELL(row.index, state.T), GAS_CELL(row.index, state.P), GAS_CELL(row.index, x)}, {out}};
}

Cells pressure_drop_cells(std::size_t index) {
  const auto* connection = std::ranges::find(kCoolantConnections, index, &CoolantConnection::restriction);
  const auto& [A, D, ksi, beta, Re_crit, Cq] = kSingularDrop;
  const auto& y = Tessera_B.liquid_vector[connection->first];
  LiquidRestrictionSignals& r = Tessera_B.liquid_restriction[index];
  return {{&A, &D, &ksi, &beta, &Re_crit, &Cq, &y[0], &y[7], &y[4], &y[5], LIQUID_CELL(connection->first, T),
           LIQUID_CELL(connection->first, P), LIQUID_CELL(connection->second, P)},
          {&r.Qm, &r.Qv, &r.Re}};
}

Cells heat_exchanger_cells() {
  HeatExchangerSignals& e = Tessera_B.heat_exchanger;
  return {{&e.flow1, &e.Cp1, &e.T1, &e.UA, &e.flow2, &e.Cp2, &e.T2},
          {&e.Q, &e.Qmax, &e.effectiveness, &e.NTU, e.capacity_heat.data()}};
}

void set_up_child_block(std::size_t i) {
  const ChildBlockRow& row = kChildBlocks[i];
  ChildDescription description{.name = row.name, .path = kPaths[i].data()};
  Cells cells;
  switch (row.adaptor) {
    case Adaptor::properties:
      description.registration = Vk_fl_prop_sfun;
      description.parameters = kPropertyParameters[i];
      cells = property_cells(row);
      break;
    case Adaptor::pressure_drop:
      description.registration = Vk_fl_SingPDrop_sfun;
      description.parameters = kPressureDropParameters;
      cells = pressure_drop_cells(row.index);
      break;
    case Adaptor::heat_exchanger:
      description.registration = Vk_hexch_NTU_Method_sfun;
      description.parameters = kHeatExchangerParameters;
      cells = heat_exchanger_cells();
      break;
  }
  description.inputs = cells.in;
  description.outputs = cells.out;
  set_up(children[i], description, information);
}

// ---- Evaluation ----------------------------------------------------------------------------------------------------

constexpr bool runs(const ChildBlockRow& row) { return row.evaluation == Evaluation::runs; }
static_assert(std::ranges::count_if(kChildBlocks, runs) == 1);
constexpr auto kHeatExchanger =
    static_cast<std::size_t>(std::ranges::find_if(kChildBlocks, runs) - kChildBlocks.begin());
static_assert(kChildBlocks[kHeatExchanger].adaptor == Adaptor::heat_exchanger);

}  // namespace

void set_up_child_blocks() {
  information = {&Tessera_M_.errorStatus, &Tessera_M_.stopRequested, Tessera_M_.time.data()};
  for (std::size_t i = 0; i < kChildBlockCount; ++i) set_up_child_block(i);
}

bool start_child_blocks() {
  start(children, information);
  return Tessera_M_.errorStatus == nullptr;
}

void terminate_child_blocks() { terminate(children); }

void run_heat_exchanger_child_block() { run(children[kHeatExchanger]); }
