#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace runner {

struct InfoOptions {
  std::filesystem::path unit;
  std::vector<std::string> filters;  ///< patterns of variable names; empty: all
  std::string causality;             ///< of the variables to list; empty: any
  bool names_only = false;
  bool as_json = false;
};

/// Prints what the model description says: the unit itself, then its variables.
/// @throws Error kFile if the description cannot be read, kUsage if a filter matches no variable
void info(const InfoOptions& options);

}  // namespace runner
