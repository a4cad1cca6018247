#pragma once

/// The C interface of FMI 2.0 ("Functional Mock-up Interface for Model Exchange and Co-Simulation", version 2.0):
/// its types, its callback record and its 44 functions. The list of functions is fmi2_functions.def.

#include <cstddef>

#if defined(_WIN32)
#define FMI2_EXPORT __declspec(dllexport)
#else
#define FMI2_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

using fmi2Component = void*;             ///< an instance of the unit
using fmi2ComponentEnvironment = void*;  ///< a pointer of the importer's, handed back in every callback
using fmi2FMUstate = void*;
using fmi2ValueReference = unsigned int;  ///< handle of a variable, unique within its base type
using fmi2Real = double;
using fmi2Integer = int;
using fmi2Boolean = int;  ///< fmi2True or fmi2False
using fmi2Char = char;
using fmi2String = const fmi2Char*;  ///< zero-terminated, UTF-8
using fmi2Byte = char;

inline constexpr fmi2Boolean fmi2True = 1;
inline constexpr fmi2Boolean fmi2False = 0;

enum fmi2Status { fmi2OK, fmi2Warning, fmi2Discard, fmi2Error, fmi2Fatal, fmi2Pending };
enum fmi2Type { fmi2ModelExchange, fmi2CoSimulation };
enum fmi2StatusKind { fmi2DoStepStatus, fmi2PendingStatus, fmi2LastSuccessfulTime, fmi2Terminated };

/// Receives a message with printf-like arguments.
using fmi2CallbackLogger = void (*)(fmi2ComponentEnvironment environment, fmi2String instanceName, fmi2Status status,
                                    fmi2String category, fmi2String message, ...);
using fmi2CallbackAllocateMemory = void* (*)(std::size_t count, std::size_t size);
using fmi2CallbackFreeMemory = void (*)(void* memory);
using fmi2StepFinished = void (*)(fmi2ComponentEnvironment environment, fmi2Status status);

/// What the importer offers to the unit.
struct fmi2CallbackFunctions {
  fmi2CallbackLogger logger;
  fmi2CallbackAllocateMemory allocateMemory;
  fmi2CallbackFreeMemory freeMemory;
  fmi2StepFinished stepFinished;  ///< null: the importer does not want to be told
  fmi2ComponentEnvironment componentEnvironment;
};

/// Used by model exchange only.
struct fmi2EventInfo {
  fmi2Boolean newDiscreteStatesNeeded;
  fmi2Boolean terminateSimulation;
  fmi2Boolean nominalsOfContinuousStatesChanged;
  fmi2Boolean valuesOfContinuousStatesChanged;
  fmi2Boolean nextEventTimeDefined;
  fmi2Real nextEventTime;
};

#define FMI2_FUNCTION(name, result, parameters) FMI2_EXPORT result name parameters;
#include "fmi2_functions.def"

}  // extern "C"
