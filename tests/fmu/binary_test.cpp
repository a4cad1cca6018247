// The unit as an importer gets it: the shared library, through its exported functions.

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <numeric>
#include <vector>

#include "fmu/unit_library.h"
#include "model/tables/catalogue.h"

#if defined(__SANITIZE_ADDRESS__) || !defined(__GLIBC__)
#define TESSERA_COUNTS_ALLOCATIONS 0
#elif defined(__has_feature)
#define TESSERA_COUNTS_ALLOCATIONS !__has_feature(address_sanitizer)
#else
#define TESSERA_COUNTS_ALLOCATIONS 1
#endif

namespace {

#if TESSERA_COUNTS_ALLOCATIONS
long allocations = 0;
#endif

constexpr const char* kGuid = "{3b1e7a52-6c0d-4f19-a8e4-2d90c7f1b663}";

void discard(fmi2ComponentEnvironment, fmi2String, fmi2Status status, fmi2String, fmi2String message, ...) {
  EXPECT_EQ(status, fmi2OK) << message;
}

using Outputs = std::array<double, kOutputCount>;

class Binary : public ::testing::Test {
 protected:
  Binary() {
    c = unit.fmi2Instantiate("test", fmi2CoSimulation, kGuid, nullptr, &functions, fmi2False, fmi2False);
    std::iota(references.begin(), references.end(), 0U);
  }
  ~Binary() override { unit.fmi2FreeInstance(c); }

  void initialize() {
    const fmi2ValueReference vr = kFirstParameter + input::road_slope, gate = input::road_slope;
    const double slope = 2.5;
    const fmi2Boolean open = fmi2True;
    EXPECT_EQ(unit.fmi2SetReal(c, &vr, 1, &slope), fmi2OK);
    EXPECT_EQ(unit.fmi2SetBoolean(c, &gate, 1, &open), fmi2OK);
    EXPECT_EQ(unit.fmi2SetupExperiment(c, fmi2False, 0, 0, fmi2False, 0), fmi2OK);
    EXPECT_EQ(unit.fmi2EnterInitializationMode(c), fmi2OK);
    EXPECT_EQ(unit.fmi2ExitInitializationMode(c), fmi2OK);
  }

  Outputs outputs() {
    Outputs y{};
    EXPECT_EQ(unit.fmi2GetReal(c, references.data(), y.size(), y.data()), fmi2OK);
    return y;
  }

  /// Outputs at each whole second of a run of its own, by communication steps of so many milliseconds.
  std::vector<Outputs> run(int seconds, int step_ms) {
    initialize();
    std::vector<Outputs> rows{outputs()};
    for (int ms = 0; ms < 1000 * seconds; ms += step_ms) {
      EXPECT_EQ(unit.fmi2DoStep(c, ms / 1000.0, step_ms / 1000.0, fmi2True), fmi2OK);
      if ((ms + step_ms) % 1000 == 0) rows.push_back(outputs());
    }
    EXPECT_EQ(unit.fmi2Reset(c), fmi2OK);
    return rows;
  }

  UnitLibrary unit = load_unit(TESSERA_BINARY);
  fmi2CallbackFunctions functions = {discard, nullptr, nullptr, nullptr, nullptr};
  fmi2Component c = nullptr;
  std::array<fmi2ValueReference, kOutputCount> references{};
};

TEST_F(Binary, OutputsDoNotDependOnTheCommunicationStepNorOnTheRun) {
  const std::vector<Outputs> rows = run(20, 1);
  EXPECT_EQ(run(20, 10), rows);
  EXPECT_EQ(run(20, 1000), rows);
  EXPECT_EQ(run(20, 1), rows);
  EXPECT_NE(rows.front(), rows.back());
}

#if TESSERA_COUNTS_ALLOCATIONS
TEST_F(Binary, AStepAllocatesNothing) {
  const long at_start = allocations;
  fmi2Component another = unit.fmi2Instantiate("another", fmi2CoSimulation, kGuid, nullptr, &functions, 0, 0);
  EXPECT_GT(allocations, at_start);  // the guard sees into the library
  unit.fmi2FreeInstance(another);
  initialize();
  Outputs y{};
  const long before = allocations;
  for (int ms = 0; ms < 100'000; ++ms) {
    unit.fmi2DoStep(c, ms / 1000.0, 0.001, fmi2True);
    unit.fmi2GetReal(c, references.data(), y.size(), y.data());
  }
  EXPECT_EQ(allocations, before);
}
#endif

}  // namespace

#if TESSERA_COUNTS_ALLOCATIONS
// The C library's own entry points stand behind the counted ones, which the unit's library reaches too.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) {
  ++allocations;
  return __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
  ++allocations;
  return __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) {
  ++allocations;
  return __libc_realloc(memory, size);
}
}
#endif
