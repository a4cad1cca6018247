#pragma once

#include <cstring>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/LiquidPoint.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/MonoPhase.h"

namespace Vk_fl_prop_lib {

class FluidFile;

/// The 31 values of a liquid's vector, in vector order. Polynomials in T [K], valid from tMin to tMax.
struct LiquidVector {
  double kappa;       ///< isothermal compressibility [1/Pa]
  double tMin, tMax;  ///< limits of the polynomials [K]
  double pRef, tRef;  ///< reference state [Pa], [K]
  double hRef;        ///< enthalpy at tRef and pRef [J/kg]
  double sRef;        ///< entropy at tRef and pRef [J/(kg K)]
  double rho[6];      ///< density at pRef [kg/m3]
  double cp[6];       ///< heat capacity at constant pressure [J/(kg K)]
  double lambda[6];   ///< conductivity [W/(m K)]
  double mu[6];       ///< natural logarithm of the viscosity in Pa s
};
static_assert(sizeof(LiquidVector) == 31 * sizeof(double));

/// Pure liquid: polynomials of the fifth degree in T, a constant compressibility. Also the stiffness and density of a
/// liquid with entrained gas.
///
/// Nothing tests the arguments. The temperature of tHP, tPS and tPV stays within tMin and tMax, the pressure of pUV at
/// or above 0.
class CLiquide final : public CMonoPhase {
 public:
  CLiquide() = default;
  explicit CLiquide(const LiquidVector& vector) { initCoeffs(vector); }
  explicit CLiquide(const double* vector) { initCoeffs(vector); }  ///< 31 values, in the order of LiquidVector
  CLiquide(const CLiquide&) = default;
  CLiquide& operator=(const CLiquide&) = default;
  virtual ~CLiquide() = default;

  void initCoeffs(const LiquidVector& vector) { c = vector; }
  /// 31 values, in the order of LiquidVector
  void initCoeffs(const double* vector) { std::memcpy(&c, vector, sizeof c); }
  const LiquidVector& coefficients() const { return c; }

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
  int Get_fluidType() const override { return 2; }
  double alfa_t(double T, double P, double x) const override;
  double alfa_p(double T, double P, double x) const override;
  double beta_p(double T, double P, double x) const override;
  double beta_h(double T, double P, double x) const override;
  double hTP(double T, double P) const override;
  double sTP(double T, double P) const override;
  double vTP(double T, double P) const override;

  double vT(double T) const;     ///< specific volume at pRef [m3/kg]
  double alpha(double T) const;  ///< thermal expansion coefficient [1/K]

  // The liquid with a gas: a is the volume ratio of gas to liquid at pRef [-], n the polytropic exponent of the gas
  // [-].
  double bulk(double P, double a, double n) const;     ///< bulk modulus [Pa], law of the compressed volumes
  double bulk2(double P, double a, double n) const;    ///< bulk modulus [Pa], from the sum of the compliances
  double bulk2m(double P, double a, double n) const;   ///< as bulk2 with n in place of 1 / n; equal at n = 1
  double rhoBulk(double T, double P, double a) const;  ///< density [kg/m3]; that of the liquid at pRef

 private:
  LiquidPoint at(double T, double P) const;

  LiquidVector c{};
};

}  // namespace Vk_fl_prop_lib
