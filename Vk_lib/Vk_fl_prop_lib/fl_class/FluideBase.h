#pragma once

#include <array>

namespace Vk_fl_prop_lib {

inline constexpr double R = 8.31451;  ///< molar gas constant [J/(mol K)]
inline constexpr double TOL = 1e-8;   ///< tolerance of the inversions, also their relative step
inline constexpr double INF = 1e300;  ///< stands for an absent bound
inline constexpr int MAX_IT = 20;     ///< iteration limit of the inversions

/// The interface that all fluids share.
///
/// The name of an operation spells result and arguments: hTP is the enthalpy from T and P, tPS the temperature from P
/// and s, wTRhP the humidity ratio from T, relative humidity and P. Letters and units:
///
///   T, t  temperature [K]             P, p    pressure [Pa]             v   specific volume [m3/kg]
///   h     enthalpy [J/kg]             u       internal energy [J/kg]    s   entropy [J/(kg K)]
///   Cp, Cv  heat capacities [J/(kg K)]        lambda  conductivity [W/(m K)]    mu  dynamic viscosity [Pa s]
///   x     quality [kg vapour / kg]; as third argument after T, P it selects the phase of a two-phase fluid, and
///         single-phase fluids ignore it
///   w     humidity ratio [kg water / kg dry air], wsat the same at saturation; moist air is told per kg of dry air
///   Rh    relative humidity [-], thum  wet bulb temperature [K], Tdew  dew point [K]
///
/// Any fluid can be asked anything. An operation without meaning for a fluid keeps the body of this class: it answers
/// 0, and those that belong to one kind of fluid write one line on standard error as well. No property
/// operation throws or allocates or reports a failure; an inversion that does not converge writes a warning on standard
/// error and answers its last iterate.
///
/// A default-constructed fluid is of no use before its initCoeffs or loadFile.
class CFluideBase {
 public:
  /// Reads the coefficients from a source file: "sources/" and name, or name as it stands if it contains a ':'.
  /// Without that file the object stays as it is. A file that lacks a section keeps this function waiting for ever.
  virtual void loadFile(const char* name) = 0;
  /// Fills calcCoeffs for the state (T, P, x, h, v); last is Cp, for moist air a flag of its own.
  virtual void calCoeff(double T, double P, double x, double h, double v, double last) = 0;

  virtual double CvTP(double T, double P, double x) const;
  virtual double uTP(double T, double P, double x) const;
  virtual double pUV(double u, double v) const;
  virtual double uPV(double P, double v) const;
  virtual double muTV(double T, double v) const;
  virtual double hPS(double P, double s) const;
  virtual double hPV(double P, double v) const;
  virtual double sPH(double P, double h) const;
  virtual double vPH(double P, double h) const;
  virtual double tHP(double h, double P) const;  ///< h comes first, unlike in its siblings
  virtual double hTP(double T, double P, double x) const;
  virtual double CpPH(double P, double h) const;
  virtual double lambdaPH(double P, double h) const;
  virtual double muPH(double P, double h) const;
  virtual double CpTP(double T, double P, double x) const;
  virtual double lambdaTP(double T, double P, double x) const;
  virtual double muTP(double T, double P, double x) const;
  virtual double vTP(double T, double P, double x) const;
  virtual double sTP(double T, double P, double x) const;
  virtual double tPV(double P, double v) const;
  virtual double tPS(double P, double s) const;
  virtual double dCvTP_dT(double T, double P, double x) const;  ///< dCv/dT [J/(kg K2)]

  virtual double Get_M() const;           ///< molar mass [kg/mol]
  virtual double Get_x() const;           ///< quality of a single-phase fluid, -1 if it has none
  virtual int Get_fluidType() const = 0;  ///< type code: 1 brine, 2 liquid, 3 ideal gas, 4 water, 6 moist air

  virtual double alfa_t(double T, double P, double x) const = 0;  ///< dv/dT at constant P [m3/(kg K)]
  virtual double alfa_p(double T, double P, double x) const = 0;  ///< dv/dP at constant T [m3/(kg Pa)]

  // Saturation and two-phase states.
  virtual double pSat(double T, double P) const;
  virtual double tSat(double P) const;
  virtual double uTX(double T, double x) const;
  virtual double vTX(double T, double x) const;
  virtual double hTX(double T, double x) const;
  virtual double xPH(double P, double h) const;
  virtual double xTSatH(double T, double h) const;
  virtual void GetCritic(double* p, double* T, double* v) const;  ///< critical point; single-phase fluids write nothing
  virtual double GetTmin() const;                                 ///< lower temperature limit of a two-phase fluid [K]
  virtual double beta_p(double T, double P, double x) const;      ///< dv/dP at constant h [m3/(kg Pa)]
  virtual double beta_h(double T, double P, double x) const;      ///< dv/dh at constant P [m3/J]
  virtual double beta_p2(double T, double P, double x) const;
  virtual double beta_h2(double T, double P, double x) const;
  virtual double hTPliq(double T, double P) const;
  virtual double sTPliq(double T, double P) const;
  virtual double vTPliq(double T, double P) const;
  virtual double hTPgaz(double T, double P) const;
  virtual double vTPgaz(double T, double P) const;
  virtual double hPVgaz(double P, double v) const;
  virtual double sPVgaz(double P, double v) const;
  virtual double pTVgaz(double T, double v) const;
  virtual double sTPgaz(double T, double P) const;

  // Moist air. wsat = 0: the operation computes the saturation itself; M = 0: the molar mass of the dry air.
  virtual double rhTWP(double T, double w, double P) const;
  virtual double wTRhP(double T, double Rh, double P) const;
  virtual double TdewWP(double w, double P) const;
  virtual double hTW(double T, double w, double P, double wsat) const;
  virtual double hSatTP(double T, double P) const;
  virtual double thumTWP(double T, double w, double P, double wsat) const;
  virtual double wSatT(double T, double P) const;
  virtual double CpTW(double T, double w, double P, double wsat) const;
  virtual double CvTW(double T, double w, double P, double M, double wsat) const;
  virtual double muTW(double T, double w, double P, double wsat) const;
  virtual double lambdaTW(double T, double w, double P, double wsat) const;
  virtual double sTWP(double T, double w, double P, double wsat) const;
  virtual double wTH(double T, double h, double P) const;
  virtual double wTV(double T, double v, double P) const;
  virtual double vTW(double T, double w, double P, double wsat) const;
  virtual double tTdewWP(double Tdew, double w, double P) const;
  virtual double wTTdewP(double T, double Tdew, double P) const;
  virtual double tThumW(double thum, double w, double P, double wsat) const;
  virtual double Cphum_TThumW(double T, double thum, double w, double P) const;
  virtual double tsatHWP(double h, double w, double P, double* wsat) const;
  virtual double hTRh(double T, double Rh, double P) const;

  virtual double dhgazDp(double T, double P) const;  ///< dh/dP of the vapour at constant T [J/(kg Pa)]
  virtual double dhliqDp(double T, double P) const;  ///< dh/dP of the liquid at constant T [J/(kg Pa)]
  virtual double pvWP(double w, double P) const;     ///< partial pressure of the vapour [Pa]
  virtual double dudw(double T, double w, double P, double M, double wsat) const;
  virtual double dhdw(double T, double w, double P, double M, double wsat) const;

  // Forms of two arguments, which the inversions take: the fluid's own phase.
  virtual double hTP(double T, double P) const;
  virtual double uTP(double T, double P) const;
  virtual double sTP(double T, double P) const;
  virtual double vTP(double T, double P) const;

  virtual double GetPVL() const;
  virtual double GetPVH() const;
  virtual double hTV(double T, double v) const;
  virtual double sTV(double T, double v) const;
  virtual double uTV(double T, double v) const;
  virtual double lambdaTV(double T, double v) const;
  virtual double CpTV(double T, double v) const;
  virtual double CvTV(double T, double v) const;

  /// Moist air only: 1 unsaturated, 0 saturated. To be set before any operation that depends on it.
  void SetFluidState(int state) { fluidState = state; }

  std::array<double, 9> calcCoeffs{};  ///< results of calCoeff; element 0 is written by moist air only

 protected:
  /// A function of the interface with two arguments; called through it, the most derived override answers.
  using PairFunction = double (CFluideBase::*)(double, double) const;

  CFluideBase() = default;
  CFluideBase(const CFluideBase&) = default;
  CFluideBase& operator=(const CFluideBase&) = default;
  ~CFluideBase() = default;  // nobody owns a fluid through this class

  /// x with f(x, other) = y by the iteration of newton.h, from x0 and within [xMin, xMax].
  /// @return the last iterate, also after the warning that follows maxIt steps (even if the last one was good enough)
  double invertion_x(PairFunction f, double y, double x0, double other, double eps, int maxIt, double xMin,
                     double xMax) const;
  /// x with f(other, x) = y, otherwise as invertion_x.
  double invertion_y(PairFunction f, double y, double other, double x0, double eps, int maxIt, double xMin,
                     double xMax) const;

  double hMin = 0;     ///< enthalpy of the liquid at the lower limit [J/kg], two-phase fluids only
  double pMax = 0;     ///< upper pressure limit [Pa], two-phase fluids only
  double pMin = 0;     ///< lower pressure limit [Pa], two-phase fluids only
  int fluidState = 0;  ///< see SetFluidState
};

/// Stores the version of the library, 1.0.
void GetVersion(double* version);
/// Appends two lines about the library, without a final line end, to a text that has room for 49 more characters.
void GetInfo(char* text);
/// Appends "Modification at " to a text that has room for 16 more characters.
void GetHistoric(char* text);

}  // namespace Vk_fl_prop_lib
