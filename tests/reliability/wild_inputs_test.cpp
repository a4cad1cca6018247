// Inputs that no vehicle ever sees. What the model makes of them is its own affair, NaN included; the unit goes on, and
// it is as new after a reset.

#include <limits>

#include "reliability/loaded_unit.h"

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kTiny = std::numeric_limits<double>::denorm_min();
using Values = std::vector<double>;

class WildInputs : public ::testing::Test {
 protected:
  /// Runs with these inputs wild from the start, and from the middle of a run.
  void run_wild(const std::vector<std::size_t>& inputs, const Values& values, int duration_ms) {
    const auto play = [&] { return unit_.run(duration_ms, kStep_ms); };
    const auto open = [&](double value) {
      for (const std::size_t k : inputs) unit_.open(k, value);
    };
    const auto renew = [&] {
      for (const std::size_t k : inputs) unit_.close(k);
      unit_.reset();
    };
    const Rows calm = play();
    unit_.reset();
    bool has_effect = false;
    for (const double value : values) {
      SCOPED_TRACE(std::string(kInputs[inputs.front()].parameter) + " " + std::to_string(value));
      open(value);
      has_effect |= play() != calm;
      renew();
      ASSERT_EQ(play(), calm);
      open(value);
      unit_.go_on(duration_ms, kStep_ms);
      renew();
    }
    EXPECT_TRUE(has_effect) << kInputs[inputs.front()].parameter;
    ASSERT_EQ(play(), calm);
    unit_.reset();
  }

  void run_each_and_all(const Values& values, int duration_ms) {
    std::vector<std::size_t> all(kInputCount);
    std::iota(all.begin(), all.end(), std::size_t{0});
    for (const std::size_t k : all) run_wild({k}, values, duration_ms);
    run_wild(all, values, duration_ms);
  }

 private:
  static constexpr int kStep_ms = 100;
  LoadedUnit unit_{TESSERA_BINARY};
};

TEST_F(WildInputs, NeitherStopTheUnitNorOutlastAReset) {
  run_each_and_all({0.0, -100.0, 1e300, -kInf, kNan}, 1100);  // past the second tick of each rate
}
TEST_F(WildInputs, DISABLED_ForLongerToo) {
  run_each_and_all({0.0, -100.0, kTiny, 1e30, 1e300, -1e300, kInf, -kInf, kNan}, 20'000);
}

}  // namespace
