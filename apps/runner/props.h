#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/runner/props_fluids.h"

namespace runner {

struct PropsOptions {
  std::string fluid;
  std::vector<std::string> properties;          ///< symbols
  std::array<std::string, kInputCount> inputs;  ///< numbers, with or without unit; empty: not given
  std::string table;                            ///< VAR=START:STOP:STEP; empty: one state
  std::filesystem::path file;                   ///< empty: a fluid that needs none
  std::string type;                             ///< of the fluid in the file
  bool all = false;
  bool list = false;
};

/// Prints properties of a fluid, and what there is to ask for. A state outside the range of the fluid is noted on
/// standard error.
/// @throws Error kUsage if fluid, property or state cannot be, kFile if the file cannot be read, kNonFinite after
///   printing if a property is not a finite number
void props(const PropsOptions& options);

}  // namespace runner
