#include "apps/sweep/scalars.h"

#include <algorithm>
#include <limits>

namespace sweep {
namespace {

constexpr double kJoulePerKilowattHour = 3.6e6;

double ratio(double over, double under) {
  return under > 0.0 ? over / under : std::numeric_limits<double>::quiet_NaN();
}

constexpr Scalar::Source kDistance = {"vehicle.distance", "km", Take::kRise};
constexpr Scalar::Source kHydrogen = {"hydrogen_account.mass", "kg", Take::kRise};
constexpr Scalar::Source kPower = {"stack.power", "W", Take::kIntegral};

}  // namespace

const std::vector<Scalar>& scalars() {
  using Values = std::span<const double>;
  static const std::vector<Scalar> kScalars = {
      {"distance", "km", "distance driven", {kDistance}, [](Values v) { return v[0]; }},
      {"hydrogen_used", "kg", "mass that left the tank", {kHydrogen}, [](Values v) { return -v[0]; }},
      {"hydrogen_per_100km",
       "kg",
       "hydrogen used on 100 km",
       {kHydrogen, kDistance},
       [](Values v) { return ratio(-100.0 * v[0], v[1]); }},
      {"stack_energy",
       "kWh",
       "electric energy of the stack",
       {kPower},
       [](Values v) { return v[0] / kJoulePerKilowattHour; }},
      {"stack_energy_per_hydrogen",
       "kWh/kg",
       "electric energy of the stack from a kilogram of hydrogen",
       {kPower, kHydrogen},
       [](Values v) { return ratio(v[0] / kJoulePerKilowattHour, -v[1]); }}};
  return kScalars;
}

const Scalar* find_scalar(std::string_view name) {
  const auto found = std::find_if(scalars().begin(), scalars().end(), [&](const Scalar& s) { return s.name == name; });
  return found == scalars().end() ? nullptr : &*found;
}

bool offers(const runner::ModelDescription& description, const Scalar& scalar) {
  return std::all_of(scalar.sources.begin(), scalar.sources.end(), [&](const Scalar::Source& source) {
    const runner::Variable* variable = description.find(source.signal);
    return variable != nullptr && variable->is_output() && variable->unit == source.unit;
  });
}

}  // namespace sweep
