// Instances and their life: from fmi2Instantiate to fmi2FreeInstance.

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "fmi/fmu_instance.h"

FmuInstance* _instance = nullptr;

namespace {

/// An instance as it is allocated, with its place in the list of those that are not released, newest first.
struct Record {
  FmuInstance instance;  // first, so that the component pointer is the record's
  Record* older;
  bool complete;  // all of fmi2Instantiate succeeded
};

Record* newest = nullptr;
double spare_shadow[kOutputCount];
double* shadow = spare_shadow;

Record* find_record(const fmi2Component c) {
  Record* record = newest;
  while (record != nullptr && &record->instance != c) record = record->older;
  return record;
}

void choose_output_shadow() {
  const Record* record = find_record(_instance);
  if (record == nullptr || !record->complete) {
    record = newest;
    while (record != nullptr && !record->complete) record = record->older;
  }
  shadow = record != nullptr ? record->instance.outputShadow : spare_shadow;
}

void release(Record* record) {
  Record** link = &newest;
  while (*link != record) link = &(*link)->older;
  *link = record->older;
  choose_output_shadow();

  FmuInstance& instance = record->instance;
  std::free(instance.instanceName);
  std::free(instance.fmuGUID);
  std::free(instance.fmuResourceLocation);
  std::free(instance.realPtrs);
  std::free(instance.booleanPtrs);
  std::free(instance.outputShadow);
  std::free(record);
}

template <class T>
T* allocate(std::size_t count) {
  return static_cast<T*>(std::calloc(count, sizeof(T)));
}

/// Copies a text into an allocation of 8 bytes a character.
char* copy_text(const char* text) {
  const std::size_t length = std::strlen(text);
  auto* copy = static_cast<char*>(std::calloc(length + 1, 8));
  if (copy != nullptr) std::memcpy(copy, text, length + 1);
  return copy;
}

void fill_pointer_tables(FmuInstance& instance) {
  for (std::size_t i = 0; i < kOutputCount; ++i) instance.realPtrs[i] = &Tessera_Y[i];
  for (std::size_t k = 0; k < kInputCount; ++k) {
    instance.realPtrs[kFirstParameter + k] = &Tessera_P.real[k];
    instance.booleanPtrs[k] = &Tessera_P.boolean[k];
  }
  instance.realPtrs[kTimeReference] = &instance.time;
}

bool is_failure(const char* error_status) {
  return error_status != nullptr && std::strcmp(error_status, "Simulation finished") != 0;
}

/// Takes the model store for the instance. On failure logs under the given name and answers false.
bool take_model(FmuInstance& instance, const fmi2CallbackFunctions& functions, const char* name) {
  instance.model = Tessera_M;
  if (instance.model == nullptr) {
    log_message(functions, name, fmi2Error, "Memory allocation error during model registration");
    return false;
  }
  if (instance.model->errorStatus != nullptr) {
    log_message(functions, name, fmi2Error, "Error during model registration: %s\n", instance.model->errorStatus);
    Tessera_terminate();
    return false;
  }
  return true;
}

}  // namespace

double* output_shadow() { return shadow; }

extern "C" {

const char* fmi2GetTypesPlatform() { return "default"; }

const char* fmi2GetVersion() { return "2.0"; }

fmi2Status fmi2SetDebugLogging(fmi2Component c, fmi2Boolean loggingOn, size_t /*nCategories*/,
                               const fmi2String /*categories*/[]) {
  if (c == nullptr) return fmi2Error;
  static_cast<FmuInstance*>(c)->loggingOn = loggingOn;
  return fmi2OK;
}

fmi2Component fmi2Instantiate(fmi2String instanceName, fmi2Type fmuType, fmi2String fmuGUID,
                              fmi2String fmuResourceLocation, const fmi2CallbackFunctions* functions,
                              fmi2Boolean visible, fmi2Boolean loggingOn) {
  if (functions == nullptr || functions->logger == nullptr) return nullptr;
  if (instanceName == nullptr || *instanceName == '\0') {
    log_message(*functions, "?", fmi2Error, "fmi2Instantiate: Missing instance name.");
    return nullptr;
  }
  if (fmuGUID == nullptr || *fmuGUID == '\0') {
    log_message(*functions, instanceName, fmi2Error, "fmi2Instantiate: Missing GUID.");
    return nullptr;
  }
  if (std::strcmp(fmuGUID, kGuid) != 0) {
    log_message(*functions, instanceName, fmi2Error, "fmi2Instantiate: Wrong GUID %s. Expected %s.", fmuGUID, kGuid);
    return nullptr;
  }

  const auto out_of_memory = [&] {
    log_message(*functions, instanceName, fmi2Error, "fmi2Instantiate: Memory allocation error.");
    return nullptr;
  };
  auto* record = allocate<Record>(1);
  _instance = record != nullptr ? &record->instance : nullptr;
  if (record == nullptr) {
    choose_output_shadow();
    return out_of_memory();
  }
  record->older = newest;
  newest = record;
  choose_output_shadow();

  FmuInstance& instance = record->instance;
  if (!take_model(instance, *functions, instanceName)) return nullptr;

  if ((instance.instanceName = copy_text(instanceName)) == nullptr) return out_of_memory();
  instance.fmuType = fmuType;
  if ((instance.fmuGUID = copy_text(fmuGUID)) == nullptr) return out_of_memory();
  if (fmuResourceLocation != nullptr && (instance.fmuResourceLocation = copy_text(fmuResourceLocation)) == nullptr) {
    return out_of_memory();
  }
  instance.functions = functions;
  instance.visible = visible;
  instance.loggingOn = loggingOn;
  instance.time = 0.0;

  if (instance.model->stopRequested != 0) {
    log_message(instance, fmi2Error, "stop requested in fmi2Instantiate");
    return nullptr;
  }
  if ((instance.realPtrs = allocate<double*>(kRealCount)) == nullptr) return out_of_memory();
  if ((instance.booleanPtrs = allocate<unsigned char*>(kBooleanCount)) == nullptr) return out_of_memory();
  if ((instance.outputShadow = allocate<double>(kOutputCount)) == nullptr) return out_of_memory();
  fill_pointer_tables(instance);
  record->complete = true;
  choose_output_shadow();
  return &instance;
}

void fmi2FreeInstance(fmi2Component c) {
  Record* record = find_record(c);
  if (c == nullptr || record == nullptr) return;  // null, or released before
  if (const char* error_status = Tessera_M->errorStatus; is_failure(error_status)) {
    log_message(record->instance, fmi2Error, "%s", error_status);
    Tessera_terminate();
    return;
  }
  Tessera_terminate();
  release(record);
}

fmi2Status fmi2SetupExperiment(fmi2Component c, fmi2Boolean /*toleranceDefined*/, fmi2Real /*tolerance*/,
                               fmi2Real startTime, fmi2Boolean /*stopTimeDefined*/, fmi2Real /*stopTime*/) {
  if (c == nullptr) return fmi2Error;
  auto& instance = *static_cast<FmuInstance*>(c);
  if (std::fabs(startTime) > 1e-7) return fail(instance, "start time is not zero.");
  instance.time = startTime;
  return fmi2OK;
}

fmi2Status fmi2EnterInitializationMode(fmi2Component /*c*/) {
  Tessera_initialize();
  return fmi2OK;
}

fmi2Status fmi2ExitInitializationMode(fmi2Component c) {
  if (c == nullptr) return fmi2Error;
  auto& instance = *static_cast<FmuInstance*>(c);
  rtOneStep(instance.model);
  if (instance.model->stopRequested != 0) return fail(instance, "stop requested in fmi2ExitInitializationMode");
  return fmi2OK;
}

fmi2Status fmi2Terminate(fmi2Component /*c*/) { return fmi2OK; }

fmi2Status fmi2Reset(fmi2Component c) {
  if (c == nullptr) return fmi2Error;
  auto& instance = *static_cast<FmuInstance*>(c);
  if (const char* error_status = Tessera_M->errorStatus; is_failure(error_status)) {
    log_message(instance, fmi2Error, "%s", error_status);
    Tessera_terminate();
    return fmi2Error;
  }
  Tessera_terminate();
  if (!take_model(instance, *instance.functions, instance.instanceName)) return fmi2Error;
  fill_pointer_tables(instance);
  if (instance.model->stopRequested != 0) return fail(instance, "stop requested in fmi2Reset");
  return fmi2OK;
}

}  // extern "C"
