#pragma once

#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluideBase.h"

namespace Vk_fl_prop_lib {

/// A fluid of one phase: ideal gas, brine or liquid. The quality x of its operations is not read.
class CMonoPhase : public CFluideBase {
 public:
  /// Fills elements 1 to 8 of calcCoeffs with the coefficients of a volume's balances; the last argument is Cp.
  void calCoeff(double T, double P, double x, double h, double v, double Cp) override;

  // Operations of two arguments that the declarations below would hide.
  using CFluideBase::hTP;
  using CFluideBase::sTP;
  using CFluideBase::uTP;
  using CFluideBase::vTP;

  double uTP(double T, double P, double x) const override;
  double pUV(double u, double v) const override = 0;
  double uPV(double P, double v) const override = 0;
  double muTV(double T, double v) const override = 0;
  double hPS(double P, double s) const override = 0;
  double hPV(double P, double v) const override = 0;
  double sPH(double P, double h) const override = 0;
  double vPH(double P, double h) const override = 0;
  double tHP(double h, double P) const override = 0;
  double hTP(double T, double P, double x) const override = 0;
  double CpPH(double P, double h) const override = 0;
  double lambdaPH(double P, double h) const override = 0;
  double muPH(double P, double h) const override = 0;
  double CpTP(double T, double P, double x) const override = 0;
  double lambdaTP(double T, double P, double x) const override = 0;
  double muTP(double T, double P, double x) const override = 0;
  double vTP(double T, double P, double x) const override = 0;
  double sTP(double T, double P, double x) const override = 0;
  double tPV(double P, double v) const override = 0;
  double tPS(double P, double s) const override = 0;

  double alfa_t(double T, double P, double x) const override;
  double alfa_p(double T, double P, double x) const override;

  double hTV(double T, double v) const override;
  double sTV(double T, double v) const override;
  double uTV(double T, double v) const override;
  double CpTV(double T, double v) const override;
  double CvTV(double T, double v) const override;

 protected:
  CMonoPhase() = default;
  CMonoPhase(const CMonoPhase&) = default;
  CMonoPhase& operator=(const CMonoPhase&) = default;
  ~CMonoPhase() = default;
};

}  // namespace Vk_fl_prop_lib
