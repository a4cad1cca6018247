#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <numeric>

#include "fmi/fmi2.h"
#include "fmi/fmu_instance.h"

/// The unit with one instance, 20 s into its scenario, where all of the plant is at work. Its logger returns at once.
class UnitInOperation {
 public:
  UnitInOperation() {
    component_ = fmi2Instantiate("bench", fmi2CoSimulation, kGuid, nullptr, &kCallbacks, fmi2False, fmi2False);
    fmi2SetupExperiment(component_, fmi2False, 0, 0, fmi2False, 0);
    fmi2EnterInitializationMode(component_);
    fmi2ExitInitializationMode(component_);
    do_step(20.0);
  }
  ~UnitInOperation() {
    fmi2Terminate(component_);
    fmi2FreeInstance(component_);
  }
  UnitInOperation(const UnitInOperation&) = delete;
  UnitInOperation& operator=(const UnitInOperation&) = delete;

  void do_step(double size) { fmi2DoStep(component_, static_cast<FmuInstance*>(component_)->time, size, fmi2True); }

  /// All outputs, which stay the unit's own until the next call.
  const std::array<fmi2Real, kOutputCount>& read_outputs() {
    fmi2GetReal(component_, references_.data(), references_.size(), outputs_.data());
    return outputs_;
  }

  static void log(fmi2ComponentEnvironment, fmi2String, fmi2Status, fmi2String, fmi2String, ...) {}

 private:
  static constexpr fmi2CallbackFunctions kCallbacks = {&log, std::calloc, std::free, nullptr, nullptr};

  fmi2Component component_;
  std::array<fmi2ValueReference, kOutputCount> references_ = [] {
    std::array<fmi2ValueReference, kOutputCount> references{};
    std::iota(references.begin(), references.end(), 0U);
    return references;
  }();
  std::array<fmi2Real, kOutputCount> outputs_{};
};
