#include "kernels/pressure_drop.h"

#include <cmath>

#include "kernels/math_kernels.h"

namespace Vk_pdrop_lib {
namespace {

constexpr double kLowestRe = 0.0001;
constexpr double kLargestFactor = 640000.0;  // 64 / kLowestRe
constexpr double kTwelfth = 0.08333333333333333;
constexpr double kPiHalf = 1.5707963267948966;
constexpr double kFourByPi = 1.2732395447351628;
constexpr double kGravity = 9.81;  // m/s2

/// Flow number at Re = kLowestRe, where f = (64 / 0.08)^2 is kLargestFactor.
double flow_number_threshold(double L, double D) { return std::sqrt(0.0064 * L / D); }

double square(double x) { return x * x; }

}  // namespace

double Reynolds_number(double V, double D, double nu) { return std::fabs(V) * D / nu; }

double Flow_number(double dP, double D, double rho, double nu) { return std::sqrt(2.0 * std::fabs(dP) / rho) * D / nu; }

double FrictionFactor_f_Re(double Re, double k) {
  if (Re <= kLowestRe) return kLargestFactor;
  const double a = std::pow(2.457 * std::log(1.0 / (std::pow(7.0 / Re, 0.9) + 0.27 * k)), 16.0);
  const double b = std::pow(37530.0 / Re, 16.0);
  return 8.0 * std::pow(std::pow(8.0 / Re, 12.0) + 1.0 / std::pow(a + b, 1.5), kTwelfth);
}

double FrictionFactor_f_Lambda(double Lambda, double k, double L, double D) {
  const double threshold = flow_number_threshold(L, D);
  if (!(Lambda > threshold)) return square(64.0 / (std::sqrt(D / L) * threshold));
  const double s = std::sqrt(D / L) * Lambda;
  const double laminar = square(64.0 / s);
  const double turbulent = std::pow(-2.0 * std::log10(2.51 / s + k / 3.7), -2.0);
  const double transition = 7.536577472566709e-05 * s;  // sqrt(8) / 37530
  return std::pow(std::pow(laminar, 12.0) + 1.0 / std::pow(std::pow(turbulent, -8.0) + std::pow(transition, -8.0), 1.5),
                  kTwelfth);
}

void SingPDrop_ksi_beta(double dP, double A, double D, double rho, double mu, double ksi, double beta, double Re_crit,
                        double* Qm, double* Re) {
  if (A <= 0 || D <= 0) {
    *Qm = 0;
    *Re = 0;
    return;
  }
  ksi = Vk_math_lib::max(ksi, 1e-10);
  beta = Vk_math_lib::max(beta, 0.1);
  Re_crit = Vk_math_lib::max(Re_crit, 10.0);

  const double g = std::pow(rho * D / (Re_crit * mu), beta - 1.0);
  const double V_low = 2.0 * std::fabs(dP) * g / (ksi * rho);
  const double V_high = std::pow(2.0 * std::fabs(dP) / (ksi * rho), 1.0 / beta);
  const double V = Vk_math_lib::min(V_low, V_high);
  *Qm = Vk_math_lib::sign_smooth(dP, 0) * rho * A * V;
  *Re = Reynolds_number(V, D, mu / rho);
}

void SingPDrop_BSV(double P1, double P2, double A, double D, double T, double Cp, double Cv, double mu, double Cq,
                   double Re_crit, double* Qm, double* Re) {
  if (A <= 0 || D <= 0) {
    *Qm = 0;
    *Re = 0;
    return;
  }
  const double gamma = Cp / Cv;
  const double r = Cp - Cv;
  const double Pmax = Vk_math_lib::max(P1, P2);
  const double Pmin = Vk_math_lib::min(P1, P2);

  // The throat at the speed of sound.
  const double T_c = 2.0 * Cp * T / (2.0 * Cp + gamma * r);
  const double P_c = Pmax * std::pow(T_c / T, gamma / (gamma - 1.0));
  const double rho_c = P_c / (r * T_c);
  const double V_c = std::sqrt(gamma * r * T_c);

  double rho = rho_c;
  double V = V_c;
  if (!(P_c >= Pmin)) {
    const double T_out = T * std::pow(Pmin / Pmax, (gamma - 1.0) / gamma);
    rho = Pmin / (r * T_out);
    V = std::sqrt(2.0 * Cp * (T - T_out));
    if (Re_crit > 0) {
      // A line from rest to the velocity of Re_crit, at the pressure difference that velocity takes.
      const double Re_linear = Vk_math_lib::min(Re_crit, Reynolds_number(V_c, D, mu / rho_c));
      const double V_linear = Re_linear * mu / (rho * D);
      const double T_linear = T - V_linear * V_linear / (2.0 * Cp);
      const double P_linear = Pmax * std::pow(T_linear / T, gamma / (gamma - 1.0));
      V = Vk_math_lib::min(V, (Pmax - Pmin) * V_linear / Vk_math_lib::max(Pmax - P_linear, 1e-10));
    }
  }
  *Qm = Vk_math_lib::sign_smooth(P1 - P2, 0) * Cq * rho * A * V;
  *Re = Reynolds_number(V, D, mu / rho);
}

double D_CircOrif_RefPt_tanhCq(double Q, double dP, double rho, double nu, double Cq, double lambda_crit) {
  Q = std::fabs(Q);
  dP = std::fabs(dP);
  if (Q == 0) return 0;

  const double V = std::sqrt(2.0 * dP / rho);
  double flow = 0;
  double slope = 0;
  const auto evaluate = [&](double D) {
    const double Lambda = Flow_number(dP, D, rho, nu);
    const double t = std::tanh(2.0 * Lambda / lambda_crit);
    flow = t * Cq * Vk_math_lib::pi_div_4 * (D * D) * V;
    slope = Cq * kPiHalf * D * V * (t + (1.0 - t * t) * Lambda / lambda_crit);
  };

  const double D_start = std::sqrt(kFourByPi * Q / (V * Cq));
  double D = D_start;
  evaluate(D);
  const double error_start = std::fabs(flow - Q);
  for (int i = 0; i < 100 && std::fabs(flow - Q) > 0.0001 * Q && slope != 0; ++i) {
    D = Vk_math_lib::max(D - (flow - Q) / slope, 0.0);
    evaluate(D);
  }
  return std::fabs(flow - Q) > error_start ? D_start : D;
}

void RegPDrop_QfDP(double dP, double A, double D, double L, double k, double rho, double mu, double dz, double eps,
                   double* Qm, double* Re, double* f) {
  if (A <= 0 || D <= 0) {
    *Qm = 0;
    *Re = 0;
    *f = kLargestFactor;
    return;
  }
  const double dP_z = rho * kGravity * dz;
  const double nu = mu / rho;
  const double Lambda = Flow_number(dP - dP_z, D, rho, nu);
  *f = FrictionFactor_f_Lambda(Lambda, k / D, L, D);
  const double Qv = Lambda > flow_number_threshold(L, D)
                        ? Vk_math_lib::signed_sqrt_smooth(dP - dP_z, eps) * std::sqrt(2.0 * D / (*f * L * rho)) * A
                        : (dP - dP_z) * A * D * D / (32.0 * mu * L);
  *Qm = Qv * rho;
  *Re = Reynolds_number(Qv / A, D, nu);
}

void RegPDrop_DPfQ(double Qm, double A, double D, double L, double k, double rho, double mu, double* dP, double* Re,
                   double* f) {
  const double V = Qm / rho / A;
  const double nu = mu / rho;
  *Re = Reynolds_number(V, D, nu);
  *f = FrictionFactor_f_Re(*Re, k / D);
  *dP = *Re > kLowestRe ? std::fabs(V) * (*f * L / D * rho * V) / 2.0 : 32.0 * mu * L * V / (D * D);
}

}  // namespace Vk_pdrop_lib
