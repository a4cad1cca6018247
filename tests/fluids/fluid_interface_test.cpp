// The interface that all fluids share: what it answers without a law of the fluid, and its inversions.

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
  double uPV(double x, double y) const override {  // both inversions have the root x = sqrt(6 / y), or y = 6 / x^2
    evaluated.push_back(x);
    return x * x * y;
  }
  double pUV(double, double) const override { return 7; }  // has no slope

  using CFluideBase::invertion_x;
  using CFluideBase::invertion_y;
  mutable std::vector<double> evaluated;  // first arguments of uPV
};

class FluidInterface : public QuietTest {
 protected:
  const PlainFluid plain{};
  const CIdG gas{kN2_IDG};
  const CBrine glycerol{kGlycerol_Water};
  const CLiquide liquid{};
};

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
  const CFluideBase* const fluids[] = {&plain, &gas, &glycerol, &liquid};
  for (const CFluideBase* f : fluids) {
    EXPECT_EQ(f->pSat(1, 2) + f->tSat(1) + f->uTX(1, 2) + f->vTX(1, 2) + f->hTX(1, 2) + f->xPH(1, 2) + f->GetTmin() +
                  f->rhTWP(1, 2, 3) + f->wTRhP(1, 2, 3) + f->TdewWP(1, 2) + f->hTW(1, 2, 3, 4) + f->hSatTP(1, 2) +
                  f->thumTWP(1, 2, 3, 4) + f->wSatT(1, 2) + f->sTWP(1, 2, 3, 4) + f->lambdaTW(1, 2, 3, 4) +
                  f->muTW(1, 2, 3, 4) + f->CpTW(1, 2, 3, 4) + f->CvTW(1, 2, 3, 4, 5) + f->wTH(1, 2, 3) +
                  f->wTV(1, 2, 3) + f->vTW(1, 2, 3, 4) + f->tTdewWP(1, 2, 3) + f->wTTdewP(1, 2, 3) +
                  f->tThumW(1, 2, 3, 4) + f->Cphum_TThumW(1, 2, 3, 4) + f->tsatHWP(1, 2, 3, nullptr),
              0);
    double unchanged = 7;
    f->GetCritic(&unchanged, &unchanged, &unchanged);
    EXPECT_EQ(unchanged, 7);
    std::multiset<std::string> lines;
    std::istringstream text(complaints());
    for (std::string line; std::getline(text, line);) lines.insert(line);
    EXPECT_EQ(lines, expected);
  }
  EXPECT_EQ(CAirHumide().tSat(1e5), 0);  // its own tSat takes two arguments
  EXPECT_EQ(complaints(), "The function 'tSat' is only for multiphase fluid and moist air!\n");
}

TEST_F(FluidInterface, EveryClassKnowsItsKind) {
  EXPECT_TRUE(glycerol.Get_fluidType() == 1 && liquid.Get_fluidType() == 2 && gas.Get_fluidType() == 3);
  EXPECT_TRUE(glycerol.Get_x() == 0 && liquid.Get_x() == 0 && gas.Get_x() == 1 && plain.Get_x() == -1);
  EXPECT_EQ(liquid.Get_M() + glycerol.Get_M() + gas.uTV(300, 1) + liquid.hTV(300, 1) + plain.hTRh(300, 1, 1e5), 0);
}

TEST_F(FluidInterface, LibraryDescribesItself) {
  double version = 0;
  GetVersion(&version);
  EXPECT_EQ(version, 1.0);
  char text[100] = "> ";
  GetInfo(text);
  GetHistoric(text);
  EXPECT_STREQ(text, "> Hydrolyte.dll dated at: Aug 09, 2004\nVersion: 1.0Modification at ");
}

TEST_F(FluidInterface, InversionsFindTheArgument) {
  EXPECT_NEAR(plain.invertion_x(&CFluideBase::uPV, 6, 5.0, 1.5, TOL, MAX_IT, 0, INF), 2.0, 1e-9);
  EXPECT_NEAR(plain.invertion_y(&CFluideBase::uPV, 6, 2.0, 0.1, TOL, MAX_IT, 0, INF), 1.5, 1e-9);
  // A not-a-number as the next step (0 / 0, with an error of 0) becomes the upper limit.
  EXPECT_EQ(plain.invertion_x(&CFluideBase::pUV, 7, 2.0, 1.5, TOL, MAX_IT, 0, 10), 10.0);
}

TEST_F(FluidInterface, InversionsWarnAtTheirLastStep) {
  // It starts outside of the limits, but stays inside afterwards; the root is 20.
  EXPECT_EQ(plain.invertion_x(&CFluideBase::uPV, 600, 50.0, 1.5, TOL, MAX_IT, 1, 10), 10.0);
  EXPECT_EQ(complaints(), kNoConvergence);
  EXPECT_EQ(plain.evaluated.at(2), 50.0);
  EXPECT_EQ(plain.evaluated.size(), 3u * MAX_IT);
  for (std::size_t i = 3; i < plain.evaluated.size(); ++i) EXPECT_LE(plain.evaluated[i], 10 * (1 + TOL));
  // Even if it converged in that step.
  EXPECT_EQ(plain.invertion_x(&CFluideBase::uPV, 6, 2.0, 1.5, TOL, 0, 0, INF), 2.0);
  EXPECT_NEAR(plain.invertion_x(&CFluideBase::uPV, 6, 2.0, 1.5, TOL, 1, 0, INF), 2.0, 1e-12);
  EXPECT_EQ(complaints(), kNoConvergence + kNoConvergence);
  EXPECT_NEAR(plain.invertion_x(&CFluideBase::uPV, 6, 2.0, 1.5, TOL, 2, 0, INF), 2.0, 1e-12);  // one of two: silent
  EXPECT_EQ(plain.invertion_x(&CFluideBase::uPV, 0, 2.0, 1.5, TOL, MAX_IT, 1, 10), 1.0);       // 0: an infinite error
  EXPECT_EQ(complaints(), kNoConvergence);
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
    EXPECT_NEAR(f.calcCoeffs[i], expected[i], 1e-14 * (1 + std::fabs(expected[i]))) << i;
  }
}

}  // namespace
}  // namespace Vk_fl_prop_lib
