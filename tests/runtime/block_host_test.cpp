// The block host and its adaptors, with children of the test's own.

#include "runtime/block_host.h"

#include <gmock/gmock.h>

#include <cmath>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide_vector.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine_vectors.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG_vectors.h"
#include "fluids/fluid_test.h"
#include "kernels/pressure_drop.h"

namespace {

using namespace Vk_fl_prop_lib;
using ::testing::Each;
using ::testing::ElementsAre;
using Vector = std::vector<double>;
using Registration = void (*)(ChildBlock*);

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

/// A child with parameters and output cells of its own. By default its input cells follow each other.
struct TestChild {
  TestChild(Registration registration, std::vector<Vector> given, const double* in,
            std::array<std::size_t, kMaxInputs> order = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12})
      : parameters(std::move(given)) {
    for (auto& cells : out) cells.fill(kUntouched);
    for (const Vector& parameter : parameters) pointers.push_back(parameter.data());
    std::vector<const double*> inputs;
    for (const std::size_t i : order) inputs.push_back(in + i);
    double* const ports[] = {out[0].data(), out[1].data(), out[2].data(), out[3].data(), out[4].data()};
    set_up(block, {registration, "a block", "its/path", pointers, inputs, ports}, kInformation);
  }
  TestChild(const TestChild&) = delete;

  std::span<ChildBlock> table() { return {&block, 1}; }

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
            store,
            {7, 2, 5}};
  }

  double store[9] = {0, 0, 2e5, 0, 0, 0.01, 0, 300, 0};  // T, P and humidity lie scattered in it
};

TEST_F(BlockHost, CodesAreCutTowardsZero) {
  const std::pair<double, std::int32_t> cases[] = {
      {2.9, 2},         {-0.9, 0},          {2147483647.9, INT32_MAX},   {2147483648.0, INT32_MIN},
      {NAN, INT32_MIN}, {1e300, INT32_MIN}, {-2147483647.5, -INT32_MAX}, {-2147483648.5, INT32_MIN}};
  for (const auto& [value, code] : cases) EXPECT_EQ(parameter_code(Vector{1, 1, value}.data()), code) << value;
}

TEST_F(BlockHost, PropertyPortsFollowTheFluidType) {
  const struct {
    double type, code;
    int inputs, outputs;
  } cases[] = {{1, 0, 2, 13}, {2, 0, 2, 12}, {3, 0, 2, 12}, {6, 0, 3, 16}, {6.9, -0.9, 3, 16}, {1, 5, 2, 1},
               {6, 99, 3, 1}, {0, 0, 1, 1},  {5, 0, 1, 1},  {7, 2, 1, 1},  {-1, 0, 1, 1},      {NAN, 0, 1, 1}};
  for (const auto& [type, code, inputs, outputs] : cases) {
    const TestChild child = property(type, kAir, code);
    EXPECT_THAT(child.block.input_width, ElementsAre(inputs, 0, 0, 0, 0)) << type << ' ' << code;
    EXPECT_THAT(child.block.output_width, ElementsAre(outputs, 0, 0, 0, 0)) << type << ' ' << code;
  }
}

TEST_F(BlockHost, AFailureLeavesItsOwnOutputsAndTheOthersRun) {
  struct Case {
    TestChild child;
    int written;
    const char* failure;
  } cases[] = {{property(3, kNitrogen, 2), 1, nullptr},
               {property(6, kAir, 5), 1, nullptr},
               {property(3, kNitrogen, 13), 0, "The 2nd parameter must be between 0-12"},
               {property(1, kGlycerol, 0, 50), 13, nullptr},
               {property(4, kGlycerol, 0), 0, "This fluid type has not been implemented!"},
               {property(1, kGlycerol, 5, 30), 1, nullptr},
               {property(6, kAir, -1), 0, "The second parameter must be between 0-16"},
               {property(6, kAir, 0), 16, nullptr}};
  for (Case& c : cases) start(c.child.table(), kInformation);
  const char* shown = nullptr;
  Vector h_N2;
  for (const double T : {300, 340}) {
    store[7] = T;
    const double in[] = {T, store[2], store[5]};
    for (auto& [child, written, failure] : cases) {
      run(child.block);
      if (failure != nullptr) shown = failure;
      EXPECT_STREQ(status, shown);

      const auto& p = child.parameters;
      const Fl_data fluid = {"", static_cast<int>(p[0][2]), p[2].data() + 2, p[4][2]};
      std::array<double, 17> expected;
      expected.fill(kUntouched);
      char message[256];
      EXPECT_EQ(fl_prop_calc(&fluid, in, static_cast<int>(p[3][2]), expected.data(), message), failure != nullptr);
      EXPECT_EQ(child.out[0], expected);
      EXPECT_EQ(17 - std::ranges::count(child.out[0], kUntouched), written);
    }
    h_N2.push_back(cases[0].child.out[0][0]);
  }
  EXPECT_NEAR(h_N2[1] - h_N2[0], (9888 - 8723) / 0.0280134, 120);  // Cengel, Boles: Thermodynamics, table A-18
}

TEST_F(BlockHost, ARecordLivesFromStartToTerminate) {
  TestChild child = property(1, kGlycerol, 5, 50);
  ChildBlock never_set_up{};
  start({&never_set_up, 1}, kInformation);
  for (ChildBlock* never_started : {&child.block, &never_set_up}) {
    run(*never_started);
    terminate({never_started, 1});
  }
  EXPECT_EQ(child.out[0][0], kUntouched);
  EXPECT_EQ(status, nullptr);
  const PropertyRecord& record = child.block.record;
  for (int turn = 0; turn < 2; ++turn) {
    start(child.table(), kInformation);
    EXPECT_TRUE(record.live);
    EXPECT_STREQ(record.fluid.name, "air");
    EXPECT_EQ(record.fluid.coeffs, child.pointers[2] + kParameterHead);
    for (int again = 0; again < 2; ++again) {
      terminate(child.table());
      EXPECT_FALSE(record.live);
      EXPECT_EQ(child.block.work, &record);  // the slot stays
      run(child.block);
    }
  }
}

TEST_F(BlockHost, StartStopsAtTheChildThatFails) {
  const Registration refuses_to_start = [](ChildBlock* child) {
    Vk_fl_prop_sfun(child);
    child->methods.mdlStart = [](ChildBlock* c) { *c->information->error_status = c->path; };
  };
  const Registration registrations[] = {Vk_fl_SingPDrop_sfun, Vk_fl_prop_sfun, refuses_to_start, Vk_fl_prop_sfun};
  const std::vector<ParameterArray> parameters(5, kAir.data());
  std::array<ChildBlock, 4> table;
  for (std::size_t i = 0; i < 4; ++i) {
    set_up(table[i], {registrations[i], "a block", "its/path", {parameters.data(), i == 0 ? 1U : 5U}}, kInformation);
  }
  start(table, kInformation);
  EXPECT_STREQ(status, "its/path");
  EXPECT_TRUE(table[1].record.live);
  EXPECT_EQ(table[3].work, nullptr);
  terminate(table);
  EXPECT_FALSE(table[1].record.live);
}

TEST_F(BlockHost, AChildWithTheWrongNumberOfParametersDoesNothing) {
  const std::pair<Registration, std::size_t> adaptors[] = {
      {Vk_fl_prop_sfun, 5}, {Vk_fl_SingPDrop_sfun, 1}, {Vk_hexch_NTU_Method_sfun, 4}};
  for (const auto& [registration, expected] : adaptors) {
    for (const std::size_t given : {expected - 1, expected + 1}) {
      TestChild child(registration, std::vector(given, Vector{1, 1, 1}), store, {});
      EXPECT_EQ(child.block.expected_parameters, static_cast<int>(expected));
      EXPECT_EQ(child.block.input_ports + child.block.output_ports, 0);
      start(child.table(), kInformation);
      run(child.block);
      terminate(child.table());
      EXPECT_THAT(child.out, Each(Each(kUntouched)));
    }
  }
}

TEST_F(BlockHost, PressureDropByItsMethod) {
  // A, D, ksi, beta, Re_crit, Cq; v, mu, Cp, Cv, T; P1, P2
  const double water[] = {0.01, 0.1, 2, 2, 1000, 0.7, 0.001, 1e-3, 4200, 4100, 300, 2e5, 1.99e5};
  const double gas[] = {1e-4, 0.01, 3, 1.8, 2000, 0.6, 0.85, 2e-5, 1005, 718, 310, 1.9e5, 2e5};
  double Qm, Re;
  Vk_pdrop_lib::SingPDrop_BSV(1.9e5, 2e5, 1e-4, 0.01, 310, 1005, 718, 2e-5, 0.6, 2000, &Qm, &Re);
  const struct {
    double method;
    const double* in;
    double out[3];
  } cases[] = {{1, water, {10, 0.01, 1e5}},  // dP = ksi rho V^2 / 2 at V = 1 m/s
               {2.5, gas, {Qm, Qm * 0.85, Re}},
               {3, water, {}},
               {NAN, gas, {}}};
  for (const auto& c : cases) {
    TestChild child(Vk_fl_SingPDrop_sfun, {{1, 1, c.method}}, c.in);
    EXPECT_THAT(child.block.input_width, ElementsAre(6, 5, 2, 0, 0));
    EXPECT_THAT(child.block.output_width, ElementsAre(1, 1, 1, 0, 0));
    run(child.block);
    for (const std::size_t port : {0U, 1U, 2U}) EXPECT_DOUBLE_EQ(child.out[port][0], c.out[port]) << c.method << port;
  }
}

TEST_F(BlockHost, HeatExchangerByItsFourCodes) {
  const double in[13] = {2, 1000, 350, 2000, 1, 4000, 300};  // C1 = 2000 W/K, C2 = 4000 W/K: Cr = 0.5 and NTU = 1
  const double x = std::exp(-0.5), y = 1 - std::exp(-1.0);
  const double s = std::sqrt(1.25), z = std::exp(-s), shell = 2 / (1.5 + s * (1 + z) / (1 - z));
  const double a = std::pow((1 - 0.5 * shell) / (1 - shell), 3);
  const struct {
    double code[4], effectiveness;
  } cases[] = {{{7, 1, 1, 1}, (1 - x) / (1 - 0.5 * x)},
               {{3, 1, 1, 2}, 2 * (1 - std::exp(-0.5 * y))},  // the larger capacity flow mixed
               {{3, 1, 2, 1}, 1 - std::exp(-2 * (1 - x))},    // the smaller
               {{9, 3, 1, 1}, (a - 1) / (a - 0.5)},
               {{99, 1, 1, 1}, 0}};
  for (const auto& [code, effectiveness] : cases) {
    std::vector<Vector> parameters;
    for (const double c : code) parameters.push_back({1, 1, c + 0.9});
    TestChild child(Vk_hexch_NTU_Method_sfun, parameters, in);
    EXPECT_THAT(child.block.input_width, ElementsAre(3, 1, 3, 0, 0));
    EXPECT_THAT(child.block.output_width, ElementsAre(1, 1, 1, 1, 2));
    run(child.block);
    EXPECT_NEAR(child.out[0][0], effectiveness * 1e5, 1e-9) << code[0] << ' ' << code[2];
    EXPECT_EQ(child.out[1][0], 1e5);
    EXPECT_NEAR(child.out[2][0], effectiveness, 1e-14);
    EXPECT_EQ(child.out[3][0], 1.0);
    EXPECT_THAT(std::span(child.out[4]).first(3), ElementsAre(1e5, 2e5, kUntouched));
  }
}

}  // namespace
