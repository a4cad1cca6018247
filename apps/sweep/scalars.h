#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "apps/runner/model_description.h"
#include "apps/sweep/plan.h"

namespace sweep {

/// A figure of a whole run, made of what is kept of outputs.
struct Scalar {
  struct Source {
    const char *signal, *unit;
    Take take;
  };
  const char *name, *unit, *description;
  std::vector<Source> sources;
  double (*value)(std::span<const double> sources);  ///< not-a-number where there is none, such as per 0 km
};

/// All that there are.
const std::vector<Scalar>& scalars();

/// @return null if there is none of that name
const Scalar* find_scalar(std::string_view name);

/// Does the unit have all outputs that the scalar needs, in the units that it needs?
bool offers(const runner::ModelDescription& description, const Scalar& scalar);

}  // namespace sweep
