#include "model/ambient_air.h"

#include "model/scalar_laws.h"

AmbientAir ambient_air(double T, double P, double RH, double Psat) {
  constexpr double kOxygen = 0.23, kDryNitrogen = 0.77;
  const double phi = saturated(0.01 * RH, 0.0, 1.0);
  const double vapour_pressure = Psat * phi;
  const double mole_fraction = vapour_pressure * safe_reciprocal(P);
  const double water = 0.6474820143884892 * mole_fraction;
  const double nitrogen = kDryNitrogen - water;

  const bool is_gas = kOxygen + nitrogen + water > 0.0;
  const double f1 = is_gas ? kOxygen : 1.0, f2 = is_gas ? nitrogen : 1.0, f3 = is_gas ? water : 1.0;
  const double sum = f1 + f2 + f3;
  const double X1 = f1 / sum, X2 = f2 / sum, X3 = f3 / sum;
  const double mole_per_gram = 0.05555555555555555 * X3 + (0.03571428571428571 * X2 + 0.03125 * X1);
  return {.state = {.P = P,
                    .p1 = ((X1 / 32.0) / mole_per_gram) * P,
                    .p2 = ((X2 / 28.0) / mole_per_gram) * P,
                    .p3 = ((X3 / 18.0) / mole_per_gram) * P,
                    .T = T,
                    .rho = (1.0 / T) * P * density_factor(mole_per_gram),
                    .X1 = X1,
                    .X2 = X2,
                    .X3 = X3},
          .nitrogen_fraction = nitrogen,
          .water_fraction = water,
          .mole_per_gram = mole_per_gram};
}

double density_factor(double mole_per_gram) { return (0.12027904738994467 / mole_per_gram) / 1000.0; }

std::array<double, 3> radiator_air_masses(const AmbientAir& air, double V) {
  const double total = ((density_factor(air.mole_per_gram) * V) * 100000.0) / 313.15;  // kg
  return {total * air.state.X1 * 1000.0, total * air.state.X2 * 1000.0, total * air.state.X3 * 1000.0};
}
