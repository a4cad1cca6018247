// The interface that all fluids share: its default answers, its inversions, and what every class says about itself.

#include <cmath>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"
#include "fluids/quiet_test.h"

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

  double uPV(double x, double y) const override {  // both inversions have the root x = sqrt(6 / y), or y = 6 / x^2
    evaluated.push_back(x);
    return x * x * y;
  }
  double pUV(double, double) const override { return 7; }  // has no slope

  using CFluideBase::invertion_x;
  using CFluideBase::invertion_y;

  mutable std::vector<double> evaluated;  // first arguments of uPV
};

// ---- questions that have no meaning for the fluid ----

class FluidInterface : public QuietTest {
 protected:
  /// Asks through the root, and on objects, where an overload might hide the operation.
  template <class Ask>
  void expect_complaint(const std::string& operation, const std::string& kind, Ask ask) {
    const CFluideBase& root = plain;
    for (const double answer : {ask(root), ask(gas), ask(brine), ask(liquid)}) EXPECT_EQ(answer, 0) << operation;
    const std::string line = "The function '" + operation + "' is only for " + kind + "!\n";
    EXPECT_EQ(complaints(), line + line + line + line);
  }

  const PlainFluid plain{};
  const CIdG gas{kN2_IDG};
  const CBrine brine{kGlycerol_Water};
  const CLiquide liquid{};
};

#define ONLY_FOR(kind, operation, ...) \
  expect_complaint(#operation, kind, [](const auto& fluid) { return fluid.operation(__VA_ARGS__); })

TEST_F(FluidInterface, QuestionsOfOtherFluidsComplainAndAnswerZero) {
  ONLY_FOR("multiphase fluid and moist air", pSat, 300, 1e5);
  ONLY_FOR("multiphase fluid and moist air", tSat, 1e5);
  ONLY_FOR("multiphase fluid", uTX, 300, 0.5);
  ONLY_FOR("multiphase fluid", vTX, 300, 0.5);
  ONLY_FOR("multiphase fluid", hTX, 300, 0.5);
  ONLY_FOR("multiphase fluid", xPH, 1e5, 2e5);
  ONLY_FOR("multiphase fluid", GetTmin);
  ONLY_FOR("moist air", rhTWP, 300, 0.01, 1e5);
  ONLY_FOR("moist air", wTRhP, 300, 0.5, 1e5);
  ONLY_FOR("moist air", TdewWP, 0.01, 1e5);
  ONLY_FOR("moist air", hTW, 300, 0.01, 1e5, 0);
  ONLY_FOR("moist air", hSatTP, 300, 1e5);
  ONLY_FOR("moist air", thumTWP, 300, 0.01, 1e5, 0);
  ONLY_FOR("moist air", wSatT, 300, 1e5);
  ONLY_FOR("moist air", sTWP, 300, 0.01, 1e5, 0);
  ONLY_FOR("moist air", lambdaTW, 300, 0.01, 1e5, 0);
  ONLY_FOR("moist air", muTW, 300, 0.01, 1e5, 0);
  ONLY_FOR("moist air", CpTW, 300, 0.01, 1e5, 0);
  ONLY_FOR("moist air", CvTW, 300, 0.01, 1e5, 0, 0);
  ONLY_FOR("moist air", wTH, 300, 2e5, 1e5);
  ONLY_FOR("moist air", wTV, 300, 0.8, 1e5);
  ONLY_FOR("moist air", vTW, 300, 0.01, 1e5, 0);
  ONLY_FOR("moist air", tTdewWP, 280, 0.01, 1e5);
  ONLY_FOR("moist air", wTTdewP, 300, 280, 1e5);
  ONLY_FOR("moist air", tThumW, 290, 0.01, 1e5, 0);
  ONLY_FOR("moist air", Cphum_TThumW, 300, 290, 0.01, 1e5);
  ONLY_FOR("moist air", tsatHWP, 2e5, 0.01, 1e5, nullptr);

  double p = 1, T = 2, v = 3;
  gas.GetCritic(&p, &T, &v);
  EXPECT_EQ(complaints(), "The function 'GetCritic' is only for multiphase fluid!\n");
  EXPECT_TRUE(p == 1 && T == 2 && v == 3);

  EXPECT_EQ(CAirHumide().tSat(1e5), 0);  // its own tSat takes two arguments
  EXPECT_EQ(complaints(), "The function 'tSat' is only for multiphase fluid and moist air!\n");
}

TEST_F(FluidInterface, OtherDefaultsAreSilent) {
  const CFluideBase& f = plain;
  for (const double answer : {f.CvTP(1, 2, 3),
                              f.uTP(1, 2, 3),
                              f.muTV(1, 2),
                              f.hPS(1, 2),
                              f.hPV(1, 2),
                              f.sPH(1, 2),
                              f.vPH(1, 2),
                              f.tHP(1, 2),
                              f.hTP(1, 2, 3),
                              f.CpPH(1, 2),
                              f.lambdaPH(1, 2),
                              f.muPH(1, 2),
                              f.CpTP(1, 2, 3),
                              f.lambdaTP(1, 2, 3),
                              f.muTP(1, 2, 3),
                              f.vTP(1, 2, 3),
                              f.sTP(1, 2, 3),
                              f.tPV(1, 2),
                              f.tPS(1, 2),
                              f.dCvTP_dT(1, 2, 3),
                              f.Get_M(),
                              f.xTSatH(1, 2),
                              f.beta_p(1, 2, 3),
                              f.beta_h(1, 2, 3),
                              f.beta_p2(1, 2, 3),
                              f.beta_h2(1, 2, 3),
                              f.hTPliq(1, 2),
                              f.sTPliq(1, 2),
                              f.vTPliq(1, 2),
                              f.hTPgaz(1, 2),
                              f.vTPgaz(1, 2),
                              f.hPVgaz(1, 2),
                              f.sPVgaz(1, 2),
                              f.pTVgaz(1, 2),
                              f.sTPgaz(1, 2),
                              f.hTRh(1, 2, 3),
                              f.dhgazDp(1, 2),
                              f.dhliqDp(1, 2),
                              f.pvWP(1, 2),
                              f.dudw(1, 2, 3, 4, 5),
                              f.dhdw(1, 2, 3, 4, 5),
                              f.hTP(1, 2),
                              f.uTP(1, 2),
                              f.sTP(1, 2),
                              f.vTP(1, 2),
                              f.GetPVL(),
                              f.GetPVH(),
                              f.hTV(1, 2),
                              f.sTV(1, 2),
                              f.uTV(1, 2),
                              f.lambdaTV(1, 2),
                              f.CpTV(1, 2),
                              f.CvTV(1, 2)}) {
    EXPECT_EQ(answer, 0);
  }
  EXPECT_EQ(f.Get_x(), -1);
}

TEST_F(FluidInterface, EveryClassKnowsItsKind) {
  EXPECT_EQ(CBrine(50.0).Get_fluidType(), 1);
  EXPECT_EQ(CLiquide().Get_fluidType(), 2);
  EXPECT_EQ(CIdG().Get_fluidType(), 3);
  EXPECT_EQ(CBrine(50.0).Get_x(), 0);
  EXPECT_EQ(CLiquide().Get_x(), 0);
  EXPECT_EQ(CIdG().Get_x(), 1);
  EXPECT_EQ(CBrine(kGlycerol_Water).Get_M(), 0);
  EXPECT_EQ(CLiquide().Get_M(), 0);
  EXPECT_EQ(CIdG(kH2_IDG).Get_M(), 0.002016);
  EXPECT_EQ(CIdG(kH2_IDG).uTV(300, 1) + CLiquide().hTV(300, 1), 0);  // nothing from T and v
}

TEST_F(FluidInterface, LibraryDescribesItself) {
  double version = 0;
  GetVersion(&version);
  EXPECT_EQ(version, 1.0);
  char text[100] = "> ";
  GetInfo(text);
  EXPECT_STREQ(text, "> Hydrolyte.dll dated at: Aug 09, 2004\nVersion: 1.0");
  char history[100] = "> ";
  GetHistoric(history);
  EXPECT_STREQ(history, "> Modification at ");
}

// ---- inversions ----

constexpr const char* kWarningX = "Warning : Thermodynamical function <invertion_x> dit not converge\n\n";
constexpr const char* kWarningY = "Warning : Thermodynamical function <invertion_y> dit not converge\n\n";

TEST_F(FluidInterface, InversionsFindTheArgument) {
  EXPECT_NEAR(plain.invertion_x(&CFluideBase::uPV, 6, 5.0, 1.5, TOL, MAX_IT, 0, INF), 2.0, 1e-9);
  EXPECT_NEAR(plain.invertion_y(&CFluideBase::uPV, 6, 2.0, 0.1, TOL, MAX_IT, 0, INF), 1.5, 1e-9);
}

TEST_F(FluidInterface, InversionStartsOutsideTheLimitsButStaysInsideAfterwards) {
  EXPECT_EQ(plain.invertion_x(&CFluideBase::uPV, 600, 50.0, 1.5, TOL, MAX_IT, 1, 10), 10.0);  // the root is 20
  EXPECT_EQ(complaints(), kWarningX);
  EXPECT_EQ(plain.evaluated.at(2), 50.0);
  EXPECT_EQ(plain.evaluated.size(), 3u * MAX_IT);
  for (std::size_t i = 3; i < plain.evaluated.size(); ++i) EXPECT_LE(plain.evaluated[i], 10 * (1 + TOL));
}

TEST_F(FluidInterface, InversionWarnsAtItsLastStepEvenIfThatOneConverged) {
  EXPECT_EQ(plain.invertion_x(&CFluideBase::uPV, 6, 2.0, 1.5, TOL, 0, 0, INF), 2.0);
  EXPECT_EQ(complaints(), kWarningX);
  EXPECT_NEAR(plain.invertion_x(&CFluideBase::uPV, 6, 2.0, 1.5, TOL, 1, 0, INF), 2.0, 1e-12);
  EXPECT_EQ(complaints(), kWarningX);
  EXPECT_NEAR(plain.invertion_x(&CFluideBase::uPV, 6, 2.0, 1.5, TOL, 2, 0, INF), 2.0,
              1e-12);  // one step of two: silent
  EXPECT_EQ(plain.invertion_y(&CFluideBase::uPV, 6, 2.0, 1.5, TOL, 0, 0, INF), 1.5);
  EXPECT_EQ(complaints(), kWarningY);
}

TEST_F(FluidInterface, InversionSendsAnIterateThatIsNotANumberToTheUpperLimit) {
  EXPECT_EQ(plain.invertion_x(&CFluideBase::pUV, 7, 2.0, 1.5, TOL, MAX_IT, 0, 10), 10.0);  // 0 / 0, with an error of 0
}

TEST_F(FluidInterface, InversionOfZeroCanNotConverge) {
  EXPECT_EQ(plain.invertion_x(&CFluideBase::uPV, 0, 2.0, 1.5, TOL, MAX_IT, 1, 10), 1.0);  // the error is infinite
  EXPECT_EQ(complaints(), kWarningX);
}

TEST_F(FluidInterface, BalanceCoefficientsOfAnIdealGas) {
  // With dv/dT = v / T and dv/dP = -v / P the coefficients reduce to these.
  CIdG oxygen(kO2_IDG);
  const double T = 350, P = 2e5, h = oxygen.hTP(T, P), v = oxygen.vTP(T, P, 1), Cp = oxygen.CpTP(T, P, 1);
  const double Cv = oxygen.CvTP(T, P, 1);
  oxygen.calCoeff(T, P, 1, h, v, Cp);
  const double expected[] = {0, v * h / (T * Cp) - v, -v / (T * Cp), Cv / Cp, Cv / (Cp * P), h / P - v, -1 / P,
                             0, Cv / (P * v)};
  for (std::size_t i = 0; i < 9; ++i) {
    EXPECT_NEAR(oxygen.calcCoeffs[i], expected[i], 1e-14 * (1 + std::fabs(expected[i]))) << i;
  }
}

}  // namespace
}  // namespace Vk_fl_prop_lib
