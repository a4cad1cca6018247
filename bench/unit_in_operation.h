#pragma once

#include <dlfcn.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <numeric>
#include <stdexcept>

#include "fmi/fmi2.h"
#include "fmi/fmu_instance.h"
#include "model/tables/catalogue.h"

/// The functions of a unit, one member each.
struct UnitFunctions {
#define FMI2_FUNCTION(name, result, parameters) decltype(&::name) name;
#include "fmi/fmi2_functions.def"
};

/// The unit that is linked here, whose blocks can be called one by one.
inline constexpr UnitFunctions kLinkedUnit = {
#define FMI2_FUNCTION(name, result, parameters) .name = &::name,
#include "fmi/fmi2_functions.def"
};

/// The unit as it ships, where nobody but the step calls its blocks. Loaded while this lives.
class ShippedUnit {
 public:
  ShippedUnit() : library_(dlopen(TESSERA_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {
    if (library_ == nullptr) throw std::runtime_error(dlerror());
#define FMI2_FUNCTION(name, result, parameters) \
  functions_.name = reinterpret_cast<decltype(&::name)>(dlsym(library_, #name));
#include "fmi/fmi2_functions.def"
  }
  ~ShippedUnit() { dlclose(library_); }
  ShippedUnit(const ShippedUnit&) = delete;
  ShippedUnit& operator=(const ShippedUnit&) = delete;

  const UnitFunctions& functions() const { return functions_; }

 private:
  void* library_;
  UnitFunctions functions_{};
};

/// A unit with one instance, by default 20 s into its scenario, where all of the plant is at work. Its logger returns
/// at once.
class UnitInOperation {
 public:
  explicit UnitInOperation(const UnitFunctions& unit = kLinkedUnit, double lead = 20.0) : unit_(unit) {
    component_ = unit_.fmi2Instantiate("bench", fmi2CoSimulation, kGuid, nullptr, &kCallbacks, fmi2False, fmi2False);
    expect_ok(unit_.fmi2SetupExperiment(component_, fmi2False, 0, 0, fmi2False, 0));
    expect_ok(unit_.fmi2EnterInitializationMode(component_));
    expect_ok(unit_.fmi2ExitInitializationMode(component_));
    do_step(lead);
  }
  ~UnitInOperation() {
    unit_.fmi2Terminate(component_);
    unit_.fmi2FreeInstance(component_);
  }
  UnitInOperation(const UnitInOperation&) = delete;
  UnitInOperation& operator=(const UnitInOperation&) = delete;

  void do_step(double size) {
    expect_ok(unit_.fmi2DoStep(component_, time_, size, fmi2True));
    time_ += size;
  }

  /// Sets an input and opens its gate. Inputs outlive instances: close what was opened.
  void set(std::size_t input, double value) { pass(input, value, fmi2True); }
  void close(std::size_t input) { pass(input, kInputs[input].start, fmi2False); }

  /// All outputs, which stay the unit's own until the next call.
  const std::array<fmi2Real, kOutputCount>& read_outputs() {
    expect_ok(unit_.fmi2GetReal(component_, references_.data(), references_.size(), outputs_.data()));
    return outputs_;
  }

  static void log(fmi2ComponentEnvironment, fmi2String, fmi2Status, fmi2String, fmi2String, ...) {}

 private:
  static constexpr fmi2CallbackFunctions kCallbacks = {&log, std::calloc, std::free, nullptr, nullptr};

  static void expect_ok(fmi2Status status) {
    if (status != fmi2OK) throw std::runtime_error("the unit refuses a call of the benchmarks");
  }

  void pass(std::size_t input, double value, fmi2Boolean is_open) {
    const auto gate = static_cast<fmi2ValueReference>(input);
    const auto parameter = static_cast<fmi2ValueReference>(kFirstParameter + input);
    expect_ok(unit_.fmi2SetBoolean(component_, &gate, 1, &is_open));
    expect_ok(unit_.fmi2SetReal(component_, &parameter, 1, &value));
  }

  const UnitFunctions& unit_;
  fmi2Component component_;
  double time_ = 0.0;
  std::array<fmi2ValueReference, kOutputCount> references_ = [] {
    std::array<fmi2ValueReference, kOutputCount> references{};
    std::iota(references.begin(), references.end(), 0U);
    return references;
  }();
  std::array<fmi2Real, kOutputCount> outputs_{};
};
