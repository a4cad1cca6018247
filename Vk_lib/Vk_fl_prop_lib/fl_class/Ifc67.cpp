#include "Vk_lib/Vk_fl_prop_lib/fl_class/Ifc67.h"

#include <cmath>
#include <cstddef>

namespace Vk_fl_prop_lib {
namespace {

/// x^n as the chain of products x x ... x, and its reciprocal for negative n.
double power(double x, int n) {
  double product = 1.0;
  for (int i = 0; i < (n < 0 ? -n : n); ++i) product *= x;
  return n < 0 ? 1.0 / product : product;
}

/// Sum of term(n) for n = first to last.
template <class Term>
double sum(std::size_t first, std::size_t last, const Term& term) {
  double total = 0.0;
  for (std::size_t n = first; n <= last; ++n) total += term(n);
  return total;
}

/// Sum of coefficient_n x^(n - offset) f(n) for n = first to last.
template <class Coefficients, class Factor>
double series(const Coefficients& coefficients, std::size_t first, std::size_t last, int offset, double x,
              const Factor& factor) {
  return sum(first, last, [&](std::size_t n) {
    const int i = static_cast<int>(n);
    return factor(i) * coefficients[n] * power(x, i - offset);
  });
}

}  // namespace

// ---- saturation line, in y = 1 - t ----

double ifc67_saturation(const Ifc67Tables& tables, double t) {
  const auto& k = tables.k;
  const double y = 1.0 - t;
  const double y2 = y * y, y3 = y2 * y, y4 = y3 * y, y5 = y4 * y;
  const double S = k[1] * y + k[2] * y2 + k[3] * y3 + k[4] * y4 + k[5] * y5;
  const double N = 1.0 + k[6] * y + k[7] * y2;
  const double D = k[8] * y2 + k[9];
  return std::exp(1.0 / t * S / N - y / D);
}

double ifc67_saturation_slope(const Ifc67Tables& tables, double t) {
  const auto& k = tables.k;
  const double y = 1.0 - t;
  const double y2 = y * y, y3 = y2 * y, y4 = y3 * y, y5 = y4 * y;
  const double S = k[1] * y + k[2] * y2 + k[3] * y3 + k[4] * y4 + k[5] * y5;
  const double N = 1.0 + k[6] * y + k[7] * y2;
  const double D = k[8] * y2 + k[9];
  const double S_y = k[1] + 2 * k[2] * y + 3 * k[3] * y2 + 4 * k[4] * y3 + 5 * k[5] * y4;
  const double N_y = k[6] + 2 * k[7] * y;
  // the derivative of 1 / t by y is + 1 / t^2
  const double K_y = S_y / (t * N) + S / (t * t * N) - S * N_y / (t * (N * N)) - (k[9] - k[8] * y2) / (D * D);
  return -ifc67_saturation(tables, t) * K_y;
}

// ---- sub-region 1 ----

Ifc67Water::Ifc67Water(const Ifc67Tables& tables, double t, double p) : c_(tables), t_(t), p_(p) {
  const auto& A = c_.A;
  const auto& a = c_.a;
  Y_ = 1.0 - a[1] * t * t - a[2] * power(t, -6);
  Y1_ = -2 * a[1] * t + 6 * a[2] * power(t, -7);
  Y2_ = -2 * a[1] - 42 * a[2] * power(t, -8);
  R_ = std::sqrt(a[3] * Y_ * Y_ - 2 * a[4] * t + 2 * a[5] * p);
  Z_ = Y_ + R_;
  const double q = a[3] * Y_ * Y1_ - a[4];
  Z_t_ = Y1_ + q / R_;
  Z_tt_ = Y2_ + a[3] * (Y1_ * Y1_ + Y_ * Y2_) / R_ - q * q / (R_ * R_ * R_);
  u_ = a[7] + power(t, 19);
  w_ = a[8] + power(t, 11);
  ca_ = a[6] - t;
  E_ = A[17] * p + A[18] * p * p + A[19] * p * p * p;
  E1_ = A[17] + 2 * A[18] * p + 3 * A[19] * p * p;
  E2_ = 2 * A[18] + 6 * A[19] * p;
  G_ = power(a[10] + p, -3) + a[11] * p;
  G1_ = a[11] - 3 * power(a[10] + p, -4);
  G2_ = 12 * power(a[10] + p, -5);
}

double Ifc67Water::chi() const {
  const auto& A = c_.A;
  const auto& a = c_.a;
  const double t = t_, p = p_, t2 = t * t;
  return A[11] * a[5] * std::pow(Z_, -5.0 / 17.0) +
         (A[12] + A[13] * t + A[14] * t2 + A[15] * power(ca_, 10) + A[16] / u_) - E1_ / w_ -
         A[20] * power(t, 18) * (a[9] + t2) * G1_ + 3 * A[21] * (a[12] - t) * p * p +
         4 * A[22] * power(t, -20) * power(p, 3);
}

double Ifc67Water::sigma() const {
  const auto& A = c_.A;
  const auto& a = c_.a;
  const double t = t_, p = p_, t2 = t * t;
  return A[0] * std::log(t) - series(A, 2, 10, 2, t, [](int n) { return n - 1; }) +
         A[11] * ((5.0 / 12.0 * Z_ - (a[3] - 1.0) * Y_) * Y1_ + a[4]) * std::pow(Z_, -5.0 / 17.0) +
         (-A[13] - 2 * A[14] * t + 10 * A[15] * power(ca_, 9) + 19 * A[16] * power(t, 18) / (u_ * u_)) * p -
         11 * power(t, 10) * E_ / (w_ * w_) + A[20] * power(t, 17) * (18 * a[9] + 20 * t2) * G_ + A[21] * power(p, 3) +
         20 * A[22] * power(t, -21) * power(p, 4);
}

double Ifc67Water::eps() const {
  const auto& A = c_.A;
  const auto& a = c_.a;
  const double t = t_, p = p_, t2 = t * t;
  return A[0] * t - series(A, 1, 10, 1, t, [](int n) { return n - 2; }) +
         A[11] * (Z_ * (17 * (Z_ / 29.0 - Y_ / 12.0) + 5.0 / 12.0 * t * Y1_) + a[4] * t - (a[3] - 1.0) * t * Y_ * Y1_) *
             std::pow(Z_, -5.0 / 17.0) +
         (A[12] - A[14] * t2 + A[15] * (9 * t + a[6]) * power(ca_, 9) +
          A[16] * (20 * power(t, 19) + a[7]) / (u_ * u_)) *
             p -
         (12 * power(t, 11) + a[8]) * E_ / (w_ * w_) + A[20] * power(t, 18) * (17 * a[9] + 19 * t2) * G_ +
         A[21] * a[12] * power(p, 3) + 21 * A[22] * power(t, -20) * power(p, 4);
}

double Ifc67Water::phi() const {
  const auto& A = c_.A;
  const auto& a = c_.a;
  const double t = t_, p = p_, t2 = t * t;
  const double u2 = u_ * u_, u3 = u2 * u_, w2 = w_ * w_, w3 = w2 * w_;
  // second derivative by t of the bracket that A11 multiplies in the Gibbs function
  const double M = (17.0 / 29.0 * Z_tt_ - 17.0 / 12.0 * Y2_) * std::pow(Z_, 12.0 / 17.0) +
                   (24.0 / 29.0 * Z_t_ - 2 * Y1_) * std::pow(Z_, -5.0 / 17.0) * Z_t_ +
                   (12.0 / 29.0 * Z_ - Y_) *
                       (std::pow(Z_, -5.0 / 17.0) * Z_tt_ - 5.0 / 17.0 * std::pow(Z_, -22.0 / 17.0) * Z_t_ * Z_t_);
  const double zeta_tt =
      -A[0] / t + series(A, 3, 10, 3, t, [](int n) { return (n - 1) * (n - 2); }) + A[11] * M +
      p * (2 * A[14] + 90 * A[15] * power(ca_, 8) + 722 * A[16] * power(t, 36) / u3 - 342 * A[16] * power(t, 17) / u2) -
      E_ * (242 * power(t, 20) / w3 - 110 * power(t, 9) / w2) - A[20] * power(t, 16) * (306 * a[9] + 380 * t2) * G_ +
      420 * A[22] * power(t, -22) * power(p, 4);
  return -t * zeta_tt;
}

double Ifc67Water::chi_t() const {
  const auto& A = c_.A;
  const auto& a = c_.a;
  const double t = t_, p = p_, t2 = t * t;
  return -5.0 / 17.0 * A[11] * a[5] * std::pow(Z_, -22.0 / 17.0) * Z_t_ + A[13] + 2 * A[14] * t -
         10 * A[15] * power(ca_, 9) - 19 * A[16] * power(t, 18) / (u_ * u_) + 11 * power(t, 10) * E1_ / (w_ * w_) -
         A[20] * power(t, 17) * (18 * a[9] + 20 * t2) * G1_ - 3 * A[21] * p * p -
         80 * A[22] * power(t, -21) * power(p, 3);
}

double Ifc67Water::chi_p() const {
  const auto& A = c_.A;
  const auto& a = c_.a;
  const double t = t_, p = p_;
  return -5.0 / 17.0 * A[11] * (a[5] * a[5]) * std::pow(Z_, -22.0 / 17.0) / R_ - E2_ / w_ -
         A[20] * power(t, 18) * (a[9] + t * t) * G2_ + 6 * A[21] * (a[12] - t) * p + 12 * A[22] * power(t, -20) * p * p;
}

// ---- sub-region 2 ----

namespace {

/// A fraction U / (p^(2 - mu) + V) of the rows 6 to 8, multiplied through by p^(mu - 2) so that no number grows huge at
/// low pressure.
struct Fraction {
  double H;       // 1 + p^(mu - 2) V
  double H1;      // its derivative by t
  double J;       // the fraction
  double J1, J2;  // its derivatives by t

  template <class Row>
  Fraction(const Row& row, double p_to_the_m) {
    const double F = p_to_the_m * row.U, F1 = p_to_the_m * row.U1, F2 = p_to_the_m * row.U2;
    const double H2 = p_to_the_m * row.V2;
    H = 1.0 + p_to_the_m * row.V;
    H1 = p_to_the_m * row.V1;
    J = F / H;
    J1 = F1 / H - F * H1 / (H * H);
    J2 = F2 / H - (2 * F1 * H1 + F * H2) / (H * H) + 2 * F * (H1 * H1) / (H * H * H);
  }
};

}  // namespace

Ifc67Steam::Ifc67Steam(const Ifc67Tables& tables, double t, double p) : c_(tables), t_(t), p_(p), rows_() {
  const double b = c_.b;
  const double X = std::exp(b * (1.0 - t));
  for (std::size_t mu = 1; mu <= 8; ++mu) {
    Row& row = rows_[mu];
    for (std::size_t nu = 1; nu <= 3; ++nu) {
      const double z = c_.z[mu][nu];
      const double term = c_.B[mu][nu] * std::pow(X, z);
      row.U += term;
      row.U1 += z * term;
      row.U2 += z * z * term;
    }
    for (std::size_t lambda = 1; lambda <= 2; ++lambda) {
      const double x = c_.x[mu][lambda];
      const double term = c_.bi[mu][lambda] * std::pow(X, x);
      row.V += term;
      row.V1 += x * term;
      row.V2 += x * x * term;
    }
    row.U1 *= -b;  // dX/dt = -b X
    row.V1 *= -b;
    row.U2 *= b * b;
    row.V2 *= b * b;
  }
  Q_ = series(c_.B[9], 0, 6, 0, X, [](int) { return 1; });
  Q1_ = -b * series(c_.B[9], 0, 6, 0, X, [](int nu) { return nu; });
  Q2_ = b * b * series(c_.B[9], 0, 6, 0, X, [](int nu) { return nu * nu; });

  L_ = c_.L[0] + c_.L[1] * t + c_.L[2] * t * t;
  L1_ = c_.L[1] + 2 * c_.L[2] * t;
  L2_ = 2 * c_.L[2];
  p_over_L_10_ = power(p / L_, 10);

  p_to_the_[0] = 1.0;
  for (std::size_t n = 1; n < p_to_the_.size(); ++n) p_to_the_[n] = p_to_the_[n - 1] * p;
}

double Ifc67Steam::chi() const {
  return c_.I1 * t_ / p_ -
         sum(1, 5, [&](std::size_t mu) { return static_cast<double>(mu) * p_to_the_[mu - 1] * rows_[mu].U; }) -
         sum(6, 8,
             [&](std::size_t mu) {
               const std::size_t m = mu - 2;
               const Fraction f(rows_[mu], p_to_the_[m]);
               return static_cast<double>(m) * p_to_the_[m - 1] * rows_[mu].U / (f.H * f.H);
             }) +
         11 * p_over_L_10_ * Q_;
}

double Ifc67Steam::sigma() const {
  const auto& B = c_.B;
  return -c_.I1 * std::log(p_) + B[0][0] * std::log(t_) - series(B[0], 2, 5, 2, t_, [](int nu) { return nu - 1; }) +
         sum(1, 5, [&](std::size_t mu) { return p_to_the_[mu] * rows_[mu].U1; }) +
         sum(6, 8, [&](std::size_t mu) { return Fraction(rows_[mu], p_to_the_[mu - 2]).J1; }) -
         p_ * p_over_L_10_ * (Q1_ - 10 * L1_ / L_ * Q_);
}

double Ifc67Steam::eps() const {
  const auto& B = c_.B;
  return B[0][0] * t_ - series(B[0], 1, 5, 1, t_, [](int nu) { return nu - 2; }) -
         sum(1, 5, [&](std::size_t mu) { return p_to_the_[mu] * (rows_[mu].U - t_ * rows_[mu].U1); }) -
         sum(6, 8,
             [&](std::size_t mu) {
               const Fraction f(rows_[mu], p_to_the_[mu - 2]);
               return f.J - t_ * f.J1;
             }) +
         p_ * p_over_L_10_ * (Q_ - t_ * (Q1_ - 10 * L1_ / L_ * Q_));
}

double Ifc67Steam::phi() const {
  const auto& B = c_.B;
  const double L1_L = L1_ / L_;
  const double zeta_tt = -B[0][0] / t_ + series(B[0], 3, 5, 3, t_, [](int nu) { return (nu - 1) * (nu - 2); }) -
                         sum(1, 5, [&](std::size_t mu) { return p_to_the_[mu] * rows_[mu].U2; }) -
                         sum(6, 8, [&](std::size_t mu) { return Fraction(rows_[mu], p_to_the_[mu - 2]).J2; }) +
                         p_ * p_over_L_10_ * (Q2_ - 20 * L1_L * Q1_ + (110 * (L1_L * L1_L) - 10 * L2_ / L_) * Q_);
  return -t_ * zeta_tt;
}

double Ifc67Steam::chi_t() const {
  return c_.I1 / p_ -
         sum(1, 5, [&](std::size_t mu) { return static_cast<double>(mu) * p_to_the_[mu - 1] * rows_[mu].U1; }) -
         sum(6, 8,
             [&](std::size_t mu) {
               const std::size_t m = mu - 2;
               const Row& row = rows_[mu];
               const Fraction f(row, p_to_the_[m]);
               const double H2 = f.H * f.H, H3 = H2 * f.H;
               return static_cast<double>(m) * p_to_the_[m - 1] * (row.U1 / H2 - 2 * row.U * f.H1 / H3);
             }) +
         11 * p_over_L_10_ * (Q1_ - 10 * L1_ / L_ * Q_);
}

double Ifc67Steam::chi_p() const {
  return -c_.I1 * t_ / (p_ * p_) - sum(2, 5, [&](std::size_t mu) {
    return static_cast<double>(mu * (mu - 1)) * p_to_the_[mu - 2] * rows_[mu].U;
  }) - sum(6, 8, [&](std::size_t mu) {
    const std::size_t m = mu - 2;
    const Row& row = rows_[mu];
    const Fraction f(row, p_to_the_[m]);
    const double H2 = f.H * f.H, H3 = H2 * f.H;
    return static_cast<double>(m * (m - 1)) * p_to_the_[m - 2] * row.U / H2 -
           2 * static_cast<double>(m * m) * p_to_the_[2 * m - 2] * row.U * row.V / H3;
  }) + 110 * p_over_L_10_ * Q_ / p_;
}

}  // namespace Vk_fl_prop_lib
