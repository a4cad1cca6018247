#pragma once

/// The FMI shell: the record behind an fmi2Component and what its entry points share.

#include <cstdint>

#include "fmi/fmi2.h"
#include "runtime/model_store.h"

/// Identity of the unit, tested by fmi2Instantiate.
inline constexpr char kGuid[] = "{3b1e7a52-6c0d-4f19-a8e4-2d90c7f1b663}";

/// The record behind an fmi2Component. All instances share the one model store.
struct FmuInstance {
  ModelRecord* model;
  char* instanceName;
  std::int32_t fmuType;  ///< stored, not tested
  char* fmuGUID;
  char* fmuResourceLocation;               ///< null when none was given
  const fmi2CallbackFunctions* functions;  ///< the importer's; must outlive the instance
  std::int32_t visible;
  std::int32_t loggingOn;       ///< gates the trace of the variable accessors, nothing else
  double time;                  ///< FMU time, s
  double** realPtrs;            ///< kRealCount cells
  std::int32_t** integerPtrs;   ///< null: no Integer variables
  unsigned char** booleanPtrs;  ///< kBooleanCount cells
  char** stringPtrs;            ///< null: no String variables
  std::int32_t* stringSizes;    ///< null: capacity of each String variable
  double* outputShadow;         ///< kOutputCount outputs of the last major step
};

/// The instance allocated last, even if it was released since; null after an allocation that failed.
extern FmuInstance* _instance;

/// Logs through the importer's logger, with the category "error" for fmi2Error and "info" for fmi2OK.
template <class... Arguments>
void log_message(const fmi2CallbackFunctions& f, const char* instanceName, fmi2Status status, const char* format,
                 Arguments... arguments) {
  f.logger(f.componentEnvironment, instanceName, status, status == fmi2OK ? "info" : "error", format, arguments...);
}

template <class... Arguments>
void log_message(const FmuInstance& instance, fmi2Status status, const char* format, Arguments... arguments) {
  log_message(*instance.functions, instance.instanceName, status, format, arguments...);
}

/// Logs the error and answers fmi2Error.
template <class... Arguments>
fmi2Status fail(const FmuInstance& instance, const char* format, Arguments... arguments) {
  log_message(instance, fmi2Error, format, arguments...);
  return fmi2Error;
}

/// One model step of 1 ms; leaves the outputs of its major evaluation in Tessera_Y.
void rtOneStep(ModelRecord* model);

/// Copies the shadow of fmu_LogOutput back into the outputs, over what the minor evaluations have left there.
void fmu_RestoreOutput();

/// Where fmu_LogOutput and fmu_RestoreOutput keep the outputs: the shadow of _instance or, where that one is gone or
/// half built, of the newest complete instance; a buffer of the shell's own when there is none.
double* output_shadow();
