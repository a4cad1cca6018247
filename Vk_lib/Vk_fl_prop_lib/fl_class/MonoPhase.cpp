#include "Vk_lib/Vk_fl_prop_lib/fl_class/MonoPhase.h"

namespace Vk_fl_prop_lib {

void CMonoPhase::calCoeff(double T, double P, double x, double h, double v, double Cp) {
  const double at = alfa_t(T, P, x);
  const double ap = alfa_p(T, P, x);
  calcCoeffs[1] = at * h / Cp - v;
  calcCoeffs[2] = -at / Cp;
  calcCoeffs[3] = 1 - at * P / Cp;
  calcCoeffs[4] = -(at * at * T / Cp + ap) / v;
  calcCoeffs[5] = -(ap * h / at / T + v);
  calcCoeffs[6] = ap / at / T;
  calcCoeffs[7] = ap * P / at / T + 1;
  calcCoeffs[8] = -(ap * Cp / at / T + at) / v;
}

double CMonoPhase::uTP(double, double, double) const { return 0.0; }
double CMonoPhase::alfa_t(double, double, double) const { return 0.0; }
double CMonoPhase::alfa_p(double, double, double) const { return 0.0; }
double CMonoPhase::hTV(double, double) const { return 0.0; }
double CMonoPhase::sTV(double, double) const { return 0.0; }
double CMonoPhase::uTV(double, double) const { return 0.0; }
double CMonoPhase::CpTV(double, double) const { return 0.0; }
double CMonoPhase::CvTV(double, double) const { return 0.0; }

}  // namespace Vk_fl_prop_lib
