#pragma once

#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluideBase.h"

namespace Vk_fl_prop_lib {

/// Rules of a fluid with a liquid and a gas phase; the derived class supplies the laws of the single phases.
///
/// The quality x selects the phase of an operation on T and P: liquid for x <= 0, gas for x >= 1, between them a
/// mixture of both. T and P are taken as given: nothing tests that they lie on the saturation line. Operations on T and
/// x take P = pSat(T); those on P and h or v take T = tSat(P) for the mixture.
class CMultiPhase : public CFluideBase {
 public:
  /// Elements 1 to 8 of calcCoeffs; last = 2 takes the derivatives of the mixture, any other value those of one phase.
  void calCoeff(double T, double P, double x, double h, double v, double last) override;

  double CvTP(double T, double P, double x) const override;
  double uTP(double T, double P, double x) const override;
  double pUV(double u, double v) const override;
  double uPV(double P, double v) const override;
  double vPH(double P, double h) const override;
  double hTP(double T, double P, double x) const override;
  double CpPH(double P, double h) const override;
  double lambdaPH(double P, double h) const override;
  double CpTP(double T, double P, double x) const override;
  /// The mixture is weighted by volume shares, x v_gas / v; here v is the liquid's, unlike in lambdaPH.
  double lambdaTP(double T, double P, double x) const override;
  double vTP(double T, double P, double x) const override;
  double tPV(double P, double v) const override;
  double tPS(double P, double s) const override;

  double alfa_t(double T, double P, double x) const override;
  double alfa_p(double T, double P, double x) const override;

  double tSat(double P) const override;  ///< below pMin the answer is tCrit
  double uTX(double T, double x) const override;
  double vTX(double T, double x) const override;
  double hTX(double T, double x) const override;
  double xPH(double P, double h) const override;     ///< within 0 and 1
  double xTSatH(double T, double h) const override;  ///< within 0 and 1
  void GetCritic(double* p, double* T, double* v) const override;
  double GetTmin() const override;
  double beta_p(double T, double P, double x) const override;   ///< of one phase: gas for x > 0.5, else liquid
  double beta_h(double T, double P, double x) const override;   ///< of one phase, as beta_p
  double beta_p2(double T, double P, double x) const override;  ///< of the saturated mixture
  double beta_h2(double T, double P, double x) const override;  ///< of the saturated mixture

  double dhgazDp(double T, double P) const override;
  double dhliqDp(double T, double P) const override;

  // To be given by the derived class.
  void loadFile(const char* name) override = 0;
  int Get_fluidType() const override = 0;
  double muTV(double T, double v) const override = 0;
  double hPS(double P, double s) const override = 0;
  double hPV(double P, double v) const override = 0;
  double sPH(double P, double h) const override = 0;
  double tHP(double h, double P) const override = 0;
  double muPH(double P, double h) const override = 0;
  double muTP(double T, double P, double x) const override = 0;
  double sTP(double T, double P, double x) const override = 0;
  double pSat(double T, double P) const override = 0;
  double hTPliq(double T, double P) const override = 0;
  double sTPliq(double T, double P) const override = 0;
  double vTPliq(double T, double P) const override = 0;
  double hTPgaz(double T, double P) const override = 0;
  double vTPgaz(double T, double P) const override = 0;

  virtual double lambdaTPgaz(double T, double P) const = 0;
  virtual double lambdaTPliq(double T, double P) const = 0;
  virtual double alfa_tliq(double T, double P) const = 0;  ///< dv/dT of the liquid [m3/(kg K)]
  virtual double alfa_tgaz(double T, double P) const = 0;
  virtual double alfa_pliq(double T, double P) const = 0;  ///< dv/dP of the liquid [m3/(kg Pa)]
  virtual double alfa_pgaz(double T, double P) const = 0;
  virtual double dpsat_dt(double T) const = 0;  ///< [Pa/K]
  virtual double CpTPliq(double T, double P) const = 0;
  virtual double CpTPgaz(double T, double P) const = 0;

  // The forms of two arguments, which the names above would hide.
  using CFluideBase::hTP;
  using CFluideBase::sTP;
  using CFluideBase::uTP;
  using CFluideBase::vTP;

 protected:
  CMultiPhase() = default;
  CMultiPhase(const CMultiPhase&) = default;
  CMultiPhase& operator=(const CMultiPhase&) = default;
  ~CMultiPhase() = default;

  double kappaLiq = 0;  ///< compressibility of the liquid; no law reads it
  double pCrit = 0;     ///< critical pressure [Pa]
  double tCrit = 0;     ///< critical temperature [K]
  double vCrit = 0;     ///< critical specific volume [m3/kg]
  double tMin = 0;      ///< lower temperature limit [K]

 private:
  using Operation = double (CMultiPhase::*)(double, double) const;
  double by_enthalpy(double P, double h, Operation liquid, Operation gas) const;
  double u_liquid(double T, double P) const;
  double u_gas(double T, double P) const;
};

}  // namespace Vk_fl_prop_lib
