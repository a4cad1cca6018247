#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluidFile.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/newton.h"

namespace Vk_fl_prop_lib {
namespace {

constexpr double L0 = 2500.8;    // latent heat at 0 degC [kJ/kg]
constexpr double T0 = 273.15;    // K
constexpr double Ra = 0.287055;  // gas constants in the entropy [kJ/(kg K)]
constexpr double Rv = 0.46152;
constexpr double p0v = 611.2;     // reference of the vapour in the entropy [Pa]
constexpr double sv0 = 9.1553;    // its entropy there [kJ/(kg K)]
constexpr double epsS = 0.62198;  // Mw / Ma, rounded
constexpr double psyK = 1810.8;   // psychrometric constant [K]

constexpr double kNoSaturation = 1e38;
constexpr double kEndless = 1e36;  // a humidity ratio from here on stands for no saturation

// Saturation pressure: factor of ln T and coefficients of the ascending powers from T^-1 on.
constexpr double kIceLog = 4.1635019;
constexpr double kIce[] = {-5674.5359, 6.3925247, -0.009677843, 6.2215701e-07, 2.0747825e-09, -9.484024e-13};
constexpr double kWaterLog = 6.5459673;
constexpr double kWater[] = {-5800.2206, 1.3914993, -0.048640239, 4.1764768e-05, -1.4452093e-08};

// Transport properties: rows are powers of t [degC], columns powers of y = epsS w / (epsS + w), which stays below epsS.
// clang-format off
constexpr double kConductivity[5][5] = {
  {572.28264,      93.451342,      -497.31824,     296.75143,      -90.995865    },
  {1.9017419,      0.023143653,    0.11216864,     -0.23109092,    -0.023355372  },
  {-0.000677457,   -0.0034134568,  0.012433925,    -0.014189051,   0.0081396944  },
  {-1.4563789e-06, 2.7477907e-05,  -8.1845585e-05, 0.00010078804,  -4.3387318e-05},
  {3.5596815e-09,  -5.2651721e-08, 1.5128385e-07,  -1.8619279e-07, 8.027769e-08  },
};
constexpr double kConductivityUnit = 4.182e-05;  // W/(m K)

constexpr double kViscosity[5][5] = {
  {1716.8794,      -60.243416,     -1036.1348,     310.72525,      -46.32412    },
  {4.9683638,      -1.3033422,     1.0763351,      -1.708572,      0.57387209   },
  {-0.0043016441,  0.0015312679,   0.0012388106,   0.00436749111,  -0.0027684891},
  {-4.0088101e-06, 3.6750292e-06,  -3.7079313e-06, -1.5096114e-05, 1.0590597e-05},
  {5.4182597e-10,  -9.6937347e-09, -1.5426258e-08, 6.4272008e-08,  3.9543448e-08},
};
constexpr double kViscosityUnit = 1e-08;  // Pa s
// clang-format on

double quartic(const double (&a)[5], double x) {
  const double x2 = x * x, x3 = x2 * x, x4 = x3 * x;
  return a[0] + a[1] * x + a[2] * x2 + a[3] * x3 + a[4] * x4;
}

double double_quartic(const double (&rows)[5][5], double t, double y) {
  const double in_t[5] = {quartic(rows[0], y), quartic(rows[1], y), quartic(rows[2], y), quartic(rows[3], y),
                          quartic(rows[4], y)};
  return quartic(in_t, t);
}

}  // namespace

void CAirHumide::initCoeffs(const MoistAirVector& vector) {
  c = vector;
  sRef = 1000.0;
}

void CAirHumide::initCoeffs(const double* vector) {
  std::memcpy(&c, vector, sizeof c);
  sRef = 1000.0;
}

void CAirHumide::loadFile(const char* name) {
  SourceFile file(name);
  if (file.is_open()) loadFile(file);
}

void CAirHumide::loadFile(FluidFile& file) {
  file.find_section("FLUID_CONSTANTS");
  for (double* value : {&c.Ma, &c.Mw, &c.pRefAir, &c.tRefAir, &c.hRef, &sRef}) file.labelled_number(*value);
  file.find_section("SPEC_HEAT");
  for (double* value : {&c.CpAir, &c.CpVap}) file.number(*value);
  file.find_section("SATURATION_LINE");
  for (double* value : {&c.satA, &c.satB, &c.satC}) file.number(*value);
}

double CAirHumide::Get_M() const { return c.Mw; }

int CAirHumide::Get_fluidType() const { return 6; }

// ---- liquid water ----

double CAirHumide::liquid_pressure(double T, double P) const {
  const double pe = water.pSat(T, 0.0);
  return P >= pe ? P : pe;
}

double CAirHumide::liquid_enthalpy(double T, double P) const { return water.hTP(T, liquid_pressure(T, P), 0.0); }

double CAirHumide::hl(double T) const {
  const double pe = water.pSat(T, 0);
  return water.hTP(T, pe, 1.0) - water.hTP(T, pe, 0.0);
}

// ---- saturation and composition ----

double CAirHumide::pSat(double T, double) const {
  const double ln_T = std::log(T);
  const double T2 = T * T, T3 = T2 * T, T4 = T3 * T;
  const auto& a = kIce;
  const auto& b = kWater;
  const double ln_pi = kIceLog * ln_T + (a[0] / T + a[1] + a[2] * T + a[3] * T2 + a[4] * T3 + a[5] * T4);
  const double ln_pw = kWaterLog * ln_T + (b[0] / T + b[1] + b[2] * T + b[3] * T2 + b[4] * T3);
  const double s = (std::tanh((T - T0) * 3.14159) + 1) * 0.5;  // not pi: this literal
  return std::exp(s * ln_pw + (1 - s) * ln_pi);
}

double CAirHumide::dpSatDt(double T, double P) const {
  const double T2 = T * T, T3 = T2 * T;
  const auto& a = kIce;
  const auto& b = kWater;
  const double D = T < T0 ? kIceLog / T - a[0] / T2 + a[2] + 2 * a[3] * T + 3 * a[4] * T2 + 4 * a[5] * T3
                          : kWaterLog / T - b[0] / T2 + b[2] + 2 * b[3] * T + 3 * b[4] * T2;
  return D * pSat(T, P);
}

double CAirHumide::dpSatDp(double, double) const { return 0.0; }

double CAirHumide::tSat(double pv, double P) const {
  return invertion_x(&CFluideBase::pSat, pv, 300.0, P, TOL, MAX_IT, -INF, INF);
}

double CAirHumide::facteurCorrection(double P) const {
  const double p = P / 101325;
  return 1 + 0.04420722 * p - 0.016326037 * (p * p) + 0.00237901 * (p * p * p);
}

double CAirHumide::wSatT(double T, double P) const {
  if (water.pSat(T, 0.0) >= P) return kNoSaturation;  // the guard is the water's own law, the value this class's
  const double ps = pSat(T, P);
  if (ps > P) return kNoSaturation;
  return (c.Mw / c.Ma) * ps / (P - ps);
}

double CAirHumide::dwSatDt(double T, double P) const {
  const double ps = pSat(T, P);
  if (water.pSat(T, 0.0) >= P || ps > P) return 0.0;
  return (c.Mw / c.Ma) * P * dpSatDt(T, P) / ((P - ps) * (P - ps));
}

double CAirHumide::dwSatDp(double T, double P) const {
  const double ps = pSat(T, P);
  if (water.pSat(T, 0.0) >= P || ps > P) return 0.0;
  return -(c.Mw / c.Ma) * ps / ((P - ps) * (P - ps));
}

double CAirHumide::pvWP(double w, double P) const { return P * w / (c.Mw / c.Ma + w); }

double CAirHumide::rhTWP(double T, double w, double P) const {
  if (T > 473.15) return w / (c.Mw / c.Ma + w);
  return pvWP(w, P) / pSat(T, P);
}

double CAirHumide::wTRhP(double T, double Rh, double P) const {
  const double ps = pSat(T, 101325.0);
  if (P > ps && T < 473.15) {
    const double pv = Rh * ps;
    return (c.Mw / c.Ma) * pv / (P - pv);
  }
  if (T >= 373.15) return Rh == 0 ? 0.0 : kEndless;
  return Rh == 1 ? 0.0 : (c.Mw / c.Ma) * Rh / (1 - Rh);  // 0 at Rh = 1, on purpose
}

double CAirHumide::TdewWP(double w, double P) const {
  if (w == 0) return 173.15;
  return 5204.9 / (20.9 - std::log(P * w / 100 / (0.622 + w)));
}

double CAirHumide::wTdewP(double Tdew, double P) const {
  const double ps = pSat(Tdew, 101325);
  return (c.Mw / c.Ma) * ps / (P - ps);
}

// ---- state functions ----

double CAirHumide::vTW(double T, double w, double P, double) const {
  return ((c.Ma / c.Mw) * w + 1) * T * R / (c.Ma * P);
}

double CAirHumide::hTW(double T, double w, double P, double wsat) const {
  const double t = T - T0;
  if (unsaturated() || w <= 0) return 1000 * (L0 * w + (Cpv * w + Cpa) * t) + c.hRef;
  wsat = wsat_or_own(wsat, T, P);
  const double H = L0 * wsat + (Cpv * wsat + Cpa) * t + liquid_enthalpy(T, P) * (w - wsat) / 1000;
  return 1000 * H + c.hRef;
}

double CAirHumide::hTW2(double T, double w, double P) const { return hTW(T, w, P, 0); }

double CAirHumide::hTRh(double T, double Rh, double P) const { return hTW(T, wTRhP(T, Rh, P), P, 0); }

double CAirHumide::hSatTP(double T, double P) const {
  return hTW(T, wSatT(T, P), 101325.0, 0);  // the fixed pressure is on purpose
}

double CAirHumide::wTH(double T, double h, double P) const {
  const double t = T - T0;
  if (unsaturated()) return ((h - c.hRef) / 1000 - t * Cpa) / (t * Cpv + L0);
  const double ws = wSatT(T, P);
  const double hs = 1000 * (L0 * ws + (Cpv * ws + Cpa) * t) + c.hRef;
  return ws + (h - hs) / liquid_enthalpy(T, P);
}

double CAirHumide::wTV(double T, double v, double P) const {
  if (unsaturated()) return ((c.Ma * v * P / (R * T)) - 1) / (c.Ma / c.Mw);
  return wSatT(T, P);
}

/// Entropy [kJ/(kg K)] of dry air and x kg of vapour at the partial pressure pv.
double CAirHumide::entropy(double t, double x, double pv, double P) const {
  return (Cpv * x + 1.0) * std::log(t / 273.15 + 1.0) - std::log((P - pv) / 101325) * Ra -  // 1.0 instead of Cpa
         (std::log(pv / p0v) * Rv - sv0) * x;
}

double CAirHumide::sTWP(double T, double w, double P, double wsat) const {
  const double t = T - T0;
  if (!unsaturated() && w > 0 && P > pSat(T, P)) {
    wsat = wsat_or_own(wsat, T, P);
    const double gas = entropy(t, wsat, pSat(T, P), P);
    return 1000 * (gas + water.sTP(T, liquid_pressure(T, P), 0.0) * (w - wsat) / 1000) + sRef;
  }
  const double dry = std::log(t / 273.15 + 1.0) - std::log(P / 101325) * Ra;
  const double S = w == 0 ? dry : entropy(t, w, P * w / (epsS + w), P);
  return 1000 * S + sRef;
}

// The liquid has no share in it, and the saturation is not needed.
double CAirHumide::CpTW(double, double w, double, double) const { return CpW(w); }

double CAirHumide::CvTW(double T, double w, double P, double M, double wsat) const {
  if (!unsaturated()) wsat = wsat_or_own(wsat, T, P);
  const double v = vTW(T, w, P, 0);
  return CpTW(T, w, P, wsat) - v * dpdt(v, w, M, wsat) / (1 + w);
}

double CAirHumide::dpdt(double v, double w, double M, double wsat) const {
  const double Mm = M == 0 ? c.Ma : M;
  const double wx = unsaturated() || w == 0 ? w : wsat;
  return ((Mm / c.Mw) * wx + 1) * R / (Mm * v);
}

double CAirHumide::lambdaTW(double T, double w, double P, double wsat) const {
  if (!unsaturated()) wsat = wsat_or_own(wsat, T, P);
  const double z = unsaturated() || w == 0 ? w : wsat;
  const double gas = double_quartic(kConductivity, T - T0, epsS * z / (epsS + z)) * kConductivityUnit;
  if (unsaturated()) return gas;
  return gas + water.lambdaTP(T, liquid_pressure(T, P), 0.0) * (w - wsat);
}

double CAirHumide::muTW(double T, double w, double P, double wsat) const {
  if (!unsaturated()) wsat = wsat_or_own(wsat, T, P);
  const double z = unsaturated() || w == 0 ? w : wsat;
  const double gas = double_quartic(kViscosity, T - T0, epsS * z / (epsS + z)) * kViscosityUnit;
  if (unsaturated()) return gas;
  return gas + water.muTV(T, water.vTPliq(T, liquid_pressure(T, P))) * (w - wsat);
}

double CAirHumide::alfa_t(double T, double w, double P) const {
  const auto of_gas = [&](double x) { return ((c.Ma / c.Mw) * x + 1) * R / (c.Ma * P); };
  if (unsaturated()) return of_gas(w);
  const double ws = wSatT(T, P);
  if (ws >= kEndless) return of_gas(w);
  const double Pu = liquid_pressure(T, P);
  return of_gas(ws) + water.alfa_tliq(T, Pu) * (w - ws) + dwSatDt(T, Pu) * (R * T / (c.Mw * P) - water.vTPliq(T, Pu));
}

double CAirHumide::alfa_p(double T, double w, double P) const {
  const auto of_gas = [&](double x) { return ((c.Ma / c.Mw) * x + 1) * (-R * T) / (c.Ma * P * P); };
  if (unsaturated()) return of_gas(w);
  const double ws = wSatT(T, P);
  if (ws >= kEndless) return of_gas(w);
  const double Pu = liquid_pressure(T, P);
  return of_gas(ws) + water.alfa_pliq(T, Pu) * (w - ws) + dwSatDp(T, Pu) * (R * T / (c.Mw * P) - water.vTPliq(T, Pu));
}

double CAirHumide::alfa_w(double T, double, double P) const { return (R * T / c.Mw) / P; }

double CAirHumide::dhdw(double T, double, double P, double, double) const {
  if (!unsaturated()) return liquid_enthalpy(T, P);
  return 1000 * ((T - T0) * Cpv + L0);
}

double CAirHumide::dudw(double T, double w, double P, double M, double wsat) const {
  const double dh = dhdw(T, w, P, M, wsat);
  if (!unsaturated()) return dh;
  const double Mm = M == 0 ? c.Ma : M;
  return dh + ((1 - Mm / c.Mw) * R * T / (1 + w) / (1 + w)) / Mm;
}

void CAirHumide::calCoeff(double T, double P, double w, double h, double v, double last) {
  const double t = T - T0;
  const double ap = alfa_p(T, w, P);
  const double at_Cp = alfa_t(T, w, P) / CpTW(T, w, P, 0);
  double H = t * 1000 * Cpv + 1000 * L0;
  if (last == 0) H += liquid_enthalpy(T, P);
  const double d = at_Cp * H;
  calcCoeffs[0] = -at_Cp - ap / v;
  calcCoeffs[1] = h * at_Cp - v / (1 + w);
  calcCoeffs[2] = -at_Cp;
  calcCoeffs[3] = 1 / (1 + w) - P * at_Cp;
  calcCoeffs[4] = -1 / (1 + w) / (1 + w) - d / v;
  calcCoeffs[5] = -v * v / (1 + w) / (1 + w) - h * ap;
  calcCoeffs[6] = ap;
  calcCoeffs[7] = v / (1 + w) + P * ap;
  calcCoeffs[8] = -v / (1 + w) / (1 + w) - d;
}

// ---- psychrometry ----

double CAirHumide::x_invertion(QuadFunction f, double y, double x0, double a1, double a2, double eps, int maxIt,
                               double xMin, double xMax, bool* ok) const {
  const auto of_x = [&](double x) { return (this->*f)(x, a1, a2, 0.0); };
  const NewtonResult result = newton(of_x, y, x0, eps, maxIt, xMin, xMax);
  *ok = !(result.iterations >= maxIt && result.error > eps);
  return result.x;
}

double CAirHumide::thumTWP(double T, double w, double P, double) const {
  if (!unsaturated()) return T;
  bool ok = false;
  const double thum = x_invertion(&CAirHumide::tThumW, T, T, w, P, TOL, MAX_IT, -INF, T, &ok);
  if (!ok) {
    std::fprintf(stderr,
                 "Warning - Moist Air fluid properties: Wet bulb temperature = f(T,w,P) calculation dit not converge "
                 "(T=%g ; w=%g ; P=%g)\n",
                 T, w, P);
  }
  return thum;
}

double CAirHumide::tThumW(double thum, double w, double P, double) const {
  const double ps = pSat(thum, P), pv = pvWP(w, P);
  return (psyK * (ps - pv) - (2 * ps - pv - P) * thum) / (P - ps);
}

double CAirHumide::wsatThumT(double thum, double T, double P) const {
  const double ps = pSat(thum, P);
  return (((psyK - thum + 273.15) * ps - (P - ps) * (T - thum)) * (c.Mw / c.Ma) / (P - ps)) /
         (psyK + T - 2 * thum + 273.15);
}

double CAirHumide::thumTPvPvsat(double T, double pv, double pvsat, double P) const {
  return ((pvsat - pv) * psyK - (P - pvsat) * T) / (2 * pvsat - pv - P);
}

double CAirHumide::dTdThum(double thum, double w, double P) const {
  const double ps = pSat(thum, P), pv = pvWP(w, P), dps = dpSatDt(thum, P);
  return ((psyK * (ps - pv) - (2 * ps - pv - P) * thum) * dps) / ((P - ps) * (P - ps)) +
         ((psyK - 2 * thum) * dps - 2 * (ps - pv - P)) / (P - ps);  // 2 before the last bracket, on purpose
}

double CAirHumide::Cphum_TThumW(double T, double thum, double w, double P) const {
  if (unsaturated()) return CpTW(T, w, P, 0) * dTdThum(thum, w, P);
  const double ws = wSatT(T, P);
  return CpTW(T, ws, P, 0) + water.CpTP(T, liquid_pressure(T, P), 0.0) * (w - ws);
}

double CAirHumide::tTdewWP(double Tdew, double w, double P) const {
  const double td = Tdew - 273.15;
  const double ws = wTdewP(Tdew, P);
  return (((2501 - 2.381 * td) * ws + td) - (2501 - 4.186 * td) * w) / (1.805 * w + 1) + 273.15;
}

double CAirHumide::wTTdewP(double T, double Tdew, double P) const {
  const double t = T - 273.15, td = Tdew - 273.15;
  const double ws = wTdewP(Tdew, P);
  return ((2501 - 2.381 * td) * ws - (t - td)) / ((1.805 * t + 2501) - 4.186 * td);
}

double CAirHumide::tsatHWP(double h, double w, double P, double* wsat) const {
  bool ok = false;
  const double T = x_invertion(&CAirHumide::hTW, h, 300.0, w, P, 1e-10, 30, 173.15, 373.15, &ok);
  if (!ok) {
    std::fprintf(stderr,
                 "Warning - Moist Air fluid properties: Tsat=f(h,w,P) calculation dit not converge "
                 "(h=%g ; w=%g ; P=%g)\n",
                 h, w, P);
  }
  *wsat = wSatT(T, P);
  return T;
}

}  // namespace Vk_fl_prop_lib
