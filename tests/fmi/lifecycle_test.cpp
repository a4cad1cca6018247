#include <cstdlib>

#include "fmi/shell_fixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {
int callocs_until_failure = -1;  // below 0: none fails
}

extern "C" void* __real_calloc(std::size_t count, std::size_t size);
extern "C" void* __wrap_calloc(std::size_t count, std::size_t size);
extern "C" void* __wrap_calloc(std::size_t count, std::size_t size) {
  if (callocs_until_failure >= 0 && callocs_until_failure-- == 0) return nullptr;
  return __real_calloc(count, size);
}

namespace {

using Lifecycle = Shell;

TEST_F(Lifecycle, RefusesACallWithoutIdentity) {
  const fmi2CallbackFunctions silent = {nullptr, nullptr, nullptr, nullptr, nullptr};
  EXPECT_EQ(fmi2Instantiate("test", fmi2CoSimulation, kGuid, nullptr, nullptr, 0, 0), nullptr);
  EXPECT_EQ(fmi2Instantiate("test", fmi2CoSimulation, kGuid, nullptr, &silent, 0, 0), nullptr);
  EXPECT_THAT(take_log(), IsEmpty());

  const LogLine no_name = {"?", fmi2Error, "error", "fmi2Instantiate: Missing instance name."};
  EXPECT_EQ(instantiate(nullptr), nullptr);
  EXPECT_EQ(instantiate(""), nullptr);
  EXPECT_THAT(take_log(), ElementsAre(no_name, no_name));

  const char* upper_case = "{3B1E7A52-6C0D-4F19-A8E4-2D90C7F1B663}";
  EXPECT_EQ(instantiate("test", nullptr), nullptr);
  EXPECT_EQ(instantiate("test", ""), nullptr);
  EXPECT_EQ(instantiate("test", upper_case), nullptr);
  EXPECT_THAT(take_log(),
              ElementsAre(error("fmi2Instantiate: Missing GUID."), error("fmi2Instantiate: Missing GUID."),
                          error("fmi2Instantiate: Wrong GUID {3B1E7A52-6C0D-4F19-A8E4-2D90C7F1B663}. Expected "
                                "{3b1e7a52-6c0d-4f19-a8e4-2d90c7f1b663}.")));
  EXPECT_NE(instantiate(), nullptr);
  EXPECT_THAT(take_log(), IsEmpty());
}

TEST_F(Lifecycle, EveryAllocationFailureIsTold) {
  fmi2Component survivor = start();
  take_log();
  const char* location = "file:///somewhere";
  for (int failing = 0; failing < 7; ++failing) {
    callocs_until_failure = failing;
    EXPECT_EQ(fmi2Instantiate("test", fmi2CoSimulation, kGuid, location, &functions, 0, 0), nullptr) << failing;
    EXPECT_EQ(callocs_until_failure, -1);
    EXPECT_THAT(take_log(), ElementsAre(error("fmi2Instantiate: Memory allocation error.")));
    // The half-built record is the newest, yet the outputs still have a shadow.
    EXPECT_EQ(step(survivor, failing * 0.001, 0.001), fmi2OK);
    EXPECT_EQ(get(survivor, output::hydrogen_line_constant_1), 1.0);
    take_log();
  }
}

TEST_F(Lifecycle, AnErrorInTheStoreIsToldAtItsEnd) {
  fmi2Component c = start();
  Tessera_M_.errorStatus = "a block failed";
  EXPECT_EQ(step(c, 0, 0.001), fmi2OK);  // the step goes on
  take_log();
  fmi2FreeInstance(c);
  fmi2FreeInstance(c);  // nothing was released, so it is told again
  EXPECT_EQ(fmi2Reset(c), fmi2Error);
  EXPECT_EQ(instantiate(), nullptr);
  EXPECT_THAT(take_log(), ElementsAre(error("a block failed"), error("a block failed"), error("a block failed"),
                                      error("Error during model registration: a block failed\n")));
  EXPECT_EQ(fmi2EnterInitializationMode(c), fmi2OK);  // clears it
  EXPECT_EQ(fmi2Reset(c), fmi2OK);

  Tessera_M_.errorStatus = "Simulation finished";
  EXPECT_EQ(fmi2Reset(c), fmi2Error);
  EXPECT_THAT(take_log(), ElementsAre(error("Error during model registration: Simulation finished\n")));
  fmi2FreeInstance(c);
  fmi2FreeInstance(c);  // released before
  EXPECT_THAT(take_log(), IsEmpty());
}

TEST_F(Lifecycle, AStopRequestIsToldWhereItIsNoticed) {
  fmi2Component c = start();
  Tessera_M_.stopRequested = 1;
  EXPECT_EQ(fmi2ExitInitializationMode(c), fmi2Error);
  EXPECT_EQ(fmi2Reset(c), fmi2Error);
  EXPECT_EQ(instantiate(), nullptr);
  EXPECT_THAT(take_log(),
              ElementsAre(error("stop requested in fmi2ExitInitializationMode"), error("stop requested in fmi2Reset"),
                          error("stop requested in fmi2Instantiate")));
}

TEST_F(Lifecycle, StartsNearTimeZeroOnly) {
  fmi2Component c = instantiate();
  for (const double t : {0.0, 5e-8, 1e-7, -1e-7}) {
    EXPECT_EQ(fmi2SetupExperiment(c, fmi2True, 1e-4, t, fmi2True, 10), fmi2OK);
    EXPECT_EQ(get(c, kTimeReference), t);
  }
  EXPECT_THAT(take_log(), IsEmpty());
  for (const double t : {1.1e-7, -1e-6, 1.0}) {
    EXPECT_EQ(fmi2SetupExperiment(c, fmi2False, 0, t, fmi2False, 0), fmi2Error);
    EXPECT_THAT(take_log(), ElementsAre(error("start time is not zero.")));
    EXPECT_EQ(get(c, kTimeReference), -1e-7);
  }
}

TEST_F(Lifecycle, InstancesShareOneModel) {
  set(instantiate(), kFirstParameter + input::vehicle_speed, 36.0);  // km/h, so 10 m a second
  set_gate(instantiate(), input::vehicle_speed, fmi2True);
  fmi2Component first = start();
  const double* first_shadow = static_cast<FmuInstance*>(first)->outputShadow;
  EXPECT_EQ(first_shadow[output::hydrogen_line_constant_1], 1.0);

  fmi2Component second = instantiate();
  const double* second_shadow = static_cast<FmuInstance*>(second)->outputShadow;
  EXPECT_EQ(second_shadow[output::hydrogen_line_constant_1], 0.0);
  EXPECT_EQ(step(first, 0, 0.001), fmi2OK);
  EXPECT_EQ(second_shadow[output::hydrogen_line_constant_1], 1.0);  // the newest instance keeps the outputs

  fmi2FreeInstance(second);
  EXPECT_EQ(step(first, 0.001, 5.0), fmi2OK);  // and the one before it takes over
  EXPECT_NEAR(first_shadow[output::vehicle_distance], 0.05001, 1e-9);
  EXPECT_EQ(get(first, output::vehicle_distance), first_shadow[output::vehicle_distance]);
}

TEST_F(Lifecycle, ResetKeepsTimeAndParametersAndGivesTheSameRunAgain) {
  fmi2Component c = instantiate();
  set(c, kFirstParameter + input::vehicle_speed, 50.0);
  set_gate(c, input::vehicle_speed, fmi2True);
  double distance[2];
  for (double& d : distance) {
    initialize(c);
    EXPECT_EQ(step(c, 0, 2.0), fmi2OK);
    d = get(c, output::vehicle_distance);
    const double end = get(c, kTimeReference);
    EXPECT_EQ(fmi2Reset(c), fmi2OK);
    EXPECT_EQ(get(c, kTimeReference), end);
    EXPECT_EQ(step(c, 0, 0.001), fmi2Error);  // FMU time is still the last run's
    EXPECT_EQ(get(c, output::vehicle_distance), d);
  }
  EXPECT_EQ(distance[0], distance[1]);
  EXPECT_NEAR(distance[0], 50.0 / 3600 * 2, 1e-12);  // km, at rest on its input from the start
}

TEST_F(Lifecycle, TakesCallsOutOfOrder) {
  fmi2Component c = instantiate();
  EXPECT_EQ(step(c, 0, 0.005), fmi2OK);  // a store that was never built
  EXPECT_NEAR(get(c, kTimeReference), 0.005, 1e-15);
  EXPECT_THAT(Tessera_Y, ::testing::Each(0.0));
  fmi2FreeInstance(c);

  c = start();
  EXPECT_EQ(fmi2Terminate(c), fmi2OK);
  EXPECT_EQ(step(c, 0, 0.001), fmi2OK);
  EXPECT_EQ(fmi2EnterInitializationMode(c), fmi2OK);
  EXPECT_THAT(Tessera_Y, ::testing::Each(0.0));
  EXPECT_EQ(fmi2EnterInitializationMode(c), fmi2OK);
  EXPECT_EQ(fmi2Reset(c), fmi2OK);
}

TEST_F(Lifecycle, WhatIsNotOfferedReportsSuccessAndWritesNothing) {
  fmi2Component c = instantiate();
  double x[] = {7, 7};
  EXPECT_EQ(fmi2GetContinuousStates(c, x, 2), fmi2OK);
  EXPECT_THAT(x, ElementsAre(7, 7));
  const fmi2ValueReference vr = 0;
  const fmi2Integer order = 1;
  EXPECT_EQ(fmi2GetRealOutputDerivatives(c, &vr, 1, &order, x), fmi2OK);
  EXPECT_THAT(x, ElementsAre(0, 7));
}

}  // namespace
