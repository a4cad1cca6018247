#pragma once

#include <array>
#include <bit>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG_vectors.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/MonoPhase.h"

namespace Vk_fl_prop_lib {

class FluidFile;

/// Pure ideal gas whose heat capacity, conductivity and viscosity are polynomials of the fifth degree in T.
///
/// P v = R T / M; h and u depend on T alone; the reference state carries hRef and sRef of the vector, and u = h - P v.
/// Nothing tests the arguments: the polynomials hold from tMin to tMax, and P = 0 gives infinities. The temperature of
/// tHP, tU and tPS stays within tMin and tMax; a target outside of it warns and answers the limit.
class CIdG final : public CMonoPhase {
 public:
  CIdG() = default;
  explicit CIdG(const GasVector& vector) { initCoeffs(vector); }
  explicit CIdG(const double* vector) { initCoeffs(vector); }  ///< 25 values, in the order of GasVector
  CIdG(const CIdG& other) : CMonoPhase(other) { initCoeffs(other.c); }
  CIdG& operator=(const CIdG& other);
  virtual ~CIdG() = default;

  void initCoeffs(const GasVector& vector) { initCoeffs(std::bit_cast<Values>(vector).data()); }
  void initCoeffs(const double* vector);  ///< 25 values, in the order of GasVector
  /// As initCoeffs but without a copy: the values must last until the next one is called.
  void borrowCoeffs(const double* vector) { c = vector; }
  GasVector coefficients() const;

  void loadFile(const char* name) override;
  void loadFile(FluidFile& file);  ///< the same from an open source file

  using CMonoPhase::vTP;

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
  double dCvTP_dT(double T, double P, double x) const override;
  double Get_M() const override { return c[M]; }
  double Get_x() const override { return 1.0; }
  int Get_fluidType() const override { return 3; }
  double alfa_t(double T, double P, double x) const override;
  double alfa_p(double T, double P, double x) const override;
  double hTP(double T, double P) const override;
  double uTP(double T, double P) const override;
  double sTP(double T, double P) const override;

  double tU(double u) const;             ///< temperature [K] from the internal energy [J/kg]
  double pTV(double T, double v) const;  ///< pressure [Pa] from T [K] and v [m3/kg]

 private:
  using Values = std::array<double, sizeof(GasVector) / sizeof(double)>;
  // Places of a vector's values, in the order of GasVector; from cp on each is the first of six.
  enum { M, tMin, tMax, pRef, tRef, hRef, sRef, cp, lambda = cp + 6, mu = lambda + 6 };

  Values own{};
  const double* c = own.data();  // own, or those that borrowCoeffs was given
};

}  // namespace Vk_fl_prop_lib
