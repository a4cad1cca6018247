#pragma once

#include <cstring>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine_vectors.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/LiquidPoint.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/MonoPhase.h"

namespace Vk_fl_prop_lib {

class FluidFile;

/// Mixture of water and a glycol: polynomials of temperature and concentration, a constant compressibility.
///
/// Enthalpy and entropy are zero at tRef and pRef. Neither temperature nor concentration is held to any limit.
class CBrine final : public CMonoPhase {
 public:
  explicit CBrine(double concentration) { c.conc = concentration; }  ///< [percent]; all else by initCoeffs or loadFile
  explicit CBrine(const BrineVector& vector) { initCoeffs(vector); }
  /// 95 values: conc, kappa, the 90 coefficients by property, concRef, tRef, pRef. The limits stay 0.
  explicit CBrine(const double* vector);
  CBrine(const CBrine&) = default;
  CBrine& operator=(const CBrine&) = default;
  virtual ~CBrine() = default;

  void initCoeffs(const BrineVector& vector) { c = vector; }
  /// 97 values, in the order of BrineVector
  void initCoeffs(const double* vector) { std::memcpy(&c, vector, sizeof c); }
  void SetConc(double concentration) { c.conc = concentration; }
  const BrineVector& coefficients() const { return c; }

  void loadFile(const char* name) override;
  void loadFile(FluidFile& file);  ///< the same from an open source file

  using CMonoPhase::uTP;

  double CvTP(double T, double P, double x) const override;
  double uTP(double T, double P, double x) const override;
  double pUV(double u, double v) const override;
  double uPV(double P, double v) const override;
  double muTV(double T, double v) const override;
  double hPS(double P, double s) const override;
  double hPV(double P, double v) const override;
  double sPH(double P, double h) const override;
  double vPH(double P, double h) const override;
  /// A heat capacity of 0 at tRef ends the process with the line of an assertion.
  double tHP(double h, double P) const override;
  double hTP(double T, double P, double x) const override;
  double CpPH(double P, double h) const override;
  double lambdaPH(double P, double h) const override;
  double muPH(double P, double h) const override;
  double CpTP(double T, double P, double x) const override;
  double lambdaTP(double T, double P, double x) const override;
  double muTP(double T, double P, double x) const override;
  double vTP(double T, double P, double x) const override;
  double sTP(double T, double P, double x) const override;
  double tPV(double P, double v) const override;
  double tPS(double P, double s) const override;
  double Get_x() const override { return 0.0; }
  int Get_fluidType() const override { return 1; }
  double alfa_t(double T, double P, double x) const override;
  double alfa_p(double T, double P, double x) const override;
  double beta_p(double T, double P, double x) const override;
  double beta_h(double T, double P, double x) const override;
  double hTP(double T, double P) const override;
  double sTP(double T, double P) const override;
  double vTP(double T, double P) const override;

  double tFreeze() const;              ///< freezing temperature at the present concentration [K]
  double poly(int i, double T) const;  ///< polynomial i of BrineVector::c; the freezing one (0) does not depend on T
  double alpha(double T) const;        ///< thermal expansion coefficient [1/K]
  double intCpdT(double T) const;      ///< integral of Cp from tRef to T [J/kg]
  double intCpsTdT(double T) const;    ///< antiderivative of Cp / T [J/(kg K)], with a term of its own, see there

  /// What the properties at T and P share, and the three that take more than that.
  LiquidPoint at(double T, double P) const;
  double h(const LiquidPoint& p) const;
  double u(const LiquidPoint& p) const;
  double s(const LiquidPoint& p) const;

 private:
  BrineVector c{};
};

}  // namespace Vk_fl_prop_lib
