// The block host and its adaptors, with children of the test's own.

#include "runtime/block_host.h"

#include <gmock/gmock.h>

#include <cmath>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide_vector.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine_vectors.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG_vectors.h"
#include "fluids/fluid_test.h"
#include "kernels/ntu_method.h"
#include "kernels/pressure_drop.h"

namespace {

using namespace Vk_fl_prop_lib;
using Vector = std::vector<double>;
using Registration = void (*)(ChildBlock*);
using Widths = std::array<std::int32_t, kMaxPorts>;

constexpr double kUntouched = -77.0;
const char* status;
const BlockInformation kInformation = {&status, nullptr, nullptr};

Vector column(const auto& values) {
  Vector parameter = {static_cast<double>(std::size(values)), 1.0};
  parameter.insert(parameter.end(), std::begin(values), std::end(values));
  return parameter;
}
const Vector kAir = column(values(kMoist_Air)), kNitrogen = column(values(kN2_IDG)),
             kGlycerol = column(values(kGlycerol_Water));

/// A child with parameters and output cells of its own.
struct TestChild {
  TestChild(Registration registration, std::vector<Vector> given, const std::vector<const double*>& inputs)
      : parameters(std::move(given)) {
    for (auto& cells : out) cells.fill(kUntouched);
    for (const Vector& parameter : parameters) pointers.push_back(parameter.data());
    double* const ports[] = {out[0].data(), out[1].data(), out[2].data(), out[3].data(), out[4].data()};
    set_up(block, {registration, "a block", "its/path", pointers, inputs, ports}, kInformation);
  }
  TestChild(const TestChild&) = delete;

  std::span<ChildBlock> table() { return {&block, 1}; }

  /// The values of all output cells that were written, in port order.
  Vector written() const {
    Vector result;
    for (const auto& cells : out) std::ranges::remove_copy(cells, std::back_inserter(result), kUntouched);
    return result;
  }

  std::vector<Vector> parameters;
  std::vector<ParameterArray> pointers;
  std::array<std::array<double, 17>, kMaxPorts> out;
  ChildBlock block;
};

struct BlockHost : ::testing::Test {
  BlockHost() { status = nullptr; }

  TestChild property(double type, const Vector& vector, double code, double concentration = 0) {
    return {Vk_fl_prop_sfun,
            {{1, 1, type}, {1, 3, 'a', 'i', 'r'}, vector, {1, 1, code}, {1, 1, concentration}},
            {&T, &P, &w}};
  }

  double T = 300, w = 0.01, P = 2e5;  // in another order than the ports'
};

TEST_F(BlockHost, CodesAreCutTowardsZero) {
  const std::pair<double, std::int32_t> cases[] = {
      {2.9, 2},         {-0.9, 0},          {2147483647.9, INT32_MAX},   {2147483648.0, INT32_MIN},
      {NAN, INT32_MIN}, {1e300, INT32_MIN}, {-2147483647.5, -INT32_MAX}, {-2147483648.5, INT32_MIN}};
  for (const auto& [value, code] : cases) EXPECT_EQ(parameter_code(Vector{1, 1, value}.data()), code) << value;
}

TEST_F(BlockHost, AFailureLeavesItsOwnOutputsAndTheOthersRun) {
  struct Case {
    TestChild child;
    const char* failure;
  } cases[] = {{property(3, kNitrogen, 2), nullptr},
               {property(6, kAir, 5), nullptr},
               {property(3, kNitrogen, 13), "The 2nd parameter must be between 0-12"},
               {property(1, kGlycerol, 0, 50), nullptr},
               {property(4, kGlycerol, 0), "This fluid type has not been implemented!"},
               {property(6, kAir, 0), nullptr}};
  for (Case& c : cases) start(c.child.table(), kInformation);
  const char* shown = nullptr;
  for (const double temperature : {300, 340}) {
    T = temperature;
    for (auto& [child, failure] : cases) {
      run(child.block);
      if (failure != nullptr) shown = failure;
      EXPECT_STREQ(status, shown);

      const auto& p = child.parameters;
      const Fl_data fluid = {"", static_cast<int>(p[0][2]), p[2].data() + 2, p[4][2]};
      std::array<double, 17> expected;
      expected.fill(kUntouched);
      char message[256];
      EXPECT_EQ(fl_prop_calc(&fluid, std::array{T, P, w}.data(), static_cast<int>(p[3][2]), expected.data(), message),
                failure != nullptr);
      EXPECT_EQ(child.out[0], expected);
    }
  }
}

TEST_F(BlockHost, TheOtherAdaptorsBringTheirInputsAndCodesToTheirKernels) {
  // A, D, ksi, beta, Re_crit, Cq; v, mu, Cp, Cv, T; P1, P2
  const Vector water = {0.01, 0.1, 2, 2, 1000, 0.7, 0.001, 1e-3, 4200, 4100, 300, 2e5, 1.99e5};
  const Vector gas = {1e-4, 0.01, 3, 1.8, 2000, 0.6, 0.85, 2e-5, 1005, 718, 310, 1.9e5, 2e5};
  double Qm, Re;
  Vk_pdrop_lib::SingPDrop_BSV(1.9e5, 2e5, 1e-4, 0.01, 310, 1005, 718, 2e-5, 0.6, 2000, &Qm, &Re);
  // Flow, Cp and T of side 1; UA; the same of side 2. Capacity flows of 2000 and 4000 W/K: Cr = 0.5 and NTU = 1.
  const Vector sides = {2, 1000, 350, 2000, 1, 4000, 300};
  const auto heat = [](double effectiveness) { return Vector{effectiveness * 1e5, 1e5, effectiveness, 1, 1e5, 2e5}; };
  using namespace Vk_hexch_lib;
  const struct {
    Registration adaptor;
    Vector codes;
    const Vector& in;
    Vector out;
  } cases[] = {{Vk_fl_SingPDrop_sfun, {1}, water, {10, 0.01, 1e5}},  // dP = ksi rho V^2 / 2 at V = 1 m/s
               {Vk_fl_SingPDrop_sfun, {2.5}, gas, {Qm, Qm * 0.85, Re}},
               {Vk_fl_SingPDrop_sfun, {NAN}, gas, {0, 0, 0}},
               {Vk_hexch_NTU_Method_sfun, {3.9, 1.9, 1.9, 2.9}, sides, heat(NTUcmaxmixed(0.5, 1))},
               {Vk_hexch_NTU_Method_sfun, {3.9, 1.9, 2.9, 1.9}, sides, heat(NTUcmaxunmixed(0.5, 1))},
               {Vk_hexch_NTU_Method_sfun, {9, 3.9, 1, 1}, sides, heat(NTUnshell(0.5, 1, 3, NTUoneshell(0.5, 1)))},
               {Vk_hexch_NTU_Method_sfun, {99, 1, 1, 1}, sides, heat(0)}};
  for (const auto& [adaptor, codes, in, out] : cases) {
    std::vector<Vector> parameters;
    for (const double code : codes) parameters.push_back({1, 1, code});
    std::vector<const double*> inputs;
    for (const double& value : in) inputs.push_back(&value);
    TestChild child(adaptor, parameters, inputs);
    const bool exchanger = adaptor == Vk_hexch_NTU_Method_sfun;
    EXPECT_EQ(child.block.input_width, (exchanger ? Widths{3, 1, 3} : Widths{6, 5, 2}));
    EXPECT_EQ(child.block.output_width, (exchanger ? Widths{1, 1, 1, 1, 2} : Widths{1, 1, 1}));
    run(child.block);
    EXPECT_THAT(child.written(), ::testing::Pointwise(::testing::DoubleEq(), out)) << codes[0];
  }
}

}  // namespace
