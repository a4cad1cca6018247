#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"

#include <cmath>
#include <cstring>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluidFile.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/quintic.h"

namespace Vk_fl_prop_lib {

CIdG& CIdG::operator=(const CIdG& other) {
  if (this == &other) return *this;
  CMonoPhase::operator=(other);
  initCoeffs(other.c);
  return *this;
}

void CIdG::initCoeffs(const double* vector) {
  std::memmove(own.data(), vector, sizeof own);  // the vector may be the own one
  c = own.data();
}

GasVector CIdG::coefficients() const {
  GasVector vector;
  std::memcpy(&vector, c, sizeof vector);
  return vector;
}

void CIdG::loadFile(const char* name) {
  SourceFile file(name);
  if (file.is_open()) loadFile(file);
}

void CIdG::loadFile(FluidFile& file) {
  GasVector read = coefficients();
  file.find_section("FLUID_CONSTANTS");
  for (double* value : {&read.M, &read.tMin, &read.tMax, &read.pRef, &read.tRef, &read.hRef, &read.sRef}) {
    file.labelled_number(*value);
  }
  file.find_section("SPEC_HEAT");
  file.numbers(read.cp);
  file.find_section("CONDUCTIVITY");
  file.numbers(read.lambda);
  file.find_section("VISCOSITY");
  file.numbers(read.mu);
  initCoeffs(read);
}

// From T and P.
double CIdG::CpTP(double T, double, double) const { return quintic(c + cp, T); }
double CIdG::CvTP(double T, double, double) const { return quintic(c + cp, T) - R / c[M]; }
double CIdG::dCvTP_dT(double T, double, double) const { return quintic_slope(c + cp, T); }
double CIdG::lambdaTP(double T, double, double) const { return quintic(c + lambda, T); }
double CIdG::muTP(double T, double, double) const { return quintic(c + mu, T); }
double CIdG::muTV(double T, double) const { return muTP(T, 0, 1.0); }
double CIdG::vTP(double T, double P, double) const { return R * T / (c[M] * P); }
double CIdG::pTV(double T, double v) const { return R * T / (c[M] * v); }
double CIdG::tPV(double P, double v) const { return P * v * c[M] / R; }
double CIdG::alfa_t(double, double P, double) const { return (R / c[M]) / P; }
double CIdG::alfa_p(double T, double P, double) const { return -(R * T / c[M]) / P / P; }
double CIdG::hTP(double T, double, double) const { return quintic_integral(c[hRef], c + cp, T, c[tRef]); }
double CIdG::uTP(double T, double, double) const {
  return quintic_integral(c[hRef] - R * T / c[M], c + cp, T, c[tRef]);
}
double CIdG::sTP(double T, double P, double) const {
  return quintic_over_T_integral(c[sRef], c + cp, T, c[tRef]) - (std::log(P / c[pRef]) * R) / c[M];
}
double CIdG::hTP(double T, double P) const { return hTP(T, P, 1.0); }
double CIdG::uTP(double T, double P) const { return uTP(T, P, 1.0); }
double CIdG::sTP(double T, double P) const { return sTP(T, P, 1.0); }

// From other pairs. Enthalpy depends on T alone, so its inversion takes no pressure.
double CIdG::vPH(double P, double h) const { return vTP(tHP(h, 0), P, 1.0); }
double CIdG::sPH(double P, double h) const { return sTP(tHP(h, 0), P, 1.0); }
double CIdG::CpPH(double P, double h) const { return CpTP(tHP(h, 0), P, 1.0); }
double CIdG::lambdaPH(double P, double h) const { return lambdaTP(tHP(h, 0), P, 1.0); }
double CIdG::muPH(double P, double h) const { return muTP(tHP(h, 0), P, 1.0); }
double CIdG::hPV(double P, double v) const { return hTP(tPV(P, v), P, 1.0); }
double CIdG::hPS(double P, double s) const { return hTP(tPS(P, s), P, 1.0); }
double CIdG::uPV(double P, double v) const { return uTP(tPV(P, v), P, 1.0); }
double CIdG::pUV(double u, double v) const { return pTV(tU(u), v); }

// Inversions, each from a start with the heat capacity of the reference temperature.
double CIdG::tHP(double h, double) const {
  const double start = (h - c[hRef]) / CpTP(c[tRef], 0, 1.0) + c[tRef];
  return invertion_x(&CFluideBase::hTP, h, start, 0.0, TOL, MAX_IT, c[tMin], c[tMax]);
}

double CIdG::tU(double u) const {
  const double start = (u - c[hRef]) / CvTP(c[tRef], 0, 1.0) + c[tRef];  // off by R tRef / M, which costs steps only
  return invertion_x(&CFluideBase::uTP, u, start, 0.0, TOL, MAX_IT, c[tMin], c[tMax]);
}

double CIdG::tPS(double P, double s) const {
  const double start = ((s - c[sRef] + std::log(P / c[pRef]) * R / c[M]) / CpTP(c[tRef], 0, 1.0) + 1) * c[tRef];
  return invertion_x(&CFluideBase::sTP, s, start, P, TOL, MAX_IT, c[tMin], c[tMax]);
}

}  // namespace Vk_fl_prop_lib
