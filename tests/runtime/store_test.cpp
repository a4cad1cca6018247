// The store's clock and integrator with a plant of the test's own.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "runtime/clock.h"
#include "runtime/integrators.h"
#include "runtime/ode3.h"

namespace {

struct Evaluation {
  bool major;
  double time;
  bool operator==(const Evaluation&) const = default;
};

double (*plant_derivative)(double t, double x) = nullptr;  // of every state
std::vector<Evaluation> trace;

}  // namespace

void Tessera_step() {
  begin_evaluation();
  trace.push_back({is_major_step(), model_time()});
  if (is_major_step()) advance_to_next_step();
}

void Tessera_derivatives() {
  double* dx = *Tessera_M_.solver.derivatives;
  for (std::size_t i = 0; i < kStateCount; ++i) dx[i] = plant_derivative(model_time(), Tessera_X[i]);
}

namespace {

class Store : public ::testing::Test {
 protected:
  Store() {
    build_model_record();
    Tessera_X.fill(1.0);
    plant_derivative = [](double, double x) { return -x; };
    trace.clear();
  }
};

TEST_F(Store, OneStepOfDecayIsTheCubicOfTheExponential) {
  const double h = 0.001;
  Tessera_step();
  EXPECT_DOUBLE_EQ(Tessera_X[0], 1 - h + h * h / 2 - h * h * h / 6);
  EXPECT_EQ(Tessera_X[0], Tessera_X[kStateCount - 1]);
}

TEST_F(Store, CubicsInTimeIntegrateExactly) {
  plant_derivative = [](double t, double) { return 3e6 * t * t; };  // x = 1 + 1e6 t^3
  for (int i = 0; i < 100; ++i) Tessera_step();
  EXPECT_NEAR(Tessera_X[7], 1001.0, 1e-11);
  plant_derivative = [](double, double) { return 2.0; };
  Tessera_step();
  EXPECT_NEAR(Tessera_X[7], 1001.002, 1e-11);
}

TEST_F(Store, EachStepIsOneMajorAndTwoMinorEvaluations) {
  Tessera_step();
  Tessera_step();
  EXPECT_THAT(trace,
              ::testing::ElementsAre(Evaluation{true, 0.0}, Evaluation{false, 0.0005}, Evaluation{false, 0.00075},
                                     Evaluation{true, 0.001}, Evaluation{false, 0.001 + 0.5 * 0.001},
                                     Evaluation{false, 0.001 + 0.75 * 0.001}));
  EXPECT_EQ(model_time(), 0.002);
  EXPECT_TRUE(is_major_step());
}

TEST_F(Store, RatesHitAtTheirPeriods) {
  std::vector<std::uint32_t> ticks_10ms, ticks_100ms, ticks_1s;
  for (std::uint32_t k = 0; k < 2001; ++k) {
    EXPECT_TRUE(hits(Rate::tick_1ms));
    if (hits(Rate::tick_10ms)) ticks_10ms.push_back(k);
    if (hits(Rate::tick_100ms)) ticks_100ms.push_back(k);
    if (hits(Rate::tick_1s)) ticks_1s.push_back(k);
    EXPECT_EQ(Tessera_M_.ticks[2].low, (k + 9) / 10);  // counts the hits of the steps before
    EXPECT_EQ(model_time(), k * 0.001);                // derived from the count, so nothing gathers
    Tessera_step();
  }
  ASSERT_EQ(ticks_10ms.size(), 201U);
  EXPECT_EQ(ticks_10ms[7], 70U);
  EXPECT_EQ(ticks_100ms.size(), 21U);
  EXPECT_THAT(ticks_1s, ::testing::ElementsAre(0, 1000, 2000));
  Tessera_M_.step_mode = kMinorStep;
  EXPECT_FALSE(hits(Rate::tick_1ms));
  EXPECT_TRUE(hits(Rate::continuous));
}

TEST(Integrators, LimitedDerivativePointsInwardAtALimit) {
  const double inf = std::numeric_limits<double>::infinity(), nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(limited_derivative(0.5, -3, 0, 1), -3);
  EXPECT_EQ(limited_derivative(0.0, -3, 0, inf), 0);
  EXPECT_EQ(limited_derivative(0.0, 3, 0, inf), 3);
  EXPECT_EQ(limited_derivative(-1.0, 3, 0, inf), 3);
  EXPECT_EQ(limited_derivative(1.0, 3, 0, 1), 0);
  EXPECT_EQ(limited_derivative(1.5, -3, 0, 1), -3);
  EXPECT_EQ(limited_derivative(nan, -3, 0, 1), -3);
  EXPECT_EQ(clamped(-1e-9, 0, 1), 0);
  EXPECT_EQ(clamped(2, 0, 1), 1);
  EXPECT_TRUE(std::isnan(clamped(nan, 0, 1)));
}

}  // namespace
