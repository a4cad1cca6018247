#include "Vk_lib/Vk_fl_prop_lib/fl_class/MultiPhase.h"

#include <cmath>

namespace Vk_fl_prop_lib {
namespace {

double quality(double h, double h_liquid, double h_gas) {
  if (h <= h_liquid) return 0.0;
  if (h >= h_gas) return 1.0;
  return (h - h_liquid) / (h_gas - h_liquid);
}

}  // namespace

// ---- T, P and quality ----

double CMultiPhase::hTP(double T, double P, double x) const {
  if (x <= 0) return hTPliq(T, P);
  if (x >= 1) return hTPgaz(T, P);
  const double hl = hTPliq(T, P);
  return (hTPgaz(T, P) - hl) * x + hl;
}

double CMultiPhase::u_liquid(double T, double P) const { return hTPliq(T, P) - vTPliq(T, P) * P; }

double CMultiPhase::u_gas(double T, double P) const { return hTPgaz(T, P) - vTPgaz(T, P) * P; }

double CMultiPhase::uTP(double T, double P, double x) const {
  if (x <= 0) return u_liquid(T, P);
  if (x >= 1) return u_gas(T, P);
  const double ul = u_liquid(T, P);
  return (u_gas(T, P) - ul) * x + ul;
}

double CMultiPhase::vTP(double T, double P, double x) const {
  if (x <= 0) return vTPliq(T, P);
  if (x >= 1) return vTPgaz(T, P);
  return x * vTPgaz(T, P) + (1 - x) * vTPliq(T, P);
}

double CMultiPhase::CpTP(double T, double P, double x) const {
  if (x <= 0) return CpTPliq(T, P);
  if (x >= 1) return CpTPgaz(T, P);
  return x * CpTPgaz(T, P) + (1 - x) * CpTPliq(T, P);
}

double CMultiPhase::alfa_t(double T, double P, double x) const {
  if (x <= 0) return alfa_tliq(T, P);
  if (x >= 1) return alfa_tgaz(T, P);
  return (1 - x) * alfa_tliq(T, P) + x * alfa_tgaz(T, P);
}

double CMultiPhase::alfa_p(double T, double P, double x) const {
  if (x <= 0) return alfa_pliq(T, P);
  if (x >= 1) return alfa_pgaz(T, P);
  return (1 - x) * alfa_pliq(T, P) + x * alfa_pgaz(T, P);
}

double CMultiPhase::lambdaTP(double T, double P, double x) const {
  if (x <= 0) return lambdaTPliq(T, P);
  if (x >= 1) return lambdaTPgaz(T, P);
  const double y = x * vTPgaz(T, P) / vTP(T, P, 0.0);  // over the liquid's volume, on purpose
  return y * lambdaTPgaz(T, P) + (1 - y) * lambdaTPliq(T, P);
}

double CMultiPhase::CvTP(double T, double P, double x) const {
  const double v = vTP(T, P, x);
  if (x <= 0) {
    const double at = alfa_tliq(T, P), ap = alfa_pliq(T, P);
    return v * at / ap + (beta_p(T, P, 0) * at / beta_h(T, P, 0)) / ap;
  }
  if (x >= 1) {
    const double at = alfa_tgaz(T, P), ap = alfa_pgaz(T, P);
    return v * at / ap + (beta_p(T, P, 1) * at / beta_h(T, P, 1)) / ap;
  }
  const double atl = alfa_tliq(T, P), atg = alfa_tgaz(T, P);
  const double vl = vTPliq(T, P), vg = vTPgaz(T, P);
  const double hl = hTP(T, P, 0), hg = hTP(T, P, 1);
  return ((v - vl) * CpTPgaz(T, P) + (atg * hl - atl * hg) + (vg - v) * CpTPliq(T, P)) / (vg - vl) -
         (atg - atl) * ((v - vl) * hg + (vg - v) * hl) / ((vg - vl) * (vg - vl)) - dpsat_dt(T) * v;
}

// ---- T and quality, on the saturation line ----

double CMultiPhase::hTX(double T, double x) const {
  const double ps = pSat(T, 0);
  if (x <= 0) return hTPliq(T, ps);
  if (x >= 1) return hTPgaz(T, ps);
  return (1 - x) * hTPliq(T, ps) + x * hTPgaz(T, ps);
}

double CMultiPhase::vTX(double T, double x) const {
  const double ps = pSat(T, 0);
  if (x <= 0) return vTPliq(T, ps);
  if (x >= 1) return vTPgaz(T, ps);
  const double vl = vTPliq(T, ps);
  return (vTPgaz(T, ps) - vl) * x + vl;
}

double CMultiPhase::uTX(double T, double x) const { return uTP(T, pSat(T, 0), x); }

double CMultiPhase::xTSatH(double T, double h) const {
  const double ps = pSat(T, 0);
  return quality(h, hTPliq(T, ps), hTPgaz(T, ps));
}

double CMultiPhase::xPH(double P, double h) const {
  const double Ts = tSat(P);
  return quality(h, hTX(Ts, 0), hTX(Ts, 1));
}

double CMultiPhase::tSat(double P) const {
  // The power has no real value below pMin; the iteration then stops at its upper limit.
  const double start = std::pow((P - pMin) / (pCrit - pMin), 0.1) * (tCrit - tMin) + tMin;
  return invertion_x(&CFluideBase::pSat, P, start, 0.0, TOL, MAX_IT, 0.0, tCrit);
}

// ---- P and h, v or s ----

/// A property of the state (P, h) from its laws in the two phases; linear in h between them.
double CMultiPhase::by_enthalpy(double P, double h, Operation liquid, Operation gas) const {
  const double Ts = tSat(P);
  const double hg = hTPgaz(Ts, P), hl = hTPliq(Ts, P);
  if (h <= hl) return (this->*liquid)(tHP(h, P), P);
  if (h >= hg) return (this->*gas)(tHP(h, P), P);
  const double yl = (this->*liquid)(Ts, P);
  return ((this->*gas)(Ts, P) - yl) * (h - hl) / (hg - hl) + yl;
}

double CMultiPhase::CpPH(double P, double h) const {
  return by_enthalpy(P, h, &CMultiPhase::CpTPliq, &CMultiPhase::CpTPgaz);
}

double CMultiPhase::vPH(double P, double h) const {
  return by_enthalpy(P, h, &CMultiPhase::vTPliq, &CMultiPhase::vTPgaz);
}

double CMultiPhase::lambdaPH(double P, double h) const {
  const double Ts = tSat(P);
  const double hl = hTX(Ts, 0), hg = hTX(Ts, 1);
  if (h <= hl) return lambdaTPliq(tHP(h, P), P);
  if (h >= hg) return lambdaTPgaz(tHP(h, P), P);
  const double x = (h - hl) / (hg - hl);
  const double y = x * vTPgaz(Ts, P) / vTP(Ts, P, x);
  return y * lambdaTPgaz(Ts, P) + (1 - y) * lambdaTPliq(Ts, P);
}

double CMultiPhase::uPV(double P, double v) const { return hPV(P, v) - P * v; }

double CMultiPhase::tPS(double P, double s) const { return tHP(hPS(P, s), P); }

double CMultiPhase::tPV(double P, double v) const { return tHP(hPV(P, v), P); }

double CMultiPhase::pUV(double u, double v) const {
  return invertion_x(&CFluideBase::uPV, u, (pMin + pMax) * 0.5, v, TOL, MAX_IT, pMin, pMax);
}

// ---- derivatives of the volume, and limits ----

double CMultiPhase::beta_h(double T, double P, double x) const {
  return x > 0.5 ? alfa_tgaz(T, P) / CpTPgaz(T, P) : alfa_tliq(T, P) / CpTPliq(T, P);
}

double CMultiPhase::beta_p(double T, double P, double x) const {
  const bool gas = x > 0.5;
  const double at = gas ? alfa_tgaz(T, P) : alfa_tliq(T, P);
  const double ap = gas ? alfa_pgaz(T, P) : alfa_pliq(T, P);
  const double v = gas ? vTPgaz(T, P) : vTPliq(T, P);
  const double Cp = gas ? CpTPgaz(T, P) : CpTPliq(T, P);
  return ap - at * (v - at * T) / Cp;
}

double CMultiPhase::beta_h2(double T, double P, double) const {
  return (vTPgaz(T, P) - vTPliq(T, P)) / (hTPgaz(T, P) - hTPliq(T, P));
}

double CMultiPhase::beta_p2(double T, double P, double x) const {
  const double hl = hTPliq(T, P), hg = hTPgaz(T, P), hx = hTP(T, P, x);
  const double dl = CpTPliq(T, P) / dpsat_dt(T), dg = CpTPgaz(T, P) / dpsat_dt(T);
  const double D = -dl / (hg - hl) - (hx - hl) * (dg - dl) / ((hg - hl) * (hg - hl));
  return x * alfa_pgaz(T, P) + (1 - x) * alfa_pliq(T, P) - vTPliq(T, P) * D + vTPgaz(T, P) * D;
}

void CMultiPhase::calCoeff(double T, double P, double x, double h, double v, double last) {
  const bool mixture = last == 2.0;
  const double bp = mixture ? beta_p2(T, P, x) : beta_p(T, P, x);
  const double bh = mixture ? beta_h2(T, P, x) : beta_h(T, P, x);
  calcCoeffs[1] = bh * h - v;
  calcCoeffs[2] = -bh;
  calcCoeffs[3] = 1 - bh * P;
  calcCoeffs[4] = -(bp / v + bh);
  calcCoeffs[5] = -(v * v + bp * h);
  calcCoeffs[6] = bp;
  calcCoeffs[7] = bp * P + v;
  calcCoeffs[8] = -(bp / v + bh);  // the same as element 4, on purpose
}

void CMultiPhase::GetCritic(double* p, double* T, double* v) const {
  *p = pCrit;
  *T = tCrit;
  *v = vCrit;
}

double CMultiPhase::GetTmin() const { return tMin; }

double CMultiPhase::dhgazDp(double, double) const { return 0.0; }

double CMultiPhase::dhliqDp(double, double) const { return 0.0; }

}  // namespace Vk_fl_prop_lib
