#include <cmath>
#include <limits>

#include "fmi/shell_fixture.h"

using ::testing::ElementsAre;

namespace {

using Step = Shell;

TEST_F(Step, TellsSizeAndCountWhateverTheLoggingSwitch) {
  fmi2Component c = start();
  EXPECT_EQ(step(c, 0, 0.01), fmi2OK);
  EXPECT_EQ(step(c, 0.01, 0), fmi2OK);
  EXPECT_THAT(take_log(), ElementsAre(info("CommunicationStepSize=0.01, LocalSolverStepSize=0.001"),
                                      info("Local solver will do 10 steps from t = 0."),
                                      info("CommunicationStepSize=0, LocalSolverStepSize=0.001"),
                                      info("Local solver will do 0 steps from t = 0.01.")));
  EXPECT_THAT(finished, ElementsAre(fmi2OK, fmi2OK));
  functions.stepFinished = nullptr;
  EXPECT_EQ(step(c, 0.01, 0.001), fmi2OK);
}

TEST_F(Step, TakesWholeMillisecondsOnly) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  struct Case {
    double h;
    fmi2Status status;
    double advance;
  };
  for (const auto& [h, status, advance] :
       {Case{0.0015, fmi2Error, 0}, Case{0.002, fmi2OK, 0.002}, Case{0.002 + 5e-10, fmi2OK, 0.002},
        Case{0.002 - 5e-10, fmi2OK, 0.002}, Case{-5e-10, fmi2Error, 0}, Case{0.002 + 2e-9, fmi2Error, 0},
        Case{-0.001, fmi2Error, 0}, Case{nan, fmi2OK, 0}, Case{1e300, fmi2Error, 0}, Case{-1e300, fmi2Error, 0},
        Case{std::numeric_limits<double>::infinity(), fmi2Error, 0}}) {
    fmi2Component c = start();
    const double distance = get(c, output::vehicle_distance);
    finished.clear();
    take_log();
    EXPECT_EQ(step(c, 0, h), status) << h;
    EXPECT_NEAR(get(c, kTimeReference), advance, 1e-15) << h;
    EXPECT_THAT(finished, ElementsAre(status));
    const std::vector<LogLine> log = take_log();
    ASSERT_EQ(log.size(), 2U);  // the size is told before it is tested
    if (status == fmi2Error) {
      EXPECT_EQ(log[1], error("Stepsize must be non-negative and divisible by 0.001"));
      EXPECT_EQ(get(c, output::vehicle_distance), distance);
    }
    if (std::isnan(h)) {
      EXPECT_EQ(log[1], info("Local solver will do -2147483648 steps from t = 0."));
    }
    fmi2FreeInstance(c);
  }
}

TEST_F(Step, FollowsTheImportersTimeWithinANanosecond) {
  fmi2Component c = start();
  EXPECT_EQ(step(c, 1e-9, 0), fmi2OK);
  EXPECT_EQ(get(c, kTimeReference), 1e-9);
  take_log();
  EXPECT_EQ(step(c, 3.1e-9, 0), fmi2Error);
  EXPECT_EQ(take_log().back(), error("CurrentCommunicationPoint is not equal to FMU time"));
  EXPECT_EQ(get(c, kTimeReference), 1e-9);

  EXPECT_EQ(step(c, 0, 10.0), fmi2OK);
  double by_addition = 0.0;
  for (int i = 0; i < 10000; ++i) by_addition += 0.001;
  EXPECT_EQ(get(c, kTimeReference), by_addition);
  EXPECT_EQ(step(c, 10.0, 0.001), fmi2OK);
  EXPECT_EQ(get(c, kTimeReference), 10.001);
  EXPECT_EQ(step(c, std::numeric_limits<double>::quiet_NaN(), 0), fmi2OK);  // farther away than nothing
}

TEST_F(Step, StopRequestEndsTheStepBeforeTheNextModelStep) {
  fmi2Component c = start();
  Tessera_M_.stopRequested = 1;
  take_log();
  EXPECT_EQ(step(c, 0, 0.003), fmi2Error);
  EXPECT_EQ(take_log().back(), error("stop requested in fmi2DoStep"));
  EXPECT_EQ(get(c, kTimeReference), 0.0);
  EXPECT_EQ(Tessera_M_.time[0], 0.001);  // where the initialization left the model
  EXPECT_EQ(step(c, 0, 0), fmi2OK);      // nothing to stop
}

TEST_F(Step, AWriteToAnOutputLastsUntilTheNextModelStep) {
  fmi2Component c = start();
  for (const auto output : {output::hydrogen_line_constant_1, output::ambient_temperature, output::inputs_power_demand,
                            output::inputs_system_command}) {
    const auto vr = static_cast<fmi2ValueReference>(output);
    const double value = get(c, vr);
    const double t = get(c, kTimeReference);
    set(c, vr, 5.0);
    EXPECT_EQ(step(c, t, 0), fmi2OK);
    EXPECT_EQ(get(c, vr), 5.0);
    EXPECT_EQ(step(c, t, 0.001), fmi2OK);
    EXPECT_EQ(get(c, vr), value);
  }
}

}  // namespace
