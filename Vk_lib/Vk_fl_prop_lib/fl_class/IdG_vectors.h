#pragma once

namespace Vk_fl_prop_lib {

/// The 25 values of an ideal gas vector, in vector order. Polynomials in T [K], valid from tMin to tMax.
struct GasVector {
  double M;           ///< molar mass [kg/mol]
  double tMin, tMax;  ///< limits of the polynomials [K]
  double pRef, tRef;  ///< reference state [Pa], [K]
  double hRef;        ///< enthalpy at tRef [J/kg]
  double sRef;        ///< entropy at tRef and pRef [J/(kg K)]
  double cp[6];       ///< heat capacity at constant pressure [J/(kg K)]
  double lambda[6];   ///< conductivity [W/(m K)]
  double mu[6];       ///< dynamic viscosity [Pa s]
};
static_assert(sizeof(GasVector) == 25 * sizeof(double));

// clang-format off
inline constexpr GasVector kO2_IDG = {
    .M = 0.031999, .tMin = 250, .tMax = 1050, .pRef = 101325, .tRef = 273.15, .hRef = 100000, .sRef = 1000,
    .cp     = {1905.1, -9.6714, 0.035763, -6.28e-05, 5.44e-08, -1.87e-11},
    .lambda = {-0.0012638, 0.0001076, -5.77e-08, 2.89e-11, -5.81e-15, -1.44e-26},
    .mu     = {-3.98e-07, 8.76e-08, -7.06e-11, 4.63e-14, -1.69e-17, 2.53e-21}};

inline constexpr GasVector kN2_IDG = {
    .M = 0.028013, .tMin = 250, .tMax = 1050, .pRef = 101325, .tRef = 273.15, .hRef = 100000, .sRef = 1000,
    .cp     = {497.73, 6.0864, -0.0260988, 5.316e-05, -5.12e-08, 1.9e-11},
    .lambda = {-0.0015232, 0.00011888, -1.21e-07, 1.16e-10, -6.37e-14, 1.47e-17},
    .mu     = {2.55e-08, 7.53e-08, -6.52e-11, 4.35e-14, -1.56e-17, 2.25e-21}};

inline constexpr GasVector kH2_IDG = {
    .M = 0.002016, .tMin = 250, .tMax = 1050, .pRef = 101325, .tRef = 273.15, .hRef = 100000, .sRef = 1000,
    .cp     = {-5082.7, 177.616, -0.63357, 0.00111228, -9.64e-07, 3.31e-10},
    .lambda = {-0.011732, 0.00093595, -1.32e-06, 1.27e-09, -4.44e-13, -1.48e-25},
    .mu     = {2.47e-06, 2.19e-08, 3.42e-12, -2.07e-14, 2.01e-17, -6.5e-21}};
// clang-format on

}  // namespace Vk_fl_prop_lib
