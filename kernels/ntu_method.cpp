#include "kernels/ntu_method.h"

#include <cmath>

#include "kernels/math_kernels.h"

namespace Vk_hexch_lib {
namespace {

constexpr double kEps = 2.220446049250313e-16;
constexpr int kUnmixed = 1;
constexpr int kMixed = 2;

}  // namespace

void phiNTU(double q1, double cp1, double T1, double q2, double cp2, double T2, double UA, double* Q, double* Qmax,
            double* Q1max, double* Q2max, double* NTU, double* effectiveness, int flowType, int nShells, int mix1,
            int mix2) {
  const double C1 = std::fabs(q1 * cp1);
  const double C2 = std::fabs(q2 * cp2);
  const double Cmin = Vk_math_lib::min(C1, C2);
  const double Cmax = Vk_math_lib::max(C1, C2);
  const double Cr = Cmin / Vk_math_lib::max(Cmax, kEps);
  const double N = UA / Vk_math_lib::max(Cmin, kEps);

  double e = 0;
  switch (flowType) {
    case 1: {
      const bool same_direction = (q1 >= 0 && q2 >= 0) || (q1 <= 0 && q2 <= 0);
      e = same_direction ? NTUparallel(Cr, N) : NTUcounterflow(Cr, N);
      break;
    }
    case 2:
      e = NTUoneshell(Cr, N);
      if (nShells != 1) e = NTUnshell(Cr, N, nShells, e);
      break;
    case 3:
      if (mix1 == kUnmixed && mix2 == kUnmixed) {
        e = NTUunmixed(Cr, N);
      } else if (mix1 == kMixed && mix2 == kMixed) {
        e = NTUmixed(Cr, N);
      } else {
        const bool larger_is_mixed = (Cmax == C1 && mix1 == kMixed) || (Cmax == C2 && mix2 == kMixed);
        e = larger_is_mixed ? NTUcmaxmixed(Cr, N) : NTUcmaxunmixed(Cr, N);
      }
      break;
    case 4:
      e = Vk_math_lib::min(Vk_math_lib::max(0.0, UA), 1.0);
      break;
    case 5:
      e = NTUconst(N);
      break;
    case 6:
      e = NTUparallel(Cr, N);
      break;
    case 7:
      e = NTUcounterflow(Cr, N);
      break;
    case 8:
      e = NTUoneshell(Cr, N);
      break;
    case 9:
      e = NTUnshell(Cr, N, nShells, NTUoneshell(Cr, N));
      break;
    case 10:
      e = NTUunmixed(Cr, N);
      break;
    case 11:
      e = NTUcmaxmixed(Cr, N);
      break;
    case 12:
      e = NTUcmaxunmixed(Cr, N);
      break;
    case 13:
      e = NTUmixed(Cr, N);
      break;
    default:
      break;
  }

  const double dT = T1 - T2;
  *Qmax = dT * Cmin;
  *Q1max = dT * C1;
  *Q2max = dT * C2;
  *Q = *Qmax * e;
  *NTU = flowType == 4 ? 0.0 : N;
  *effectiveness = e;
}

double NTUparallel(double Cr, double NTU) { return (1.0 - std::exp(-NTU * (1.0 + Cr))) / (1.0 + Cr); }

double NTUcounterflow(double Cr, double NTU) {
  if (Cr == 1.0) return 1.0;
  const double x = std::exp(-NTU * (1.0 - Cr));
  return (1.0 - x) / (1.0 - x * Cr);
}

double NTUoneshell(double Cr, double NTU) {
  const double s = std::pow(1.0 + Cr * Cr, 0.5);
  const double x = std::exp(-NTU * s);
  return 2.0 / (1.0 + Cr + s * (1.0 + x) / (1.0 - x));
}

double NTUnshell(double Cr, double /*NTU*/, int n, double e1) {
  const double shells = n;
  if (Cr == 1.0) return shells * e1 / ((shells - 1.0) * e1 + 1.0);
  const double a_n = std::pow((1.0 - e1 * Cr) / (1.0 - e1), shells);
  return (a_n - 1.0) / (a_n - Cr);
}

double NTUunmixed(double Cr, double NTU) {
  const double c = Vk_math_lib::max(Cr, kEps);
  return 1.0 - std::exp((1.0 / c) * std::pow(NTU, 0.22) * (std::exp(-c * std::pow(NTU, 0.78)) - 1.0));
}

double NTUmixed(double Cr, double NTU) {
  const double c = Vk_math_lib::max(Cr, kEps);
  const double m = Vk_math_lib::max(NTU, kEps);
  return m / (c * m / (1.0 - std::exp(-c * m)) + m / (1.0 - std::exp(-m)) - 1.0);
}

double NTUcmaxmixed(double Cr, double NTU) {
  const double c = Vk_math_lib::max(Cr, kEps);
  return (1.0 - std::exp(-c * (1.0 - std::exp(-NTU)))) / c;
}

double NTUcmaxunmixed(double Cr, double NTU) {
  const double c = Vk_math_lib::max(Cr, kEps);
  return 1.0 - std::exp(-(1.0 / c) * (1.0 - std::exp(-c * NTU)));
}

double NTUconst(double NTU) { return 1.0 - std::exp(-NTU); }

}  // namespace Vk_hexch_lib
