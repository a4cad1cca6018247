#pragma once

#include "Vk_lib/Vk_fl_prop_lib/fl_class/MultiPhase.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/eau_ifc67_tables.h"

namespace Vk_fl_prop_lib {

/// Water and steam after the 1967 IFC Formulation for Industrial Use (IFC-67).
///
/// The liquid is always its sub-region 1, the vapour always its sub-region 2, at any T and P and without a test of the
/// range (see Ifc67.h for it); the sub-regions 3 to 6 around the critical point are left out. Internal energy
/// and entropy of the liquid are 0 at the triple point, within the rounding of the coefficients.
class CEau final : public CMultiPhase {
 public:
  /// Ready for use: all constants from the built-in tables.
  CEau();
  CEau(const CEau&) = default;
  CEau& operator=(const CEau&) = default;

  /// Replaces the constants; see CFluideBase. Ten labelled values, then bare numbers in the layout of the tables:
  /// FLUID_CONSTANTS (molar mass, pCrit, tCrit, vCrit, pMin, bulk modulus, tMin, upper temperature limit, b, I1),
  /// SATURATION_LINE, SUBCOOLED_A, SUBCOOLED_a, SUPERHEATED_B, SUPERHEATED_bi, EXP_z, EXP_x, FUN_L,
  /// CONDUCTIVITY (liquid, vapour), VISCOSITY_L, VISCOSITY_0 (H), VISCOSITY_REF (rho_ref, T_ref, mu_ref).
  void loadFile(const char* name) override;

  /// Both phases, by the equation of the IAPS release of 1975 with the tables' shortened coefficients.
  double muTV(double T, double v) const override;
  double hPS(double P, double s) const override;
  double hPV(double P, double v) const override;
  double sPH(double P, double h) const override;
  double tHP(double h, double P) const override;
  double muPH(double P, double h) const override;
  double muTP(double T, double P, double x) const override;
  double sTP(double T, double P, double x) const override;
  double tPV(double P, double v) const override;
  double tPS(double P, double s) const override;

  double Get_M() const override;
  int Get_fluidType() const override;

  /// Saturation pressure [Pa], from tCrit on the critical pressure. P is not used.
  double pSat(double T, double P) const override;
  double hTPliq(double T, double P) const override;
  double sTPliq(double T, double P) const override;
  double vTPliq(double T, double P) const override;
  double hTPgaz(double T, double P) const override;
  double vTPgaz(double T, double P) const override;
  double sTPgaz(double T, double P) const override;
  double dhgazDp(double T, double P) const override;
  double dhliqDp(double T, double P) const override;

  double lambdaTPgaz(double T, double P) const override;  ///< P is not used
  double lambdaTPliq(double T, double P) const override;  ///< P is not used
  double alfa_tliq(double T, double P) const override;
  double alfa_tgaz(double T, double P) const override;
  double alfa_pliq(double T, double P) const override;
  double alfa_pgaz(double T, double P) const override;
  double dpsat_dt(double T) const override;  ///< goes on above tCrit, where pSat is constant
  double CpTPliq(double T, double P) const override;
  double CpTPgaz(double T, double P) const override;

  virtual ~CEau() = default;

  using CMultiPhase::sTP;  // the form of two arguments

 private:
  double t(double T) const { return T / tCrit; }
  double p(double P) const { return P / pCrit; }
  double h_scale() const { return pCrit * vCrit; }
  double s_scale() const { return pCrit * vCrit / tCrit; }
  void set_limits();

  double M;     // molar mass [kg/mol]
  double tMax;  // upper bound of T [K] in the inversions of the vapour
  Ifc67Tables ifc67;
  WaterTransportTables transport;
};

}  // namespace Vk_fl_prop_lib
