// The front end: the fluid and the property behind a type and a code, the limits of its inputs, its refusals.

#include "Vk_lib/Vk_fl_prop_lib/fl_prop_calc.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/direct.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "fluids/fluid_test.h"

namespace Vk_fl_prop_lib {
namespace {

const auto kO2 = values(kO2_IDG), kN2 = values(kN2_IDG);
const auto kLiquid = values(kOil);
const auto kAir = values(kMoist_Air);
const auto kGlycerol = values(kGlycerol_Water), kGlycol = values(kEthylene_Glycol_Water);
const Fl_data kOxygen = {"O2_IDG", 3, kO2.data(), 0}, kNitrogen = {"N2_IDG", 3, kN2.data(), 0};
const Fl_data kCoolant = {"Glycerol_Water", 1, kGlycerol.data(), 50};
const Fl_data kThinCoolant = {"Ethylene_Glycol_Water", 1, kGlycol.data(), 30};
const Fl_data kSomeLiquid = {"oil", 2, kLiquid.data(), 0}, kMoistAir = {"Moist_Air", 6, kAir.data(), 0};

class FrontEnd : public QuietTest {
 protected:
  static constexpr double kUntouched = -77;

  /// The answer to one code, which must succeed.
  double ask(const Fl_data& fluid, int code, double T, double P, double w = 0) {
    const double in[] = {T, P, w};
    out.fill(kUntouched);
    EXPECT_FALSE(fl_prop_calc(&fluid, in, code, out.data(), msg)) << msg;
    EXPECT_EQ(out[1], kUntouched);
    return out[0];
  }

  /// The codes from 1 on must answer these, and code 0 all of them.
  void expect_codes(const Fl_data& fluid, double T, double P, double w, std::vector<double> expected) {
    const double in[] = {T, P, w};
    for (std::size_t i = 0; i < expected.size(); ++i) {
      EXPECT_EQ(ask(fluid, static_cast<int>(i) + 1, T, P, w), expected[i]) << fluid.name << ' ' << i + 1;
    }
    out.fill(kUntouched);
    EXPECT_FALSE(fl_prop_calc(&fluid, in, 0, out.data(), msg));
    expected.resize(out.size(), kUntouched);
    for (std::size_t i = 0; i < out.size(); ++i) EXPECT_EQ(out[i], expected[i]) << fluid.name << ' ' << i + 1;
  }

  /// A code or type that is refused; nothing may have been stored.
  void expect_refusal(const Fl_data& fluid, int code, const char* reason) {
    const double in[] = {300, 1e5, 0.01};
    out.fill(kUntouched);
    EXPECT_TRUE(fl_prop_calc(&fluid, in, code, out.data(), msg));
    EXPECT_STREQ(msg, reason);
    for (const double value : out) EXPECT_EQ(value, kUntouched);
  }

  std::array<double, 20> out{};
  char msg[42] = "";
};

TEST_F(FrontEnd, CodesAreTheNamedOperations) {
  const double T = 320, P = 2.5e5;
  const auto common = [&](const CFluideBase& f, std::initializer_list<double> more) {
    const double v = f.vTP(T, P, 0), h = f.hTP(T, P, 0), s = f.sTP(T, P, 0), u = f.uTP(T, P, 0);
    const double Cp = f.CpTP(T, P, 0), Cv = f.CvTP(T, P, 0), lambda = f.lambdaTP(T, P, 0), mu = f.muTP(T, P, 0);
    std::vector<double> all = {v, h, s, u, Cp, Cv, lambda, mu, f.alfa_t(T, P, 0) / v, f.alfa_p(T, P, 0) / v};
    all.insert(all.end(), more);
    return all;
  };
  const CBrine thick = brine(kGlycerol_Water, 50), thin = brine(kEthylene_Glycol_Water, 30);
  for (int turn = 0; turn < 2; ++turn) {  // the fluids of a type share one object
    expect_codes(kCoolant, T, P, 0, common(thick, {19.5, 63, thick.tFreeze()}));
    expect_codes(kThinCoolant, T, P, 0, common(thin, {0, 56, thin.tFreeze()}));
    expect_codes(kSomeLiquid, T, P, 0, common(CLiquide(kOil), {200, 450}));
    expect_codes(kOxygen, T, P, 0, common(CIdG(kO2_IDG), {250, 1050}));
    expect_codes(kNitrogen, T, P, 0, common(CIdG(kN2_IDG), {250, 1050}));
  }
  auto changing = kO2;  // the same name and the same array with other values in it
  const Fl_data renamed = {"O2_IDG", 3, changing.data(), 0};
  EXPECT_EQ(ask(renamed, 2, T, P), ask(kOxygen, 2, T, P));
  changing = kN2;
  EXPECT_EQ(ask(renamed, 2, T, P), ask(kNitrogen, 2, T, P));

  for (const double w : {0.0, 0.01, 0.2}) {  // dry, and on both sides of the saturation at about 0.045
    CAirHumide air(kMoist_Air);
    const double wsat = air.wSatT(T, P);
    air.SetFluidState(wsat > w ? 1 : 0);
    const double h = air.hTW(T, w, P, 0), v = air.vTW(T, w, P, 0);
    expect_codes(
        kMoistAir, T, P, w,
        {v, h, air.sTWP(T, w, P, 0), h - v * P, air.CpTW(T, w, P, 0), air.CvTW(T, w, P, 0, 0), air.lambdaTW(T, w, P, 0),
         air.muTW(T, w, P, 0), air.alfa_t(T, w, P) / v, air.alfa_p(T, w, P) / v, air.rhTWP(T, w, P), air.TdewWP(w, P),
         wsat, air.pSat(T, P), air.pvWP(w, P), air.thumTWP(T, w, P, wsat)});
  }
}

TEST_F(FrontEnd, MoistAirKeepsItsFirstVectorAndIsSaturatedFromTheSaturationRatioOn) {
  const double T = 300, P = 1e5, h = ask(kMoistAir, 2, T, P, 0.005), wsat = ask(kMoistAir, 13, T, P);
  auto other = kAir;
  other[4] = 0;  // the enthalpy offset
  EXPECT_EQ(ask({"Moist_Air", 6, other.data(), 0}, 2, T, P, 0.005), h);
  // Saturated air takes up water as it expands.
  EXPECT_GT(ask(kMoistAir, 9, T, P, wsat), 1.4 * ask(kMoistAir, 9, T, P, 0.999 * wsat));
}

TEST_F(FrontEnd, InputsAreClippedSilently) {
  const double T = 300, P = 1e5, tiny = 1e-10;
  const struct {
    const Fl_data& fluid;
    double T, P, T_used, P_used;
  } cases[] = {{kOxygen, 100, P, 250, P},       {kOxygen, 2000, P, 1050, P},  {kSomeLiquid, 100, P, 200, P},
               {kSomeLiquid, 500, P, 450, P},   {kCoolant, -5, P, tiny, P},   {kMoistAir, 100, P, 173.15, P},
               {kMoistAir, 700, P, 640.15, P},  {kMoistAir, T, 3e8, T, 2e8},  {kOxygen, T, -1e5, T, tiny},
               {kSomeLiquid, T, -1e5, T, tiny}, {kCoolant, T, -1e5, T, tiny}, {kMoistAir, T, -1e5, T, tiny}};
  for (const auto& [fluid, T_in, P_in, T_used, P_used] : cases) {
    EXPECT_EQ(ask(fluid, 1, T_in, P_in, 0.005), ask(fluid, 1, T_used, P_used, 0.005)) << fluid.name;
    const double T_inside = T_used + 0.01 * (T - T_used), P_inside = P_used + 0.01 * (P - P_used);
    EXPECT_NE(ask(fluid, 1, T_in, P_in, 0.005), ask(fluid, 1, T_inside, P_inside, 0.005)) << fluid.name;
  }
  for (const int code : {5, 6}) EXPECT_EQ(ask(kMoistAir, code, T, P, -0.1), ask(kMoistAir, code, T, P, 0));
}

TEST_F(FrontEnd, UnknownCodesAndTypesAreRefused) {
  for (const int code : {13, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    expect_refusal(kOxygen, code, "The 2nd parameter must be between 0-12");
    expect_refusal(kSomeLiquid, code, "The 2nd parameter must be between 0-12");
    expect_refusal(kCoolant, code == 13 ? 14 : code, "The 2nd parameter must be between 0-13");
    expect_refusal(kMoistAir, code == 13 ? 17 : code, "The second parameter must be between 0-16");
  }
  for (const int type : {0, 4, 5, 7, -1}) {
    expect_refusal({"", type, nullptr, 0}, 1, "This fluid type has not been implemented!");
  }
}

constexpr BrineVector kThinGlycol = [] {
  BrineVector vector = kEthylene_Glycol_Water;
  vector.conc = 30;
  return vector;
}();

TEST_F(FrontEnd, DirectQuestionsGetTheSameBits) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const auto expect_same = [](double value, double expected) {
    EXPECT_TRUE(value == expected || (std::isnan(value) && std::isnan(expected))) << value << ' ' << expected;
  };
  constexpr std::array T = {-5.0, 0.0, 100.0, 280.0, 331.7, 1050.0, 2000.0, kNaN};
  for (const double t : T) {
    expect_same(direct::gas_Cp(kO2_IDG, t), ask(kOxygen, 5, t, 1e5));
    expect_same(direct::gas_enthalpy(kN2_IDG, t), ask(kNitrogen, 2, t, 1e5));
    expect_same(direct::air_Cp(t / 1e4), ask(kMoistAir, 5, 300, 1e5, t / 1e4));
    for (const double P : {-1.0, 1e5, 3e8, kNaN}) {
      for (const double w : {-0.1, 0.0, 0.02, 3.0, kNaN}) {
        expect_same(direct::air_Cv(t, P, w), ask(kMoistAir, 6, t, P, w));
      }
    }
  }
  for (const double P : {-1.0, 2e5}) {
    const auto all = direct::brine_values<kThinGlycol>(T, P);
    for (std::size_t i = 0; i < T.size(); ++i) {
      const auto& [v, h, u, Cp, alpha, kappa] = all[i];
      for (const auto& [code, value] : {std::pair{1, v}, {2, h}, {4, u}, {5, Cp}, {9, alpha}, {10, kappa}}) {
        expect_same(value, ask(kThinCoolant, code, T[i], P));
      }
    }
  }
}

}  // namespace
}  // namespace Vk_fl_prop_lib
