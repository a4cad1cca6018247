#pragma once

#include <span>
#include <string>

#include "apps/runner/model_description.h"
#include "apps/runner/times.h"
#include "apps/runner/unit_library.h"
#include "apps/runner/unit_log.h"

namespace runner {

/// A value for a variable of the unit.
struct Write {
  const Variable* variable;
  double value;  ///< of a Boolean: 0 or 1
};

/// The one instance of a unit and the calls of a run. Every call throws Error kUnitError when the unit answers worse
/// than fmi2Warning; the text then carries the unit's own message.
class UnitInstance {
 public:
  /// Instantiates the unit for co-simulation.
  /// @param guid  identity that the unit is asked for
  /// @throws Error kFile if the binary lacks a function or is no FMI 2.0 unit
  UnitInstance(const UnitLibrary& library, const std::string& name, const std::string& guid, UnitLog& log);
  ~UnitInstance();
  UnitInstance(const UnitInstance&) = delete;
  UnitInstance& operator=(const UnitInstance&) = delete;

  void write(std::span<const Write> writes);
  void read(std::span<const fmi2ValueReference> references, std::span<fmi2Real> values);
  void read(std::span<const fmi2ValueReference> references, std::span<fmi2Boolean> values);

  /// Start time 0, then initialization mode and out of it again.
  void initialize(Milliseconds stop);
  void do_step(Milliseconds now, Milliseconds next);

  /// Terminates the run as far as the unit's state allows it, and frees the instance. A unit may report only here that
  /// something went wrong during the run; that too throws.
  void finish();

 private:
  void check(fmi2Status status, const std::string& call);
  [[noreturn]] void fail(fmi2Status status, const std::string& call);

  const FmiFunctions& fmi_;
  UnitLog& log_;
  fmi2CallbackFunctions callbacks_;  // the unit keeps a pointer to it
  fmi2Component component_ = nullptr;
  bool initialized_ = false;
  fmi2Status worst_ = fmi2OK;
};

}  // namespace runner
