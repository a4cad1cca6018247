#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <numeric>

#include "fmi/fmi2.h"
#include "fmi/fmu_instance.h"
#include "fmu/unit_library.h"

/// The unit whose blocks the benchmarks can call.
inline constexpr UnitLibrary kLinkedUnit = {
#define FMI2_FUNCTION(name, result, parameters) .name = &::name,
#include "fmi/fmi2_functions.def"
};

/// The unit as it ships, where nobody but the step calls its blocks.
inline const UnitLibrary& shipped_unit() {
  static const UnitLibrary unit = load_unit(TESSERA_LIBRARY);
  return unit;
}

/// A unit with one instance, 20 s into its scenario, where all of the plant is at work. Its logger returns at once.
class UnitInOperation {
 public:
  explicit UnitInOperation(const UnitLibrary& unit = kLinkedUnit) : unit_(unit) {
    component_ = unit_.fmi2Instantiate("bench", fmi2CoSimulation, kGuid, nullptr, &kCallbacks, fmi2False, fmi2False);
    unit_.fmi2SetupExperiment(component_, fmi2False, 0, 0, fmi2False, 0);
    unit_.fmi2EnterInitializationMode(component_);
    unit_.fmi2ExitInitializationMode(component_);
    do_step(20.0);
  }
  ~UnitInOperation() {
    unit_.fmi2Terminate(component_);
    unit_.fmi2FreeInstance(component_);
  }
  UnitInOperation(const UnitInOperation&) = delete;
  UnitInOperation& operator=(const UnitInOperation&) = delete;

  void do_step(double size) {
    unit_.fmi2DoStep(component_, time_, size, fmi2True);
    time_ += size;
  }

  /// Sets an input and opens its gate.
  void set(std::size_t input, double value) {
    const auto gate = static_cast<fmi2ValueReference>(input);
    const fmi2ValueReference parameter = gate + kOutputCount;
    const fmi2Boolean open = fmi2True;
    unit_.fmi2SetBoolean(component_, &gate, 1, &open);
    unit_.fmi2SetReal(component_, &parameter, 1, &value);
  }

  /// All outputs, which stay the unit's own until the next call.
  const std::array<fmi2Real, kOutputCount>& read_outputs() {
    unit_.fmi2GetReal(component_, references_.data(), references_.size(), outputs_.data());
    return outputs_;
  }

  static void log(fmi2ComponentEnvironment, fmi2String, fmi2Status, fmi2String, fmi2String, ...) {}

 private:
  static constexpr fmi2CallbackFunctions kCallbacks = {&log, std::calloc, std::free, nullptr, nullptr};

  const UnitLibrary& unit_;
  fmi2Component component_;
  double time_ = 0.0;
  std::array<fmi2ValueReference, kOutputCount> references_ = [] {
    std::array<fmi2ValueReference, kOutputCount> references{};
    std::iota(references.begin(), references.end(), 0U);
    return references;
  }();
  std::array<fmi2Real, kOutputCount> outputs_{};
};
