#pragma once

namespace Vk_fl_prop_lib {

/// The 97 values of a brine vector, in vector order. Polynomials in the distances from tRef [K] and concRef [percent];
/// the 18 terms stand in the order 1, dT, dT^2, dT^3 times 1, dc and dc^2, then 1, dT, dT^2 times dc^3, then 1, dT
/// times dc^4, then dc^5.
struct BrineVector {
  double cMin, cMax;  ///< limits of the concentration [percent], reported only
  double conc;        ///< concentration [percent]
  double kappa;       ///< isothermal compressibility [1/Pa]
  double c[5][18];    ///< by property: freezing temperature [degC], density [kg/m3], Cp [J/(kg K)], conductivity
                      ///< [W/(m K)], natural logarithm of the viscosity in mPa s
  double concRef;     ///< reference concentration [percent]
  double tRef, pRef;  ///< reference state [K], [Pa]
};
static_assert(sizeof(BrineVector) == 97 * sizeof(double));

// clang-format off
inline constexpr BrineVector kGlycerol_Water = {
    .cMin = 19.5, .cMax = 63, .conc = 47.8467, .kappa = 5e-10,
    .c = {
        {-21.38, -0.0002444, 3.632e-06, 5.74e-08,
         -0.8642, 2.169e-05, -3.78e-07, 1.16e-09,
         -0.0154, 1.725e-06, -7.44e-10, -4.04e-10,
         -0.0004301, -8.48e-08, 3.46e-10, -1.378e-05, -3.72e-09, -1.88e-07},
        {1127, -0.4447, -0.0014, 1.93e-05,
         2.759, -0.008192, 0.000149, -5.76e-08,
         -0.01341, 1.003e-05, -4.063e-06, 4.61e-08,
         0.0001226, 3.235e-06, -2.55e-07, 5.531e-05, -1.12e-08, 1.224e-06},
        {3211, 6.014, -0.001326, 0.0001286,
         -21.48, 0.1291, 2.542e-05, -2.559e-06,
         0.09064, -0.004195, 4.541e-06, -5.81e-07,
         -0.003417, 0.0001241, -4.25e-07, -0.0001272, 7.831e-06, 2.625e-06},
        {0.4145, 0.0007262, 5.13e-07, -8.46e-09,
         -0.00303, -1.776e-05, 6.84e-08, 1.32e-09,
         1.202e-05, 2.48e-07, 9.11e-10, -1.73e-11,
         -5.14e-07, -2.73e-09, -4.28e-11, -2.01e-08, -3.08e-10, 6.02e-11},
        {2.191, -0.04289, 0.0004082, -4.723e-06,
         0.05512, -0.0004473, 4.772e-06, 4.53e-08,
         0.0001183, -2.661e-06, 9.05e-08, 7.79e-09,
         4.659e-06, -6.56e-07, 4.05e-09, 1.682e-06, -2.8e-08, 4.12e-08}},
    .concRef = 47.8467, .tRef = 280.15, .pRef = 101325};

inline constexpr BrineVector kEthylene_Glycol_Water = {
    .cMin = 0, .cMax = 56, .conc = 38.1615, .kappa = 5e-10,
    .c = {
        {-21.96, 9.186e-06, -1.136e-06, 1.8e-08,
         -1.015, -3.391e-06, 7.55e-08, 8.49e-10,
         -0.01414, 2.36e-07, 2.16e-09, -1.31e-10,
         -3.727e-05, 6.09e-10, -1.47e-10, -1.4e-07, -2.27e-10, -2.51e-08},
        {1056, -0.3987, -0.003068, 1.233e-05,
         1.505, -0.008953, 6.378e-05, -1.15e-07,
         -0.001634, 0.0001541, -1.874e-06, -9.81e-09,
         -0.0002317, 2.549e-06, -5.52e-08, -8.51e-06, -3.85e-08, -1.13e-07},
        {3501, 3.954, 6.065e-05, -5.979e-06,
         -24.19, 0.1031, 4.312e-05, 5.168e-06,
         0.004613, -6.595e-05, 1.62e-05, -3.25e-07,
         0.006028, 5.642e-05, -7.78e-07, -7.977e-05, 5.19e-07, -3.38e-06},
        {0.4211, 0.0007995, -5.51e-08, -1.46e-08,
         -0.003694, -1.751e-05, 6.66e-08, 2.02e-09,
         2.095e-05, 2.08e-07, -2.39e-09, -6.77e-11,
         3.66e-07, -5.27e-09, -1.13e-10, -6.39e-09, -1.11e-10, -1.82e-10},
        {1.453, -0.03747, 0.0002842, -8.03e-07,
         0.0292, -0.0001131, 1.729e-06, -5.07e-08,
         0.0001264, 6.79e-09, -1.69e-08, -1.08e-09,
         4.386e-06, -2.19e-07, -9.12e-11, -9.22e-08, -4.29e-09, -3.66e-09}},
    .concRef = 38.1615, .tRef = 279.4833, .pRef = 101325};
// clang-format on

}  // namespace Vk_fl_prop_lib
