// The interface that all fluids share: what it answers without a law of the fluid, and its inversions.

#include <gmock/gmock.h>

#include <cmath>
#include <set>
#include <sstream>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "fluids/fluid_test.h"

namespace Vk_fl_prop_lib {
namespace {

/// A fluid that defines no more than it must, apart from functions for the inversions to work on.
class PlainFluid : public CFluideBase {
 public:
  void loadFile(const char*) override {}
  void calCoeff(double, double, double, double, double, double) override {}
  int Get_fluidType() const override { return 0; }
  double alfa_t(double, double, double) const override { return 0; }
  double alfa_p(double, double, double) const override { return 0; }
  double uPV(double x, double y) const override { return x * x * y; }
  double pUV(double, double) const override { return 7; }  // has no slope

  using CFluideBase::invertion_x;
  using CFluideBase::invertion_y;
};

class FluidInterface : public QuietTest {
 protected:
  const PlainFluid plain{};
  const CIdG gas{kN2_IDG};
  const CBrine glycerol{kGlycerol_Water};
  const CLiquide oil{kOil};
};

/// The answers to the questions that concern fluids of two phases and moist air alone.
std::vector<double> foreign_answers(const CFluideBase& f) {
  constexpr double T = 320, P = 2e5, x = 0.5, w = 0.01, h = 2e5, v = 0.01, Rh = 0.5, t = 300;
  double p_c = 0, T_c = 0, v_c = 0, wsat = 0;
  f.GetCritic(&p_c, &T_c, &v_c);
  // clang-format off
  return {f.pSat(T, P), f.tSat(P), f.uTX(T, x), f.vTX(T, x), f.hTX(T, x), f.xPH(P, h), p_c, T_c, v_c, f.GetTmin(),
          f.rhTWP(T, w, P), f.wTRhP(T, Rh, P), f.TdewWP(w, P), f.hTW(T, w, P, 0), f.hSatTP(T, P),
          f.thumTWP(T, w, P, 0), f.wSatT(T, P), f.CpTW(T, w, P, 0), f.CvTW(T, w, P, 0, 0), f.muTW(T, w, P, 0),
          f.lambdaTW(T, w, P, 0), f.sTWP(T, w, P, 0), f.wTH(T, h, P), f.wTV(T, v, P), f.vTW(T, w, P, 0),
          f.tTdewWP(t, w, P), f.wTTdewP(T, t, P), f.tThumW(t, w, P, 0), f.Cphum_TThumW(T, t, w, P),
          f.tsatHWP(h, w, P, &wsat), wsat};
  // clang-format on
}

TEST_F(FluidInterface, QuestionsOfOtherFluidsComplainAndAnswerZero) {
  std::multiset<std::string> expected = {"The function 'pSat' is only for multiphase fluid and moist air!",
                                         "The function 'tSat' is only for multiphase fluid and moist air!"};
  for (const std::string operation : {"uTX", "vTX", "hTX", "xPH", "GetTmin", "GetCritic"}) {
    expected.insert("The function '" + operation + "' is only for multiphase fluid!");
  }
  for (const std::string operation :
       {"rhTWP", "wTRhP", "TdewWP", "hTW", "hSatTP", "thumTWP", "wSatT",   "sTWP",   "lambdaTW",     "muTW",
        "CpTW",  "CvTW",  "wTH",    "wTV", "vTW",    "tTdewWP", "wTTdewP", "tThumW", "Cphum_TThumW", "tsatHWP"}) {
    expected.insert("The function '" + operation + "' is only for moist air!");
  }
  for (const CFluideBase* f : std::initializer_list<const CFluideBase*>{&plain, &gas, &glycerol, &oil}) {
    EXPECT_THAT(foreign_answers(*f), ::testing::Each(0.0));
    std::multiset<std::string> lines;
    std::istringstream text(complaints());
    for (std::string line; std::getline(text, line);) lines.insert(line);
    EXPECT_EQ(lines, expected);
  }
  EXPECT_EQ(CAirHumide().tSat(1e5), 0);  // its own tSat takes two arguments
  EXPECT_EQ(complaints(), "The function 'tSat' is only for multiphase fluid and moist air!\n");
}

TEST_F(FluidInterface, TellsTheVersionOfTheLibrary) {
  double version = 0;
  GetVersion(&version);
  EXPECT_EQ(version, 1.0);
  char text[100] = "> ";
  GetInfo(text);
  GetHistoric(text);
  EXPECT_STREQ(text, "> Hydrolyte.dll dated at: Aug 09, 2004\nVersion: 1.0Modification at ");
}

TEST_F(FluidInterface, InversionsFindTheArgumentAndWarnAtTheirLastStep) {
  const auto find_x = [&](double y, double x0, int max_it, double x_min = 0, double x_max = INF) {
    return plain.invertion_x(&CFluideBase::uPV, y, x0, 1.5, TOL, max_it, x_min, x_max);
  };
  EXPECT_NEAR(find_x(6, 5, MAX_IT), 2, 1e-9);
  EXPECT_NEAR(find_x(6, 2, 2), 2, 1e-12);  // one of two steps
  EXPECT_NEAR(plain.invertion_y(&CFluideBase::uPV, 6, 2.0, 0.1, TOL, MAX_IT, 0, INF), 1.5, 1e-9);
  // A not-a-number as the next step (0 / 0, with an error of 0) becomes the upper limit.
  EXPECT_EQ(plain.invertion_x(&CFluideBase::pUV, 7, 2.0, 1.5, TOL, MAX_IT, 0, 10), 10.0);
  EXPECT_EQ(complaints(), "");

  EXPECT_EQ(find_x(6, 2, 0), 2);
  EXPECT_NEAR(find_x(6, 2, 1), 2, 1e-12);            // though it converged
  EXPECT_NEAR(find_x(600, 50, 1, 1, 40), 29, 1e-6);  // the start may lie outside of the limits
  EXPECT_EQ(find_x(600, 50, MAX_IT, 1, 10), 10);     // the root is 20
  EXPECT_EQ(find_x(0, 2, MAX_IT, 1, 10), 1);         // an infinite error
  EXPECT_EQ(complaints(), kNoConvergence + kNoConvergence + kNoConvergence + kNoConvergence + kNoConvergence);
  EXPECT_EQ(plain.invertion_y(&CFluideBase::uPV, 6, 2.0, 1.5, TOL, 0, 0, INF), 1.5);
  EXPECT_EQ(complaints(), "Warning : Thermodynamical function <invertion_y> dit not converge\n\n");
}

TEST_F(FluidInterface, BalanceCoefficientsOfAnIdealGas) {
  // With dv/dT = v / T and dv/dP = -v / P the coefficients reduce to these.
  CIdG f(kO2_IDG);
  const double T = 350, P = 2e5, h = f.hTP(T, P), v = f.vTP(T, P, 1), Cp = f.CpTP(T, P, 1), Cv = f.CvTP(T, P, 1);
  f.calCoeff(T, P, 1, h, v, Cp);
  const double expected[] = {0, v * h / (T * Cp) - v, -v / (T * Cp), Cv / Cp, Cv / (Cp * P), h / P - v, -1 / P,
                             0, Cv / (P * v)};
  for (std::size_t i = 0; i < 9; ++i) {
    EXPECT_NEAR(f.calcCoeffs[i], expected[i], 1e-12 * std::fabs(expected[i]) + 1e-15) << i;
  }
}

}  // namespace
}  // namespace Vk_fl_prop_lib
