#pragma once

#include <array>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/eau_ifc67_tables.h"

/// Water and steam after the 1967 IFC Formulation for Industrial Use (IFC-67): saturation line, sub-region 1 (water)
/// and sub-region 2 (steam), in its reduced variables
///
///   t = T / Tc,  p = P / Pc,  chi = v / vc,  eps = h / (Pc vc),  sigma = s Tc / (Pc vc),  phi = cp Tc / (Pc vc).
///
/// Nothing tests the range: sub-region 1 is valid from the triple point to 623.15 K at or above the saturation
/// pressure, sub-region 2 at or below it. Outside, the equations extrapolate, and sub-region 1 may answer a
/// not-a-number.
namespace Vk_fl_prop_lib {

/// Saturation line: reduced saturation pressure e^K by the K-function.
double ifc67_saturation(const Ifc67Tables& tables, double t);
/// Its derivative by t.
double ifc67_saturation_slope(const Ifc67Tables& tables, double t);

/// Sub-region 1, water.
class Ifc67Water {
 public:
  Ifc67Water(const Ifc67Tables& tables, double t, double p);

  double chi() const;    // reduced volume
  double sigma() const;  // reduced entropy, 0 for water at the triple point
  double eps() const;    // reduced enthalpy
  double phi() const;    // reduced heat capacity at constant pressure
  double chi_t() const;  // derivative of chi by t at constant p
  double chi_p() const;  // derivative of chi by p at constant t

 private:
  const Ifc67Tables& c_;
  double t_, p_;
  double Y_, Y1_, Y2_;         // Y and its derivatives by t
  double R_, Z_, Z_t_, Z_tt_;  // Z = Y + R
  double u_, w_;               // the denominators a7 + t^19 and a8 + t^11
  double ca_;                  // a6 - t
  double E_, E1_, E2_;         // polynomial of p over w, and its derivatives by p
  double G_, G1_, G2_;         // (a10 + p)^-3 + a11 p, and its derivatives by p
};

/// Sub-region 2, steam.
class Ifc67Steam {
 public:
  /// @param p  above 0
  Ifc67Steam(const Ifc67Tables& tables, double t, double p);

  double chi() const;
  double sigma() const;
  double eps() const;
  double phi() const;
  double chi_t() const;
  double chi_p() const;

 private:
  struct Row {
    double U, U1, U2;  // sum of B X^z over the row, and its derivatives by t
    double V, V1, V2;  // sum of bi X^x over the row, and its derivatives by t
  };

  const Ifc67Tables& c_;
  double t_, p_;
  std::array<Row, 9> rows_;          // 1 to 8
  double Q_, Q1_, Q2_;               // row 9, and its derivatives by t
  double L_, L1_, L2_;               // beta_L, and its derivatives by t
  std::array<double, 11> p_to_the_;  // powers of p
  double p_over_L_10_;               // (p / L)^10
};

}  // namespace Vk_fl_prop_lib
