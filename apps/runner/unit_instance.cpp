#include "apps/runner/unit_instance.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "apps/runner/errors.h"

namespace runner {
namespace {

constexpr const char* kStatusNames[] = {"fmi2OK",    "fmi2Warning", "fmi2Discard",
                                        "fmi2Error", "fmi2Fatal",   "fmi2Pending"};

std::string status_name(fmi2Status status) {
  const auto index = static_cast<std::size_t>(status);
  return index < std::size(kStatusNames) ? kStatusNames[index] : "the unknown status " + std::to_string(index);
}

bool is_bad(fmi2Status status) { return status != fmi2OK && status != fmi2Warning; }

}  // namespace

UnitInstance::UnitInstance(const UnitLibrary& library, const std::string& name, const std::string& guid, UnitLog& log)
    : fmi_(library.functions()), log_(log), callbacks_{&UnitLog::callback, &std::calloc, &std::free, nullptr, &log} {
  if (!library.missing().empty()) {
    throw Error(ExitCode::kFile, "the unit's binary does not export " + library.missing().front());
  }
  const std::string version = text_of(fmi_.fmi2GetVersion());
  if (version != "2.0") throw Error(ExitCode::kFile, "the unit's binary speaks FMI " + version + "; needed is 2.0");

  const fmi2Boolean wants_more = log.level() == LogLevel::kDebug ? fmi2True : fmi2False;
  component_ =
      fmi_.fmi2Instantiate(name.c_str(), fmi2CoSimulation, guid.c_str(), nullptr, &callbacks_, fmi2False, wants_more);
  if (component_ == nullptr) {
    const std::string& reason = log_.last_error();
    throw Error(ExitCode::kUnitError, "fmi2Instantiate refused" + (reason.empty() ? reason : ": " + reason));
  }
}

UnitInstance::~UnitInstance() {
  if (component_ != nullptr && worst_ != fmi2Fatal) fmi_.fmi2FreeInstance(component_);
}

void UnitInstance::write(std::span<const Write> writes) {
  for (const auto& [variable, value] : writes) {
    if (variable->type == VariableType::kBoolean) {
      const fmi2Boolean flag = value != 0.0 ? fmi2True : fmi2False;
      check(fmi_.fmi2SetBoolean(component_, &variable->reference, 1, &flag), "fmi2SetBoolean of " + variable->name);
    } else {
      check(fmi_.fmi2SetReal(component_, &variable->reference, 1, &value), "fmi2SetReal of " + variable->name);
    }
  }
}

void UnitInstance::read(std::span<const fmi2ValueReference> references, std::span<fmi2Real> values) {
  check(fmi_.fmi2GetReal(component_, references.data(), references.size(), values.data()), "fmi2GetReal");
}

void UnitInstance::read(std::span<const fmi2ValueReference> references, std::span<fmi2Boolean> values) {
  check(fmi_.fmi2GetBoolean(component_, references.data(), references.size(), values.data()), "fmi2GetBoolean");
}

void UnitInstance::initialize(Milliseconds stop) {
  check(fmi_.fmi2SetupExperiment(component_, fmi2False, 0.0, 0.0, fmi2True, seconds(stop)), "fmi2SetupExperiment");
  check(fmi_.fmi2EnterInitializationMode(component_), "fmi2EnterInitializationMode");
  check(fmi_.fmi2ExitInitializationMode(component_), "fmi2ExitInitializationMode");
  initialized_ = true;
}

void UnitInstance::do_step(Milliseconds now, Milliseconds next) {
  const fmi2Status status = fmi_.fmi2DoStep(component_, seconds(now), seconds(next - now), fmi2True);
  if (is_bad(status)) fail(status, "fmi2DoStep from " + seconds_text(now) + " s to " + seconds_text(next) + " s");
}

void UnitInstance::finish() {
  if (component_ == nullptr || worst_ == fmi2Fatal) return;
  const std::size_t errors_before = log_.error_count();
  // After an error the standard allows an instance to be freed, not to be terminated.
  const bool is_sound = initialized_ && worst_ == fmi2OK;
  const fmi2Status terminated = is_sound ? fmi_.fmi2Terminate(component_) : fmi2OK;
  if (terminated != fmi2Fatal) fmi_.fmi2FreeInstance(std::exchange(component_, nullptr));
  check(terminated, "fmi2Terminate");
  if (log_.error_count() > errors_before) {
    throw Error(ExitCode::kUnitError, "the unit reported an error at its release: " + log_.last_error());
  }
}

void UnitInstance::check(fmi2Status status, const std::string& call) {
  if (is_bad(status)) fail(status, call);
}

void UnitInstance::fail(fmi2Status status, const std::string& call) {
  worst_ = status;
  const std::string& reason = log_.last_error();
  throw Error(ExitCode::kUnitError,
              call + " answered " + status_name(status) + (reason.empty() ? reason : ": " + reason));
}

}  // namespace runner
