#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"

#include <cmath>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluidFile.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/quintic.h"

namespace Vk_fl_prop_lib {

void CLiquide::loadFile(const char* name) {
  SourceFile file(name);
  if (file.is_open()) loadFile(file);
}

void CLiquide::loadFile(FluidFile& file) {
  LiquidVector read = c;
  file.find_section("FLUID_CONSTANTS");
  if (double bulk_modulus = 0; file.labelled_number(bulk_modulus)) read.kappa = 1 / bulk_modulus;
  for (double* value : {&read.tMin, &read.tMax, &read.pRef, &read.tRef, &read.hRef, &read.sRef}) {
    file.labelled_number(*value);
  }
  file.find_section("DENSITY");
  file.numbers(read.rho);
  file.find_section("SPEC_HEAT");
  file.numbers(read.cp);
  file.find_section("CONDUCTIVITY");
  file.numbers(read.lambda);
  file.find_section("VISCOSITY");
  file.numbers(read.mu);
  initCoeffs(read);
}

double CLiquide::vT(double T) const { return 1 / quintic(c.rho, T); }

double CLiquide::alpha(double T) const { return -vT(T) * quintic_slope(c.rho, T); }

LiquidPoint CLiquide::at(double T, double P) const {
  return {.T = T,
          .P = P,
          .kappa = c.kappa,
          .alpha = alpha(T),
          .v = vTP(T, P, 0),
          .v_ref = vTP(T, c.pRef, 0),
          .Cp = CpTP(T, P, 0)};
}

// From T and P.
double CLiquide::vTP(double T, double P, double) const { return std::exp(std::log(vT(T)) - (P - c.pRef) * c.kappa); }
double CLiquide::CpTP(double T, double, double) const { return quintic(c.cp, T); }
double CLiquide::lambdaTP(double T, double, double) const { return quintic(c.lambda, T); }
double CLiquide::muTP(double T, double, double) const { return std::exp(quintic(c.mu, T)); }
double CLiquide::muTV(double T, double) const { return muTP(T, 0, 0); }
double CLiquide::alfa_t(double T, double P, double) const { return at(T, P).alfa_t(); }
double CLiquide::alfa_p(double T, double P, double) const { return at(T, P).alfa_p(); }
double CLiquide::beta_h(double T, double P, double) const { return at(T, P).beta_h(); }
double CLiquide::beta_p(double T, double P, double) const { return at(T, P).beta_p(); }
double CLiquide::CvTP(double T, double P, double) const { return at(T, P).Cv(); }

double CLiquide::hTP(double T, double P, double) const {
  const LiquidPoint p = at(T, P);
  return quintic_integral(c.hRef, c.cp, T, c.tRef) - (p.v - p.v_ref) * (1 / c.kappa) * (1 - p.alpha * T);
}

double CLiquide::uTP(double T, double P, double x) const { return hTP(T, P, x) - vTP(T, P, x) * P; }

double CLiquide::sTP(double T, double P, double) const {
  const LiquidPoint p = at(T, P);
  return quintic_over_T_integral(c.sRef, c.cp, T, c.tRef) + (p.v - p.v_ref) * (1 / c.kappa) * p.alpha;
}

double CLiquide::hTP(double T, double P) const { return hTP(T, P, 0.0); }
double CLiquide::sTP(double T, double P) const { return sTP(T, P, 0.0); }
double CLiquide::vTP(double T, double P) const { return vTP(T, P, 0.0); }

// From other pairs.
double CLiquide::vPH(double P, double h) const { return vTP(tHP(h, P), P, 0.0); }
double CLiquide::sPH(double P, double h) const { return sTP(tHP(h, P), P, 0.0); }
double CLiquide::muPH(double P, double h) const { return muTP(tHP(h, P), P, 0.0); }
double CLiquide::lambdaPH(double P, double h) const { return lambdaTP(tHP(h, P), P, 0.0); }
double CLiquide::hPV(double P, double v) const { return hTP(tPV(P, v), P, 0.0); }
double CLiquide::uPV(double P, double v) const { return uTP(tPV(P, v), P, 0.0); }
double CLiquide::hPS(double P, double s) const { return hTP(tPS(P, s), P, 0.0); }

double CLiquide::CpPH(double P, double h) const {
  const double T = tHP(h, P);
  return (hTP(1.00000001 * T, P, 0) - hTP(0.99999999 * T, P, 0)) / (2 * T * 1e-8);
}

// Inversions, each from a start with the coefficients of the reference temperature.
double CLiquide::tHP(double h, double P) const {
  const double start = (h - c.hRef) / CpTP(c.tRef, P, 0) + c.tRef;
  return invertion_x(&CFluideBase::hTP, h, start, P, TOL, MAX_IT, c.tMin, c.tMax);
}

double CLiquide::tPS(double P, double s) const {
  const double start = (s - c.sRef) / (CpTP(c.tRef, P, 0) / c.tRef) + c.tRef;
  return invertion_x(&CFluideBase::sTP, s, start, P, TOL, MAX_IT, c.tMin, c.tMax);
}

double CLiquide::tPV(double P, double v) const {
  const double start = std::log(v / vTP(c.tRef, P, 0)) / alpha(c.tRef) + c.tRef;
  return invertion_x(&CFluideBase::vTP, v, start, P, TOL, MAX_IT, c.tMin, c.tMax);
}

double CLiquide::pUV(double u, double v) const {
  return invertion_x(&CFluideBase::uPV, u, c.pRef, v, TOL, MAX_IT, 0, INF);
}

// Liquid with gas.
double CLiquide::bulk(double P, double a, double n) const {
  const double K = 1 / c.kappa;
  const double g = std::pow(P / c.pRef, n);
  return (g + a) * K / (g + a * K / (n * P));
}

double CLiquide::bulk2(double P, double a, double n) const {
  const double K = 1 / c.kappa;
  const double b = std::pow(c.pRef / P, 1 / n) * a;
  return 1 / (b / (n * P) + (1 - b) / K);
}

double CLiquide::bulk2m(double P, double a, double n) const {
  const double K = 1 / c.kappa;
  const double b = std::pow(c.pRef / P, n) * a;
  return 1 / (b / (n * P) + (1 - b) / K);
}

double CLiquide::rhoBulk(double T, double P, double a) const {
  const double K = 1 / c.kappa;
  const double r = P / c.pRef;
  return (1 / vT(T)) *
         std::exp(std::log((1 + a) * r / (r + a)) + (c.pRef / K) * (r - a * std::log((r + a) / (1 + a)) - 1));
}

}  // namespace Vk_fl_prop_lib
