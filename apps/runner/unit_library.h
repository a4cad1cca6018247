#pragma once

#include <memory>
#include <string>
#include <vector>

#include "apps/runner/unit_archive.h"
#include "fmi/fmi2.h"

namespace runner {

/// Pointers to the 44 functions of a loaded unit, each under the function's own name; null where it is not exported.
struct FmiFunctions {
#define FMI2_FUNCTION(name, result, parameters) result(*name) parameters = nullptr;
#include "fmi/fmi2_functions.def"
};

/// What a function of the unit answers as text; null counts as empty.
inline std::string text_of(const char* answer) { return answer == nullptr ? "" : answer; }

/// Name of the binaries folder for this machine, as the FMI standard has it.
extern const char* const kPlatform;

/// Entry of the archive that holds the binary for this machine.
std::string binary_entry(const std::string& model_identifier);

/// The loaded binary of a unit.
class UnitLibrary {
 public:
  /// Unpacks the binary for this machine to a private temporary folder, loads it, and removes the folder at once: the
  /// loaded library no longer needs the file, so nothing stays behind however the program ends.
  /// @throws Error kFile if the archive has no such binary or if it cannot be unpacked or loaded
  UnitLibrary(const UnitArchive& archive, const std::string& model_identifier);

  const FmiFunctions& functions() const { return functions_; }

  /// Names of the functions that the binary does not export.
  const std::vector<std::string>& missing() const { return missing_; }

 private:
  struct Unload {
    void operator()(void* library) const;
  };
  std::unique_ptr<void, Unload> library_;
  FmiFunctions functions_;
  std::vector<std::string> missing_;
};

}  // namespace runner
