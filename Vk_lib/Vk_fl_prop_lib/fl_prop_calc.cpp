#include "Vk_lib/Vk_fl_prop_lib/fl_prop_calc.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"

namespace Vk_fl_prop_lib {
namespace {

/// A property code: what it means and how a fluid computes it at a state, in the form that the calculator has it.
template <class Fluid, class... State>
struct Property {
  Quantity quantity;
  double (*value)(const Fluid& f, State... state);
};

constexpr Quantity kVolume = {"v", "specific volume", "m3/kg"};
constexpr Quantity kEnthalpy = {"h", "specific enthalpy", "J/kg"};
constexpr Quantity kEntropy = {"s", "specific entropy", "J/(kg K)"};
constexpr Quantity kInternalEnergy = {"u", "specific internal energy", "J/kg"};
constexpr Quantity kCp = {"cp", "specific heat at constant pressure", "J/(kg K)"};
constexpr Quantity kCv = {"cv", "specific heat at constant volume", "J/(kg K)"};
constexpr Quantity kConductivity = {"lambda", "thermal conductivity", "W/(m K)"};
constexpr Quantity kViscosity = {"mu", "dynamic viscosity", "Pa s"};
constexpr Quantity kExpansion = {"alpha", "isobaric expansion coefficient", "1/K"};
constexpr Quantity kCompressibility = {"kappa", "isothermal compressibility (negative)", "1/Pa"};

// The rows of each calculator. Row i has code i + 1.

constexpr std::array<Property<CBrine, const LiquidPoint&>, 13> kBrineProperties = {{
    {kVolume, [](auto&, auto& p) { return p.v; }},
    {kEnthalpy, [](auto& f, auto& p) { return f.h(p); }},
    {kEntropy, [](auto& f, auto& p) { return f.s(p); }},
    {kInternalEnergy, [](auto& f, auto& p) { return f.u(p); }},
    {kCp, [](auto&, auto& p) { return p.Cp; }},
    {kCv, [](auto&, auto& p) { return p.Cv(); }},
    {kConductivity, [](auto& f, auto& p) { return f.lambdaTP(p.T, p.P, 0); }},
    {kViscosity, [](auto& f, auto& p) { return f.muTP(p.T, p.P, 0); }},
    {kExpansion, [](auto&, auto& p) { return p.alfa_t() / p.v; }},
    {kCompressibility, [](auto&, auto& p) { return p.alfa_p() / p.v; }},
    {{"c_min", "minimum concentration", "percent"}, [](auto& f, auto&) { return f.coefficients().cMin; }},
    {{"c_max", "maximum concentration", "percent"}, [](auto& f, auto&) { return f.coefficients().cMax; }},
    {{"t_freeze", "freezing temperature", "K"}, [](auto& f, auto&) { return f.tFreeze(); }},
}};

template <class Fluid>  // CLiquide and CIdG
constexpr std::array<Property<Fluid, double, double>, 12> kTPProperties = {{
    {kVolume, [](auto& f, double T, double P) { return f.vTP(T, P, 0); }},
    {kEnthalpy, [](auto& f, double T, double P) { return f.hTP(T, P, 0); }},
    {kEntropy, [](auto& f, double T, double P) { return f.sTP(T, P, 0); }},
    {kInternalEnergy, [](auto& f, double T, double P) { return f.uTP(T, P, 0); }},
    {kCp, [](auto& f, double T, double P) { return f.CpTP(T, P, 0); }},
    {kCv, [](auto& f, double T, double P) { return f.CvTP(T, P, 0); }},
    {kConductivity, [](auto& f, double T, double P) { return f.lambdaTP(T, P, 0); }},
    {kViscosity, [](auto& f, double T, double P) { return f.muTP(T, P, 0); }},
    {kExpansion, [](auto& f, double T, double P) { return f.alfa_t(T, P, 0) / f.vTP(T, P, 0); }},
    {kCompressibility, [](auto& f, double T, double P) { return f.alfa_p(T, P, 0) / f.vTP(T, P, 0); }},
    {{"t_min", "lower temperature limit", "K"}, [](auto& f, double, double) { return f.coefficients().tMin; }},
    {{"t_max", "upper temperature limit", "K"}, [](auto& f, double, double) { return f.coefficients().tMax; }},
}};

using Air = CAirHumide;
constexpr std::array<Property<Air, double, double, double, double>, 16> kAirProperties = {{
    {kVolume, [](auto& f, double T, double w, double P, double) { return f.vTW(T, w, P, 0); }},
    {kEnthalpy, [](auto& f, double T, double w, double P, double) { return f.hTW(T, w, P, 0); }},
    {kEntropy, [](auto& f, double T, double w, double P, double) { return f.sTWP(T, w, P, 0); }},
    {kInternalEnergy,
     [](auto& f, double T, double w, double P, double) { return f.hTW(T, w, P, 0) - f.vTW(T, w, P, 0) * P; }},
    {kCp, [](auto& f, double T, double w, double P, double) { return f.CpTW(T, w, P, 0); }},
    {kCv, [](auto& f, double T, double w, double P, double) { return f.CvTW(T, w, P, 0, 0); }},
    {kConductivity, [](auto& f, double T, double w, double P, double) { return f.lambdaTW(T, w, P, 0); }},
    {kViscosity, [](auto& f, double T, double w, double P, double) { return f.muTW(T, w, P, 0); }},
    {kExpansion, [](auto& f, double T, double w, double P, double) { return f.alfa_t(T, w, P) / f.vTW(T, w, P, 0); }},
    {kCompressibility,
     [](auto& f, double T, double w, double P, double) { return f.alfa_p(T, w, P) / f.vTW(T, w, P, 0); }},
    {{"rh", "relative humidity", "1"}, [](auto& f, double T, double w, double P, double) { return f.rhTWP(T, w, P); }},
    {{"t_dew", "dew point", "K"}, [](auto& f, double, double w, double P, double) { return f.TdewWP(w, P); }},
    {{"w_sat", "saturation humidity ratio (1e38: there is none)", "kg/kg"},
     [](auto& f, double T, double, double P, double) { return f.wSatT(T, P); }},
    {{"p_sat", "saturation pressure", "Pa"}, [](auto& f, double T, double, double P, double) { return f.pSat(T, P); }},
    {{"p_v", "vapour partial pressure", "Pa"},
     [](auto& f, double, double w, double P, double) { return f.pvWP(w, P); }},
    {{"t_wet", "wet bulb temperature", "K"},
     [](auto& f, double T, double w, double P, double wsat) { return f.thumTWP(T, w, P, wsat); }},
}};

template <class Row, std::size_t n>
constexpr std::array<Quantity, n> quantities(const std::array<Row, n>& properties) {
  std::array<Quantity, n> result{};
  for (std::size_t i = 0; i < n; ++i) result[i] = properties[i].quantity;
  return result;
}
constexpr auto kBrineQuantities = quantities(kBrineProperties);
constexpr auto kTPQuantities = quantities(kTPProperties<CIdG>);
constexpr auto kAirQuantities = quantities(kAirProperties);

/// All properties. Out of line, so that the question for one does not pay for the loop.
template <class Fluid, class... State, std::size_t n>
[[gnu::noinline]] void evaluate_all(const std::array<Property<Fluid, State...>, n>& properties, double* out,
                                    const Fluid& fluid, std::type_identity_t<State>... state) {
  for (std::size_t i = 0; i < n; ++i) out[i] = properties[i].value(fluid, state...);
}

/// One property, or all of them for code 0; false for any other code.
template <class Fluid, class... State, std::size_t n>
bool evaluate(const std::array<Property<Fluid, State...>, n>& properties, int code, double* out, const Fluid& fluid,
              std::type_identity_t<State>... state) {
  if (code > 0 && code <= static_cast<int>(n)) {
    *out = properties[static_cast<std::size_t>(code - 1)].value(fluid, state...);
    return true;
  }
  if (code != 0) return false;
  evaluate_all(properties, out, fluid, state...);
  return true;
}

bool fail(char* msg, const char* reason) {
  std::memcpy(msg, reason, std::strlen(reason) + 1);
  return false;
}

// Where a gas's and a liquid's vector have the limits.
constexpr std::size_t kTMin = offsetof(GasVector, tMin) / sizeof(double);
constexpr std::size_t kTMax = offsetof(GasVector, tMax) / sizeof(double);
static_assert(offsetof(LiquidVector, tMin) == offsetof(GasVector, tMin));
static_assert(offsetof(LiquidVector, tMax) == offsetof(GasVector, tMax));

template <class Fluid>
bool calculate_within_limits(const Fluid& fluid, const double* coeffs, double T, double P, int code, double* out,
                             char* msg) {
  T = clip(T, coeffs[kTMin], coeffs[kTMax]);
  if (0 >= P) P = kLowest;
  return evaluate(kTPProperties<Fluid>, code, out, fluid, T, P) || fail(msg, "The 2nd parameter must be between 0-12");
}

/// Moist air within its limits, all properties but Cp, which does not depend on the saturation. Out of line, so that
/// the most frequent question, for Cp, does not pay for what this one saves and restores.
[[gnu::noinline]] bool air_at(CAirHumide& fluid, double T, double P, double w, int code, double* out, char* msg) {
  const double wsat = fluid.wSatT(T, P);
  fluid.SetFluidState(wsat > w ? 1 : 0);
  return evaluate(kAirProperties, code, out, fluid, T, w, P, wsat) ||
         fail(msg, "The second parameter must be between 0-16");
}

}  // namespace

std::span<const Quantity> property_codes(int type) {
  switch (type) {
    case 1:
      return kBrineQuantities;
    case 2:
    case 3:
      return kTPQuantities;
    case 6:
      return kAirQuantities;
    default:
      return {};
  }
}

bool fl_prop_calc(const Fl_data* data, const double* in, int code, double* out, char* msg) {
  const auto& [name, type, coeffs, concentration] = *data;
  switch (type) {
    case 1:
      return !cal_Brine(name, coeffs, concentration, in[0], in[1], code, out, msg);
    case 2:
      return !cal_Liquide(name, coeffs, in[0], in[1], code, out, msg);
    case 3:
      return !cal_IDG(name, coeffs, in[0], in[1], code, out, msg);
    case 6:
      return !cal_AirHumide(name, coeffs, in[0], in[1], in[2], code, out, msg);
    default:
      return !fail(msg, "This fluid type has not been implemented!");
  }
}

// Each calculator has one fluid. The blocks take turns with it, so that every call brings its vector; only moist air,
// of which there is one, keeps the first.

bool cal_Brine(const char*, const double* coeffs, double concentration, double T, double P, int code, double* out,
               char* msg) {
  static CBrine brine(0.0);
  brine.initCoeffs(coeffs);
  brine.SetConc(concentration);
  if (0 >= T) T = kLowest;
  if (0 >= P) P = kLowest;
  return evaluate(kBrineProperties, code, out, brine, brine.at(T, P)) ||
         fail(msg, "The 2nd parameter must be between 0-13");
}

bool cal_Liquide(const char*, const double* coeffs, double T, double P, int code, double* out, char* msg) {
  static CLiquide liquid;
  liquid.initCoeffs(coeffs);
  return calculate_within_limits(liquid, coeffs, T, P, code, out, msg);
}

bool cal_IDG(const char*, const double* coeffs, double T, double P, int code, double* out, char* msg) {
  static CIdG gas;
  gas.borrowCoeffs(coeffs);
  return calculate_within_limits(gas, coeffs, T, P, code, out, msg);
}

bool cal_AirHumide(const char*, const double* coeffs, double T, double P, double w, int code, double* out, char* msg) {
  static CAirHumide air(coeffs);
  return cal_AirHumide(air, T, P, w, code, out, msg);
}

bool cal_AirHumide(CAirHumide& fluid, double T, double P, double w, int code, double* out, char* msg) {
  constexpr int kCpCode = 5;
  const AirPoint at = limited_air(T, P, w);
  if (code != kCpCode) return air_at(fluid, at.T, at.P, at.w, code, out, msg);
  *out = fluid.CpTW(at.T, at.w, at.P, 0);
  return true;
}

}  // namespace Vk_fl_prop_lib
