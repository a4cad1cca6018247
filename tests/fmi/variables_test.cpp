#include <cmath>
#include <limits>

#include "fmi/shell_fixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Variables = Shell;

TEST_F(Variables, AFailedGetterWritesNothingAndAFailedSetterKeepsWhatItWrote) {
  fmi2Component c = instantiate();
  for (const fmi2ValueReference bad : {170U, 1000U, std::numeric_limits<fmi2ValueReference>::max()}) {
    const fmi2ValueReference vr[] = {146, bad, 147};
    double out[] = {7, 7, 7};
    EXPECT_EQ(fmi2GetReal(c, vr, 3, out), fmi2Error);
    EXPECT_THAT(out, ElementsAre(7, 7, 7));
    const double in[] = {bad + 1.0, 8, 9};
    EXPECT_EQ(fmi2SetReal(c, vr, 3, in), fmi2Error);
    EXPECT_EQ(get(c, 146), bad + 1.0);
    EXPECT_EQ(get(c, 147), 1.0);
  }
  const fmi2ValueReference gate = 23;
  fmi2Boolean value = 0;
  EXPECT_EQ(fmi2GetBoolean(c, &gate, 1, &value), fmi2Error);
  EXPECT_EQ(fmi2SetBoolean(c, &gate, 1, &value), fmi2Error);
  EXPECT_THAT(take_log(),
              ::testing::AllOf(::testing::SizeIs(8), ::testing::Each(error("valueReference out of range"))));
}

TEST_F(Variables, NoStringsAndNullPointersAreTold) {
  fmi2Component c = instantiate();
  const fmi2ValueReference vr = 0;
  fmi2String text = "text";
  EXPECT_EQ(fmi2GetString(c, &vr, 1, &text), fmi2Error);
  EXPECT_EQ(fmi2SetString(nullptr, nullptr, 0, nullptr), fmi2OK);
  EXPECT_THAT(take_log(), ElementsAre(error("valueReference out of range")));
  double value = 7;
  EXPECT_EQ(fmi2GetReal(c, nullptr, 1, &value), fmi2Error);
  EXPECT_EQ(fmi2SetReal(c, &vr, 1, nullptr), fmi2Error);
  EXPECT_EQ(fmi2GetInteger(c, nullptr, 1, nullptr), fmi2Error);
  EXPECT_THAT(take_log(), ::testing::AllOf(::testing::SizeIs(3), ::testing::Each(error("invalid memory access"))));
  EXPECT_EQ(fmi2GetReal(nullptr, &vr, 1, &value), fmi2Error);
  EXPECT_THAT(take_log(), IsEmpty());
}

TEST_F(Variables, TraceFollowsTheLoggingSwitch) {
  fmi2Component c = instantiate();
  ASSERT_EQ(fmi2SetDebugLogging(c, fmi2True, 0, nullptr), fmi2OK);
  set(c, 148, 21.5);
  EXPECT_EQ(get(c, 148), 21.5);
  const fmi2ValueReference gate = 3;
  fmi2Boolean value = 256;
  EXPECT_EQ(fmi2SetBoolean(c, &gate, 1, &value), fmi2OK);
  EXPECT_EQ(fmi2GetBoolean(c, &gate, 1, &value), fmi2OK);
  EXPECT_EQ(value, 1);
  EXPECT_EQ(Tessera_P.boolean[3], 1);
  EXPECT_THAT(take_log(), ElementsAre(info("setReal vr:148, value:21.500000"), info("getReal vr:148, value:21.500000"),
                                      info("setBoolean vr:3, value:256"), info("getBoolean vr:3, value:1")));
  ASSERT_EQ(fmi2SetDebugLogging(c, fmi2False, 0, nullptr), fmi2OK);
  set(c, 148, 22.0);
  EXPECT_THAT(take_log(), IsEmpty());
}

TEST_F(Variables, WritesReachEveryRealCell) {
  fmi2Component c = start();
  set(c, kTimeReference, 5.0);
  EXPECT_EQ(step(c, 5.0, 0.001), fmi2OK);
  set(c, 146, -0.0);
  EXPECT_TRUE(std::signbit(get(c, 146)));
  set(c, 146, 0.0);  // equal to the cell, so not written
  EXPECT_TRUE(std::signbit(get(c, 146)));
  set(c, 146, std::numeric_limits<double>::quiet_NaN());
  EXPECT_TRUE(std::isnan(get(c, 146)));
}

}  // namespace
