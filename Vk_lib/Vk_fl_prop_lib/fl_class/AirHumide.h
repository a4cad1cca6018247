#pragma once

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide_vector.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Eau.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluideBase.h"

namespace Vk_fl_prop_lib {

class FluidFile;

/// Moist air: dry air with w kg of water per kg of it; all specific quantities are per kg of dry air.
///
/// Below saturation the water is vapour. At and above it the surplus w - wsat is liquid water, whose share comes from
/// CEau at quality 0 and at P, but at least at its saturation pressure. Which of the two holds is not found out here:
/// SetFluidState tells it beforehand, and w is then taken as it is.
///
/// Arguments: M = 0 stands for the molar mass of dry air, wsat = 0 for the operation's own wSatT(T, P). A humidity
/// ratio of 1e36 and more says that there is no saturation at this pressure. Enthalpy and entropy have heat capacities
/// and gas constants of their own, not those of the vector.
class CAirHumide final : public CFluideBase {
 public:
  CAirHumide() = default;
  explicit CAirHumide(const MoistAirVector& vector) { initCoeffs(vector); }
  explicit CAirHumide(const double* vector) { initCoeffs(vector); }  ///< 10 values, in the order of MoistAirVector
  CAirHumide(const CAirHumide&) = default;
  CAirHumide& operator=(const CAirHumide&) = default;
  virtual ~CAirHumide() = default;

  void initCoeffs(const MoistAirVector& vector);  ///< sets the entropy offset to 1000 as well
  void initCoeffs(const double* vector);          ///< 10 values, in the order of MoistAirVector

  void loadFile(const char* name) override;
  void loadFile(FluidFile& file);  ///< the same from an open source file
  /// Elements 0 to 8 of calcCoeffs; last = 0 adds the enthalpy of the liquid.
  void calCoeff(double T, double P, double w, double h, double v, double last) override;

  double Get_M() const override;  ///< the molar mass of water, on purpose
  int Get_fluidType() const override;

  double alfa_t(double T, double w, double P) const override;  ///< dv/dT at constant P; w comes before P
  double alfa_p(double T, double w, double P) const override;  ///< dv/dP at constant T; w comes before P
  double alfa_w(double T, double w, double P) const;           ///< dv/dw of unsaturated air

  // ---- saturation and composition ----

  /// Saturation pressure over ice and over water (Hyland and Wexler, 1983), blended within about 1 K around 273.15 K so
  /// that there is no kink. P is not used.
  double pSat(double T, double P) const override;
  double dpSatDt(double T, double P) const;  ///< [Pa/K] pSat times the slope of the law over ice or over water alone
  double dpSatDp(double T, double P) const;  ///< 0
  using CFluideBase::tSat;                   // not for moist air
  double tSat(double pv, double P) const;    ///< T with pSat(T, P) = pv, from 300 K
  double facteurCorrection(double P) const;  ///< correction of the saturation pressure for air at P; not used here
  /// 1e38 where there is no saturation: water's own saturation pressure is at or above P, or pSat is above P.
  double wSatT(double T, double P) const override;
  double dwSatDt(double T, double P) const;  ///< 0 where there is no saturation
  double dwSatDp(double T, double P) const;  ///< 0 where there is no saturation
  double pvWP(double w, double P) const override;
  double rhTWP(double T, double w, double P) const override;  ///< above 473.15 K the molar share of the vapour
  double wTRhP(double T, double Rh, double P) const override;
  double TdewWP(double w, double P) const override;  ///< 173.15 K for dry air
  double wTdewP(double Tdew, double P) const;        ///< humidity ratio with the dew point Tdew
  double hl(double T) const;                         ///< latent heat of water [J/kg]

  // ---- state functions ----

  double vTW(double T, double w, double P, double wsat) const override;
  double hTW(double T, double w, double P, double wsat) const override;
  double hTW2(double T, double w, double P) const;
  double hTRh(double T, double Rh, double P) const override;
  double hSatTP(double T, double P) const override;  ///< saturated at P, but the enthalpy is taken at 101325 Pa
  double wTH(double T, double h, double P) const override;
  double wTV(double T, double v, double P) const override;
  /// Not consistent with hTW: the dry air's heat capacity is 1 kJ/(kg K), Mw / Ma a rounded literal.
  double sTWP(double T, double w, double P, double wsat) const override;
  double CpTW(double T, double w, double P, double wsat) const override;    ///< of air with all water as vapour
  static constexpr double CpW(double w) { return 1000 * (Cpa + Cpv * w); }  ///< what CpTW depends on
  double CvTW(double T, double w, double P, double M, double wsat) const override;
  double dpdt(double v, double w, double M, double wsat) const;  ///< dP/dT at constant v [Pa/K]
  /// Polynomials of T - 273.15 and w, with the liquid's conductivity added by mass.
  double lambdaTW(double T, double w, double P, double wsat) const override;
  /// Polynomials of T - 273.15 and w, with the liquid's viscosity added by mass.
  double muTW(double T, double w, double P, double wsat) const override;
  double dudw(double T, double w, double P, double M, double wsat) const override;
  double dhdw(double T, double w, double P, double M, double wsat) const override;

  // ---- psychrometry ----

  /// Wet bulb temperature, at most T; T for saturated air. Warns on standard error if it does not converge.
  double thumTWP(double T, double w, double P, double wsat) const override;
  double tThumW(double thum, double w, double P, double wsat) const override;  ///< dry bulb temperature
  double wsatThumT(double thum, double T, double P) const;                     ///< humidity ratio from both bulbs
  /// Wet bulb temperature of tThumW, if pvsat is the saturation pressure there [Pa].
  double thumTPvPvsat(double T, double pv, double pvsat, double P) const;
  double dTdThum(double thum, double w, double P) const;  ///< slope of tThumW as in use; not its exact derivative
  double Cphum_TThumW(double T, double thum, double w, double P) const override;
  double tTdewWP(double Tdew, double w, double P) const override;
  double wTTdewP(double T, double Tdew, double P) const override;
  /// Temperature with hTW(T, w, P) = h within 173.15 and 373.15 K, and wSatT there. Warns if it does not converge.
  double tsatHWP(double h, double w, double P, double* wsat) const override;

 protected:
  /// A function of four arguments, the last of which is given as 0.
  using QuadFunction = double (CAirHumide::*)(double, double, double, double) const;
  /// As invertion_x of the root for f(x, a1, a2, 0) = y, but silent.
  /// @param ok  false if the last of maxIt steps still missed the tolerance
  double x_invertion(QuadFunction f, double y, double x0, double a1, double a2, double eps, int maxIt, double xMin,
                     double xMax, bool* ok) const;

 private:
  static constexpr double Cpa = 1.0066;  // heat capacity of dry air in the enthalpy [kJ/(kg K)]
  static constexpr double Cpv = 1.8266;  // heat capacity of the vapour [kJ/(kg K)]

  bool unsaturated() const { return static_cast<double>(fluidState) > 0.5; }
  double wsat_or_own(double wsat, double T, double P) const { return wsat == 0.0 ? wSatT(T, P) : wsat; }
  double liquid_pressure(double T, double P) const;
  double liquid_enthalpy(double T, double P) const;
  double entropy(double t, double x, double pv, double P) const;

  CEau water;
  MoistAirVector c{};
  double sRef = 0;  // entropy offset [J/(kg K)]
};

}  // namespace Vk_fl_prop_lib
