// The front end: the fluid and the property behind a type and a code, the limits of its inputs, its refusals.

#include "Vk_lib/Vk_fl_prop_lib/fl_prop_calc.h"

#include <array>
#include <bit>
#include <limits>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"
#include "fluids/quiet_test.h"

namespace Vk_fl_prop_lib {
namespace {

template <class Vector>
auto values(const Vector& vector) {
  return std::bit_cast<std::array<double, sizeof(Vector) / sizeof(double)>>(vector);
}

// clang-format off
constexpr LiquidVector kSomeLiquid = {
    .kappa = 5e-10, .tMin = 273, .tMax = 380, .pRef = 1e5, .tRef = 300, .hRef = 0, .sRef = 0,
    .rho = {1100, -0.3}, .cp = {4000, 0.5}, .lambda = {0.6}, .mu = {-7}};
// clang-format on
const auto kO2 = values(kO2_IDG), kN2 = values(kN2_IDG);
const auto kGlycerol = values(kGlycerol_Water), kGlycol = values(kEthylene_Glycol_Water);
const auto kLiquid = values(kSomeLiquid);
const auto kAir = values(kMoist_Air);

const Fl_data kOxygen = {"O2_IDG", 3, kO2.data(), 0};
const Fl_data kNitrogen = {"N2_IDG", 3, kN2.data(), 0};
const Fl_data kCoolant = {"Glycerol_Water", 1, kGlycerol.data(), 50};
const Fl_data kThinCoolant = {"Ethylene_Glycol_Water", 1, kGlycol.data(), 30};
const Fl_data kOil = {"oil", 2, kLiquid.data(), 0};
const Fl_data kMoistAir = {"Moist_Air", 6, kAir.data(), 0};

class FrontEnd : public QuietTest {
 protected:
  static constexpr double kUntouched = -77;

  /// The answer to one code, which must succeed.
  double ask(const Fl_data& fluid, int code, double T, double P, double w = 0) {
    const double in[] = {T, P, w};
    out.fill(kUntouched);
    msg[0] = '\0';
    EXPECT_FALSE(fl_prop_calc(&fluid, in, code, out.data(), msg)) << msg;
    EXPECT_EQ(out[1], kUntouched);
    return out[0];
  }

  /// The reason why a code is refused; nothing may have been stored.
  const char* refusal(const Fl_data& fluid, int code) {
    const double in[] = {300, 1e5, 0.01};
    out.fill(kUntouched);
    EXPECT_TRUE(fl_prop_calc(&fluid, in, code, out.data(), msg));
    for (const double value : out) EXPECT_EQ(value, kUntouched);
    return msg;
  }

  std::array<double, 20> out{};
  char msg[42] = "";
};

TEST_F(FrontEnd, CodesAreTheNamedOperations) {
  CBrine brine(kGlycerol_Water);
  brine.SetConc(50);
  const CLiquide liquid(kSomeLiquid);
  const CIdG gas(kO2_IDG);
  const double T = 320, P = 2.5e5;
  const auto expect_common_codes = [&](const Fl_data& data, const auto& f) {
    const double v = f.vTP(T, P, 0);
    // clang-format off
    const double expected[] = {
        v, f.hTP(T, P, 0), f.sTP(T, P, 0), f.uTP(T, P, 0), f.CpTP(T, P, 0), f.CvTP(T, P, 0), f.lambdaTP(T, P, 0),
        f.muTP(T, P, 0), f.alfa_t(T, P, 0) / v, f.alfa_p(T, P, 0) / v};
    // clang-format on
    for (int code = 1; code <= 10; ++code) EXPECT_EQ(ask(data, code, T, P), expected[code - 1]) << data.name << code;
  };
  expect_common_codes(kCoolant, brine);
  expect_common_codes(kOil, liquid);
  expect_common_codes(kOxygen, gas);
  EXPECT_EQ(ask(kCoolant, 11, T, P), 19.5);
  EXPECT_EQ(ask(kCoolant, 12, T, P), 63);
  EXPECT_EQ(ask(kCoolant, 13, T, P), brine.tFreeze());
  EXPECT_EQ(ask(kOil, 11, T, P), 273);
  EXPECT_EQ(ask(kOxygen, 12, T, P), 1050);

  for (const double w : {0.01, 0.2}) {  // dry and wet of the saturation at about 0.045
    CAirHumide air(kMoist_Air);
    const double wsat = air.wSatT(T, P);
    air.SetFluidState(wsat > w ? 1 : 0);
    const double h = air.hTW(T, w, P, 0), v = air.vTW(T, w, P, 0);
    // clang-format off
    const double expected[] = {
        v, h, air.sTWP(T, w, P, 0), h - v * P, air.CpTW(T, w, P, 0), air.CvTW(T, w, P, 0, 0),
        air.lambdaTW(T, w, P, 0), air.muTW(T, w, P, 0), air.alfa_t(T, w, P) / v, air.alfa_p(T, w, P) / v,
        air.rhTWP(T, w, P), air.TdewWP(w, P), wsat, air.pSat(T, P), air.pvWP(w, P), air.thumTWP(T, w, P, wsat)};
    // clang-format on
    for (int code = 1; code <= 16; ++code) EXPECT_EQ(ask(kMoistAir, code, T, P, w), expected[code - 1]) << code;
  }
}

TEST_F(FrontEnd, CodeZeroIsAllCodes) {
  for (const Fl_data& fluid : {kCoolant, kThinCoolant, kOil, kOxygen, kMoistAir}) {
    const auto codes = property_codes(fluid.type);
    ASSERT_EQ(codes.size(), fluid.type == 1 ? 13u : fluid.type == 6 ? 16u : 12u);
    for (const double w : {0.0, 0.005, 0.3}) {
      const double in[] = {313.0, 1.7e5, w};
      std::array<double, 20> all{};
      all.fill(kUntouched);
      ASSERT_FALSE(fl_prop_calc(&fluid, in, 0, all.data(), msg));
      for (std::size_t i = 0; i < codes.size(); ++i) {
        EXPECT_EQ(all[i], ask(fluid, static_cast<int>(i) + 1, in[0], in[1], w)) << fluid.name << ' ' << codes[i].name;
        EXPECT_NE(all[i], kUntouched);
      }
      EXPECT_EQ(all[codes.size()], kUntouched);
    }
  }
}

TEST_F(FrontEnd, FluidsTakeTurnsInOneCalculator) {
  const double O2 = ask(kOxygen, 2, 350, 1e5), N2 = ask(kNitrogen, 2, 350, 1e5);
  EXPECT_NE(O2, N2);
  const double thick = ask(kCoolant, 1, 300, 1e5), thin = ask(kThinCoolant, 1, 300, 1e5);
  EXPECT_NE(thick, thin);
  for (int turn = 0; turn < 3; ++turn) {
    EXPECT_EQ(ask(kOxygen, 2, 350, 1e5), O2);
    EXPECT_EQ(ask(kNitrogen, 2, 350, 1e5), N2);
    EXPECT_EQ(ask(kCoolant, 1, 300, 1e5), thick);
    EXPECT_EQ(ask(kThinCoolant, 1, 300, 1e5), thin);
  }
  // The same name and the same array with other values in it.
  auto changing = kO2;
  const Fl_data renamed = {"O2_IDG", 3, changing.data(), 0};
  EXPECT_EQ(ask(renamed, 2, 350, 1e5), O2);
  changing = kN2;
  EXPECT_EQ(ask(renamed, 2, 350, 1e5), N2);
}

TEST_F(FrontEnd, ConcentrationOfTheBlockCountsNotThatOfTheVector) {
  Fl_data coolant = kCoolant;
  coolant.concentration = 47.8467;
  EXPECT_NEAR(1 / ask(coolant, 1, 280.15, 101325), 1127, 1e-9);
  coolant.concentration = 70;  // beyond the maximum, which is only reported
  EXPECT_GT(1 / ask(coolant, 1, 280.15, 101325), 1180);
}

TEST_F(FrontEnd, MoistAirKeepsItsFirstVector) {
  const double h = ask(kMoistAir, 2, 300, 1e5, 0.005);
  auto other = kAir;
  other[4] = 0;  // the enthalpy offset
  EXPECT_EQ(ask({"Moist_Air", 6, other.data(), 0}, 2, 300, 1e5, 0.005), h);
}

TEST_F(FrontEnd, InputsAreClippedSilently) {
  const double T = 300, P = 1e5, w = 0.005, tiny = 1e-10;
  EXPECT_EQ(ask(kOxygen, 2, 100, P), ask(kOxygen, 2, 250, P));
  EXPECT_EQ(ask(kOxygen, 2, 2000, P), ask(kOxygen, 2, 1050, P));
  EXPECT_EQ(ask(kOxygen, 11, 100, P), 250);
  EXPECT_EQ(ask(kOil, 1, 100, P), ask(kOil, 1, 273, P));
  EXPECT_EQ(ask(kOil, 1, 500, P), ask(kOil, 1, 380, P));
  EXPECT_EQ(ask(kCoolant, 1, -5, P), ask(kCoolant, 1, tiny, P));
  EXPECT_NE(ask(kCoolant, 1, 200, P), ask(kCoolant, 1, 250, P));
  for (const Fl_data& fluid : {kOxygen, kOil, kCoolant, kMoistAir}) {
    EXPECT_EQ(ask(fluid, 1, T, 0), ask(fluid, 1, T, tiny));
    EXPECT_EQ(ask(fluid, 1, T, -1e5), ask(fluid, 1, T, tiny));
  }
  EXPECT_EQ(ask(kMoistAir, 2, 100, P, 0), ask(kMoistAir, 2, 173.15, P, 0));
  EXPECT_EQ(ask(kMoistAir, 1, 700, P, w), ask(kMoistAir, 1, 640.15, P, w));
  EXPECT_EQ(ask(kMoistAir, 1, T, 3e8, w), ask(kMoistAir, 1, T, 2e8, w));
  EXPECT_EQ(ask(kMoistAir, 6, T, P, -0.1), ask(kMoistAir, 6, T, P, 0));
}

TEST_F(FrontEnd, MoistAirIsSaturatedFromTheSaturationRatioOn) {
  const double T = 300, P = 1e5, wsat = ask(kMoistAir, 13, T, P);
  EXPECT_EQ(ask(kMoistAir, 16, T, P, wsat), T);  // at saturation the wet bulb temperature is the temperature
  EXPECT_LT(ask(kMoistAir, 16, T, P, 0.9 * wsat), T - 1);
  EXPECT_EQ(ask(kMoistAir, 5, T, P, 2 * wsat), 1000 * (1.0066 + 1.8266 * (2 * wsat)));
  EXPECT_EQ(ask(kMoistAir, 16, T, P, 2 * wsat), T);
  // From there on warmer air takes up vapour, so that it expands far more.
  EXPECT_GT(ask(kMoistAir, 9, T, P, wsat), 1.5 * ask(kMoistAir, 9, T, P, 0.999 * wsat));
}

TEST_F(FrontEnd, UnknownCodesAndTypesAreRefused) {
  const int lowest = std::numeric_limits<int>::min(), highest = std::numeric_limits<int>::max();
  for (const int beyond : {13, -1, lowest, highest}) {
    EXPECT_STREQ(refusal(kOxygen, beyond), "The 2nd parameter must be between 0-12");
    EXPECT_STREQ(refusal(kOil, beyond), "The 2nd parameter must be between 0-12");
  }
  for (const int beyond : {14, -1, lowest, highest}) {
    EXPECT_STREQ(refusal(kCoolant, beyond), "The 2nd parameter must be between 0-13");
  }
  for (const int beyond : {17, -1, lowest, highest}) {
    EXPECT_STREQ(refusal(kMoistAir, beyond), "The second parameter must be between 0-16");
  }
  for (const int type : {0, 4, 5, 7, 99, -1}) {
    EXPECT_STREQ(refusal({"", type, nullptr, 0}, 1), "This fluid type has not been implemented!");
    EXPECT_TRUE(property_codes(type).empty());
  }
}

TEST_F(FrontEnd, CalculatorsAnswerTheOtherWayRound) {
  double value = 0;
  EXPECT_TRUE(cal_IDG("O2_IDG", kO2.data(), 300, 1e5, 11, &value, msg));
  EXPECT_EQ(value, 250);
  EXPECT_FALSE(cal_IDG("O2_IDG", kO2.data(), 300, 1e5, 13, &value, msg));
}

}  // namespace
}  // namespace Vk_fl_prop_lib
