#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluideBase.h"

#include <cstdio>
#include <cstring>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/newton.h"

namespace Vk_fl_prop_lib {
namespace {

constexpr const char* kTwoPhase = "multiphase fluid";
constexpr const char* kMoistAir = "moist air";
constexpr const char* kTwoPhaseOrMoistAir = "multiphase fluid and moist air";

/// The answer to a question that has no meaning for the fluid.
double complain(const char* function, const char* kind) {
  std::fprintf(stderr, "The function '%s' is only for %s!\n", function, kind);
  return 0.0;
}

void append(char* text, const char* tail) { std::memcpy(text + std::strlen(text), tail, std::strlen(tail) + 1); }

double solution_or_warning(const NewtonResult& result, int max_it, const char* function) {
  if (result.iterations >= max_it) {
    std::fprintf(stderr, "Warning : Thermodynamical function <%s> dit not converge\n\n", function);
  }
  return result.x;
}

}  // namespace

double CFluideBase::invertion_x(PairFunction f, double y, double x0, double other, double eps, int maxIt, double xMin,
                                double xMax) const {
  const auto of_x = [&](double x) { return (this->*f)(x, other); };
  return solution_or_warning(newton(of_x, y, x0, eps, maxIt, xMin, xMax), maxIt, "invertion_x");
}

double CFluideBase::invertion_y(PairFunction f, double y, double other, double x0, double eps, int maxIt, double xMin,
                                double xMax) const {
  const auto of_y = [&](double x) { return (this->*f)(other, x); };
  return solution_or_warning(newton(of_y, y, x0, eps, maxIt, xMin, xMax), maxIt, "invertion_y");
}

// Only one kind of fluid can answer these.
double CFluideBase::pSat(double, double) const { return complain("pSat", kTwoPhaseOrMoistAir); }
double CFluideBase::tSat(double) const { return complain("tSat", kTwoPhaseOrMoistAir); }
double CFluideBase::uTX(double, double) const { return complain("uTX", kTwoPhase); }
double CFluideBase::vTX(double, double) const { return complain("vTX", kTwoPhase); }
double CFluideBase::hTX(double, double) const { return complain("hTX", kTwoPhase); }
double CFluideBase::xPH(double, double) const { return complain("xPH", kTwoPhase); }
void CFluideBase::GetCritic(double*, double*, double*) const { complain("GetCritic", kTwoPhase); }
double CFluideBase::GetTmin() const { return complain("GetTmin", kTwoPhase); }
double CFluideBase::rhTWP(double, double, double) const { return complain("rhTWP", kMoistAir); }
double CFluideBase::wTRhP(double, double, double) const { return complain("wTRhP", kMoistAir); }
double CFluideBase::TdewWP(double, double) const { return complain("TdewWP", kMoistAir); }
double CFluideBase::hTW(double, double, double, double) const { return complain("hTW", kMoistAir); }
double CFluideBase::hSatTP(double, double) const { return complain("hSatTP", kMoistAir); }
double CFluideBase::thumTWP(double, double, double, double) const { return complain("thumTWP", kMoistAir); }
double CFluideBase::wSatT(double, double) const { return complain("wSatT", kMoistAir); }
double CFluideBase::CpTW(double, double, double, double) const { return complain("CpTW", kMoistAir); }
double CFluideBase::CvTW(double, double, double, double, double) const { return complain("CvTW", kMoistAir); }
double CFluideBase::muTW(double, double, double, double) const { return complain("muTW", kMoistAir); }
double CFluideBase::lambdaTW(double, double, double, double) const { return complain("lambdaTW", kMoistAir); }
double CFluideBase::sTWP(double, double, double, double) const { return complain("sTWP", kMoistAir); }
double CFluideBase::wTH(double, double, double) const { return complain("wTH", kMoistAir); }
double CFluideBase::wTV(double, double, double) const { return complain("wTV", kMoistAir); }
double CFluideBase::vTW(double, double, double, double) const { return complain("vTW", kMoistAir); }
double CFluideBase::tTdewWP(double, double, double) const { return complain("tTdewWP", kMoistAir); }
double CFluideBase::wTTdewP(double, double, double) const { return complain("wTTdewP", kMoistAir); }
double CFluideBase::tThumW(double, double, double, double) const { return complain("tThumW", kMoistAir); }
double CFluideBase::Cphum_TThumW(double, double, double, double) const { return complain("Cphum_TThumW", kMoistAir); }
double CFluideBase::tsatHWP(double, double, double, double*) const { return complain("tsatHWP", kMoistAir); }

// Without an answer in this class, silently.
double CFluideBase::CvTP(double, double, double) const { return 0.0; }
double CFluideBase::uTP(double, double, double) const { return 0.0; }
double CFluideBase::pUV(double, double) const { return 0.0; }
double CFluideBase::uPV(double, double) const { return 0.0; }
double CFluideBase::muTV(double, double) const { return 0.0; }
double CFluideBase::hPS(double, double) const { return 0.0; }
double CFluideBase::hPV(double, double) const { return 0.0; }
double CFluideBase::sPH(double, double) const { return 0.0; }
double CFluideBase::vPH(double, double) const { return 0.0; }
double CFluideBase::tHP(double, double) const { return 0.0; }
double CFluideBase::hTP(double, double, double) const { return 0.0; }
double CFluideBase::CpPH(double, double) const { return 0.0; }
double CFluideBase::lambdaPH(double, double) const { return 0.0; }
double CFluideBase::muPH(double, double) const { return 0.0; }
double CFluideBase::CpTP(double, double, double) const { return 0.0; }
double CFluideBase::lambdaTP(double, double, double) const { return 0.0; }
double CFluideBase::muTP(double, double, double) const { return 0.0; }
double CFluideBase::vTP(double, double, double) const { return 0.0; }
double CFluideBase::sTP(double, double, double) const { return 0.0; }
double CFluideBase::tPV(double, double) const { return 0.0; }
double CFluideBase::tPS(double, double) const { return 0.0; }
double CFluideBase::dCvTP_dT(double, double, double) const { return 0.0; }
double CFluideBase::Get_M() const { return 0.0; }
double CFluideBase::Get_x() const { return -1.0; }
double CFluideBase::xTSatH(double, double) const { return 0.0; }
double CFluideBase::beta_p(double, double, double) const { return 0.0; }
double CFluideBase::beta_h(double, double, double) const { return 0.0; }
double CFluideBase::beta_p2(double, double, double) const { return 0.0; }
double CFluideBase::beta_h2(double, double, double) const { return 0.0; }
double CFluideBase::hTPliq(double, double) const { return 0.0; }
double CFluideBase::sTPliq(double, double) const { return 0.0; }
double CFluideBase::vTPliq(double, double) const { return 0.0; }
double CFluideBase::hTPgaz(double, double) const { return 0.0; }
double CFluideBase::vTPgaz(double, double) const { return 0.0; }
double CFluideBase::hPVgaz(double, double) const { return 0.0; }
double CFluideBase::sPVgaz(double, double) const { return 0.0; }
double CFluideBase::pTVgaz(double, double) const { return 0.0; }
double CFluideBase::sTPgaz(double, double) const { return 0.0; }
double CFluideBase::hTRh(double, double, double) const { return 0.0; }
double CFluideBase::dhgazDp(double, double) const { return 0.0; }
double CFluideBase::dhliqDp(double, double) const { return 0.0; }
double CFluideBase::pvWP(double, double) const { return 0.0; }
double CFluideBase::dudw(double, double, double, double, double) const { return 0.0; }
double CFluideBase::dhdw(double, double, double, double, double) const { return 0.0; }
double CFluideBase::hTP(double, double) const { return 0.0; }
double CFluideBase::uTP(double, double) const { return 0.0; }
double CFluideBase::sTP(double, double) const { return 0.0; }
double CFluideBase::vTP(double, double) const { return 0.0; }
double CFluideBase::GetPVL() const { return 0.0; }
double CFluideBase::GetPVH() const { return 0.0; }
double CFluideBase::hTV(double, double) const { return 0.0; }
double CFluideBase::sTV(double, double) const { return 0.0; }
double CFluideBase::uTV(double, double) const { return 0.0; }
double CFluideBase::lambdaTV(double, double) const { return 0.0; }
double CFluideBase::CpTV(double, double) const { return 0.0; }
double CFluideBase::CvTV(double, double) const { return 0.0; }

void GetVersion(double* version) { *version = 1.0; }

void GetInfo(char* text) { append(text, "Hydrolyte.dll dated at: Aug 09, 2004\nVersion: 1.0"); }

void GetHistoric(char* text) { append(text, "Modification at "); }

}  // namespace Vk_fl_prop_lib
