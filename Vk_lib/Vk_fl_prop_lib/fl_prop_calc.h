#pragma once

#include <span>

/// Fluid properties; this header is the one door from the blocks to the fluid classes.
namespace Vk_fl_prop_lib {

class CAirHumide;

/// A block's constant description of its fluid. The pointers are borrowed.
struct Fl_data {
  const char* name;      ///< "O2_IDG", "Moist_Air" and the like
  int type;              ///< type code: 1 brine, 2 liquid, 3 ideal gas, 6 moist air
  const double* coeffs;  ///< coefficient vector of the type: 97, 31, 25 and 10 values
  double concentration;  ///< of a brine [percent]; other types do not read it
};

/// What a property code stands for.
struct Quantity {
  const char* symbol;
  const char* name;
  const char* unit;
};

/// The quantities of the codes 1, 2, ... of a fluid type, in code order; none for a type that fl_prop_calc refuses.
std::span<const Quantity> property_codes(int type);

// What the calculators hold their inputs to.
inline constexpr double kLowest = 1e-10;                       ///< P [Pa] and a brine's T [K], from 0 downwards
inline constexpr double kAirTMin = 173.15, kAirTMax = 640.15;  ///< T of moist air [K]
inline constexpr double kAirPMax = 2e8;                        ///< P of moist air [Pa]

/// x within its limits; a not-a-number stays one.
constexpr double clip(double x, double low, double high) { return low > x ? low : x > high ? high : x; }

/// State of moist air within its limits: T [K], P [Pa], w [kg water / kg dry air].
struct AirPoint {
  double T, P, w;
};
constexpr AirPoint limited_air(double T, double P, double w) {
  return {clip(T, kAirTMin, kAirTMax), 0 >= P ? kLowest : P > kAirPMax ? kAirPMax : P, 0 >= w ? 0 : w};
}

/// Computes one property of a fluid, or all of them.
///
/// Inputs beyond their range are clipped without a message: T to the limits of a liquid's or gas's vector, to 173.15
/// and 640.15 K for moist air, and to 1e-10 K from below for a brine; P <= 0 becomes 1e-10 Pa; for moist air P is at
/// most 2e8 Pa and w at least 0. Moist air counts as saturated from w = wSatT(T, P) on. A brine's concentration is not
/// held to its limits.
/// @param data  the fluid. Moist air keeps the vector of the first call in this process
/// @param in    T [K], P [Pa] and, for moist air, w [kg water / kg dry air]
/// @param code  a property code, see property_codes; 0: all of them, in code order
/// @param out   the result, for code 0 as many as there are codes; as before on failure
/// @param msg   on failure the reason; room for 42 characters
/// @return false on success; true if the type or the code is not known
bool fl_prop_calc(const Fl_data* data, const double* in, int code, double* out, char* msg);

// The calculators of the four types, with the arguments of fl_prop_calc one by one. They answer true on success, the
// opposite of fl_prop_calc. Each has one fluid object for the whole process: not re-entrant.
bool cal_Brine(const char* name, const double* coeffs, double concentration, double T, double P, int code, double* out,
               char* msg);
bool cal_Liquide(const char* name, const double* coeffs, double T, double P, int code, double* out, char* msg);
bool cal_IDG(const char* name, const double* coeffs, double T, double P, int code, double* out, char* msg);
bool cal_AirHumide(const char* name, const double* coeffs, double T, double P, double w, int code, double* out,
                   char* msg);

/// Moist air that the caller holds, otherwise as above. Sets its saturation, except for code 5, which does not
/// depend on it.
bool cal_AirHumide(CAirHumide& fluid, double T, double P, double w, int code, double* out, char* msg);

}  // namespace Vk_fl_prop_lib
