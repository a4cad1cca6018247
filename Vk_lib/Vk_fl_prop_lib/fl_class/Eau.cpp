#include "Vk_lib/Vk_fl_prop_lib/fl_class/Eau.h"

#include <cmath>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluidFile.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Ifc67.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/quintic.h"

namespace Vk_fl_prop_lib {
CEau::CEau() : M(0.018015), tMax(2500.0), ifc67(kIfc67), transport(kWaterTransport) {
  pCrit = 2.212e7;
  tCrit = 647.3;
  vCrit = 0.00317;
  pMin = 611.0;
  tMin = 273.15;
  kappaLiq = 5e-07;
  set_limits();
}

void CEau::set_limits() {
  pMax = pCrit;
  hMin = CEau::hTPliq(tMin, pMin);
}

void CEau::loadFile(const char* name) {
  SourceFile file(name);
  if (!file.is_open()) return;
  const auto section = [&](const char* key, auto& values) {
    file.find_section(key);
    file.numbers(values);
  };
  const auto rows = [&](const char* key, auto& table) {
    file.find_section(key);
    for (auto& row : table) file.numbers(row);
  };

  double bulk_modulus = 1 / kappaLiq;
  file.find_section("FLUID_CONSTANTS");
  for (double* value : {&M, &pCrit, &tCrit, &vCrit, &pMin, &bulk_modulus, &tMin, &tMax, &ifc67.b, &ifc67.I1}) {
    file.labelled_number(*value);
  }
  kappaLiq = 1 / bulk_modulus;

  section("SATURATION_LINE", ifc67.k);
  section("SUBCOOLED_A", ifc67.A);
  section("SUBCOOLED_a", ifc67.a);
  rows("SUPERHEATED_B", ifc67.B);
  rows("SUPERHEATED_bi", ifc67.bi);
  rows("EXP_z", ifc67.z);
  rows("EXP_x", ifc67.x);
  section("FUN_L", ifc67.L);
  section("CONDUCTIVITY", transport.lambda_liquid);
  file.numbers(transport.lambda_vapour);  // the second half of the section
  rows("VISCOSITY_L", transport.L);
  section("VISCOSITY_0", transport.H);
  file.find_section("VISCOSITY_REF");
  for (double* value : {&transport.rho_ref, &transport.T_ref, &transport.mu_ref}) file.numbers({value, 1});
  set_limits();
}

double CEau::Get_M() const { return M; }

int CEau::Get_fluidType() const { return 4; }

// ---- the single phases ----

double CEau::pSat(double T, double) const {
  if (T / tCrit >= 1) return pMax;
  return pCrit * ifc67_saturation(ifc67, t(T));
}

double CEau::dpsat_dt(double T) const { return pCrit / tCrit * ifc67_saturation_slope(ifc67, t(T)); }

double CEau::vTPliq(double T, double P) const { return Ifc67Water(ifc67, t(T), p(P)).chi() * vCrit; }
double CEau::hTPliq(double T, double P) const { return Ifc67Water(ifc67, t(T), p(P)).eps() * h_scale(); }
double CEau::sTPliq(double T, double P) const { return Ifc67Water(ifc67, t(T), p(P)).sigma() * s_scale(); }
double CEau::CpTPliq(double T, double P) const { return Ifc67Water(ifc67, t(T), p(P)).phi() * s_scale(); }
double CEau::alfa_tliq(double T, double P) const { return Ifc67Water(ifc67, t(T), p(P)).chi_t() * vCrit / tCrit; }
double CEau::alfa_pliq(double T, double P) const { return Ifc67Water(ifc67, t(T), p(P)).chi_p() * vCrit / pCrit; }

double CEau::vTPgaz(double T, double P) const { return Ifc67Steam(ifc67, t(T), p(P)).chi() * vCrit; }
double CEau::hTPgaz(double T, double P) const { return Ifc67Steam(ifc67, t(T), p(P)).eps() * h_scale(); }
double CEau::sTPgaz(double T, double P) const { return Ifc67Steam(ifc67, t(T), p(P)).sigma() * s_scale(); }
double CEau::CpTPgaz(double T, double P) const { return Ifc67Steam(ifc67, t(T), p(P)).phi() * s_scale(); }
double CEau::alfa_tgaz(double T, double P) const { return Ifc67Steam(ifc67, t(T), p(P)).chi_t() * vCrit / tCrit; }
double CEau::alfa_pgaz(double T, double P) const { return Ifc67Steam(ifc67, t(T), p(P)).chi_p() * vCrit / pCrit; }

double CEau::dhliqDp(double T, double P) const { return vTPliq(T, P) - T * alfa_tliq(T, P); }
double CEau::dhgazDp(double T, double P) const { return vTPgaz(T, P) - T * alfa_tgaz(T, P); }

double CEau::lambdaTPliq(double T, double) const { return quintic(transport.lambda_liquid, T); }
double CEau::lambdaTPgaz(double T, double) const { return quintic(transport.lambda_vapour, T); }

double CEau::muTV(double T, double v) const {
  const auto& H = transport.H;
  const double Tr = T / transport.T_ref;
  const double rr = 1 / v / transport.rho_ref;
  const double Tr2 = Tr * Tr, Tr3 = Tr2 * Tr;
  const double mu0 = std::sqrt(Tr) / (H[0] + H[1] / Tr + H[2] / Tr2 + H[3] / Tr3);
  double sum = 0.0, power_i = 1.0;
  for (const auto& row : transport.L) {
    double power_j = 1.0;
    for (const double L : row) {
      sum += L * power_i * power_j;
      power_j *= rr - 1;
    }
    power_i *= 1 / Tr - 1;
  }
  return transport.mu_ref * mu0 * std::exp(rr * sum);
}

// ---- by quality ----

double CEau::sTP(double T, double P, double x) const {
  if (x <= 0) return sTPliq(T, P);
  if (x >= 1) return sTPgaz(T, P);
  const double sl = sTPliq(T, P);
  return sl + (sTPgaz(T, P) - sl) * x;
}

double CEau::muTP(double T, double P, double x) const { return muPH(P, hTP(T, P, x)); }

double CEau::muPH(double P, double h) const { return muTV(tHP(h, P), vPH(P, h)); }

// ---- inversions: each within the phase that the saturated values tell ----

double CEau::tHP(double h, double P) const {
  const double Ts = tSat(P);
  if (h < hTPliq(Ts, P)) {
    const double start = (tCrit - 273.16) * h / 1.9e6 + 273.16;
    return invertion_x(&CFluideBase::hTPliq, h, start, P, TOL, MAX_IT, 0.0, Ts);
  }
  if (h > hTPgaz(Ts, P)) return invertion_x(&CFluideBase::hTPgaz, h, Ts + 10.0, P, TOL, MAX_IT, Ts, tMax);
  return Ts;
}

double CEau::tPV(double P, double v) const {
  const double Ts = tSat(P);
  if (v < vTPliq(Ts, P)) {
    return invertion_x(&CFluideBase::vTPliq, v, (273.15 + Ts) / 2, P, TOL, MAX_IT, 0.0, Ts);
  }
  if (v > vTPgaz(Ts, P)) {
    const double ideal_gas = M * P * v / R;
    return invertion_x(&CFluideBase::vTPgaz, v, ideal_gas, P, TOL, MAX_IT, Ts, tMax);
  }
  return Ts;
}

double CEau::tPS(double P, double s) const {
  if (P >= pCrit) return invertion_x(&CFluideBase::sTPgaz, s, tCrit + 10.0, P, TOL, MAX_IT, 0.0, tMax);
  const double Ts = tSat(P);
  if (s < sTPliq(Ts, P)) {
    return invertion_x(&CFluideBase::sTPliq, s, (273.15 + Ts) / 2, P, TOL, MAX_IT, 0.0, Ts);
  }
  if (s > sTPgaz(Ts, P)) return invertion_x(&CFluideBase::sTPgaz, s, Ts + 10.0, P, TOL, MAX_IT, Ts, tMax);
  return Ts;
}

double CEau::sPH(double P, double h) const {
  const double Ts = tSat(P);
  const double hl = hTPliq(Ts, P), hg = hTPgaz(Ts, P);
  if (h <= hl) return sTPliq(tHP(h, P), P);
  if (h >= hg) return sTPgaz(tHP(h, P), P);
  const double sl = sTPliq(Ts, P), sg = sTPgaz(Ts, P);
  return (sg - sl) * (h - hl) / (hg - hl) + sl;
}

double CEau::hPV(double P, double v) const {
  const double Ts = tSat(P);
  const double vl = vTPliq(Ts, P), vg = vTPgaz(Ts, P);
  if (v < vl) return hTPliq(tPV(P, v), P);
  if (v > vg) return hTPgaz(tPV(P, v), P);
  const double hl = hTPliq(Ts, P), hg = hTPgaz(Ts, P);
  return (hg - hl) * (v - vl) / (vg - vl) + hl;
}

double CEau::hPS(double P, double s) const {
  if (P >= pCrit) return hTPgaz(tPS(P, s), P);
  const double Ts = tSat(P);
  const double sl = sTPliq(Ts, P), sg = sTPgaz(Ts, P);
  if (s <= sl) return hTPliq(tPS(P, s), P);
  if (s >= sg) return hTPgaz(tPS(P, s), P);
  const double hl = hTPliq(Ts, P), hg = hTPgaz(Ts, P);
  return (hg - hl) * (s - sl) / (sg - sl) + hl;
}

}  // namespace Vk_fl_prop_lib
