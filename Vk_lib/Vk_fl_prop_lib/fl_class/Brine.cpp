#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine_laws.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluidFile.h"

namespace Vk_fl_prop_lib {
using namespace brine_laws;

CBrine::CBrine(const double* vector) {
  BrineVector v{};
  v.conc = vector[0];
  v.kappa = vector[1];
  std::memcpy(v.c, vector + 2, sizeof v.c);
  v.concRef = vector[92];
  v.tRef = vector[93];
  v.pRef = vector[94];
  c = v;
}

void CBrine::loadFile(const char* name) {
  SourceFile file(name);
  if (file.is_open()) loadFile(file);
}

void CBrine::loadFile(FluidFile& file) {
  BrineVector read = c;
  file.find_section("FLUID_CONSTANTS");
  if (double bulk_modulus = 0; file.labelled_number(bulk_modulus)) read.kappa = 1 / bulk_modulus;
  file.find_section("COEFFICIENTS");
  for (int term = 0; term < 18; ++term) {
    for (auto& polynomial : read.c) file.number(polynomial[term]);
  }
  file.find_section("REFERENCE");
  for (double* value : {&read.concRef, &read.tRef, &read.pRef}) file.number(*value);
  file.find_section("LIMITS_CONCENTRATION");
  for (double* value : {&read.cMin, &read.cMax}) file.number(*value);
  initCoeffs(read);
}

double CBrine::poly(int i, double T) const { return brine_laws::poly(c, i, T); }

double CBrine::tFreeze() const { return poly(kFreezing, c.conc) + 273.15; }

double CBrine::alpha(double T) const { return brine_laws::alpha(c, T, poly(kDensity, T)); }

double CBrine::intCpdT(double T) const { return brine_laws::intCpdT(c, T); }

double CBrine::intCpsTdT(double T) const {
  const auto& a = c.c[kCp];
  const double T2 = T * T, T3 = T2 * T;
  const double Tr = c.tRef, Tr2 = Tr * Tr, Tr3 = Tr2 * Tr;
  // Antiderivatives of (T - Tr)^n / T.
  const double I0 = std::log(T);
  const double I1 = T - Tr * I0;
  const double I2 = T2 / 2 - 2 * T * Tr + Tr2 * I0;
  const double I3 = T3 / 3 - 3 * Tr * T2 / 2 + 3 * Tr2 * T - Tr3 * I0;
  const double dc = c.conc - c.concRef;
  const double dc2 = dc * dc, dc3 = dc2 * dc, dc4 = dc3 * dc, dc5 = dc4 * dc;
  // The term of a[15] is a sum where the pattern has a product: the entropy of this model carries I0 once more.
  return a[0] * I0 + a[1] * I1 + a[2] * I2 + a[3] * I3 + dc * (a[4] * I0 + a[5] * I1 + a[6] * I2 + a[7] * I3) +
         dc2 * (a[8] * I0 + a[9] * I1 + a[10] * I2 + a[11] * I3) + dc3 * (a[12] * I0 + a[13] * I1 + a[14] * I2) +
         (dc4 * a[15] + I0) + dc4 * a[16] * I1 + dc5 * a[17] * I0;
}

LiquidPoint CBrine::at(double T, double P) const { return brine_laws::at(c, T, P); }

double CBrine::h(const LiquidPoint& p) const { return brine_laws::h(c, p, intCpdT(p.T)); }

double CBrine::u(const LiquidPoint& p) const { return h(p) - p.v * p.P; }

double CBrine::s(const LiquidPoint& p) const {
  return intCpsTdT(p.T) - intCpsTdT(c.tRef) + p.v * p.alpha / c.kappa - p.v_ref * p.alpha / c.kappa;
}

// From T and P.
double CBrine::vTP(double T, double P, double) const {
  return std::exp(std::log(1 / poly(kDensity, T)) - (P - c.pRef) * c.kappa);
}
double CBrine::CpTP(double T, double, double) const { return poly(kCp, T); }
double CBrine::lambdaTP(double T, double, double) const { return poly(kConductivity, T); }
double CBrine::muTP(double T, double, double) const { return std::exp(poly(kLogViscosity, T)) * 0.001; }
double CBrine::muTV(double T, double) const { return std::exp(poly(kLogViscosity, T)) * 0.001; }
double CBrine::alfa_t(double T, double P, double) const { return at(T, P).alfa_t(); }
double CBrine::alfa_p(double T, double P, double) const { return at(T, P).alfa_p(); }
double CBrine::beta_h(double T, double P, double) const { return at(T, P).beta_h(); }
double CBrine::beta_p(double T, double P, double) const { return at(T, P).beta_p(); }
double CBrine::hTP(double T, double P, double) const { return h(at(T, P)); }
double CBrine::uTP(double T, double P, double) const { return u(at(T, P)); }
double CBrine::sTP(double T, double P, double) const { return s(at(T, P)); }
double CBrine::CvTP(double T, double P, double) const { return at(T, P).Cv(); }
double CBrine::hTP(double T, double P) const { return hTP(T, P, 0.0); }
double CBrine::sTP(double T, double P) const { return sTP(T, P, 0.0); }
double CBrine::vTP(double T, double P) const { return vTP(T, P, 0.0); }

// From other pairs.
double CBrine::vPH(double P, double h) const { return vTP(tHP(h, P), P, 0.0); }
double CBrine::sPH(double P, double h) const { return sTP(tHP(h, P), P, 0.0); }
double CBrine::muPH(double P, double h) const { return muTP(tHP(h, P), P, 0.0); }
double CBrine::lambdaPH(double P, double h) const { return lambdaTP(tHP(h, P), P, 0.0); }
double CBrine::hPV(double P, double v) const { return hTP(tPV(P, v), P, 0.0); }
double CBrine::uPV(double P, double v) const { return uTP(tPV(P, v), P, 0.0); }
double CBrine::hPS(double P, double s) const { return hTP(tPS(P, s), P, 0.0); }

double CBrine::CpPH(double P, double h) const {
  const double T = tHP(h, P);
  return (hTP(1.00000001 * T, P, 0) - hTP(0.99999999 * T, P, 0)) / (2 * T * 1e-8);
}

// Inversions, each from a start with the coefficients of the reference temperature.
double CBrine::tHP(double h, double P) const {
  const double Cp = CpTP(c.tRef, P, 0);
  if (Cp == 0) {
    std::fputs("Assertion failed: Cp!=0, file Vk_lib/Vk_fl_prop_lib/fl_class/Brine, line 442\n", stderr);
    std::abort();
  }
  return invertion_x(&CFluideBase::hTP, h, h / Cp + c.tRef, P, TOL, MAX_IT, -INF, INF);
}

double CBrine::tPS(double P, double s) const {
  const double start = s / (CpTP(c.tRef, P, 0) / c.tRef) + c.tRef;
  return invertion_x(&CFluideBase::sTP, s, start, P, TOL, MAX_IT, -INF, INF);
}

double CBrine::tPV(double P, double v) const {
  const double start = std::log(v / vTP(c.tRef, P, 0)) / alpha(c.tRef) + c.tRef;
  return invertion_x(&CFluideBase::vTP, v, start, P, TOL, MAX_IT, -INF, INF);
}

double CBrine::pUV(double u, double v) const {
  return invertion_x(&CFluideBase::uPV, u, c.pRef, v, TOL, MAX_IT, 0, INF);
}

}  // namespace Vk_fl_prop_lib
