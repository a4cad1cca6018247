// A small unit for the tests of the runner. It counts its steps, and its parameters make it fail in chosen ways.
//
// Built once more with MOCK_IS_FAULTY it disagrees with its description, accepts any GUID and names no platform.

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>

#include "fmi/fmi2.h"

namespace {

enum Real : fmi2ValueReference {
  kClock,
  kPressure,
  kSteps,
  kLongestStep,
  kShortestStep,
  kLastWrite,
  kPressureSet = 10,
  kTemperatureSet,
  kErrorTime,
  kNanTime,
  kDelay,
  kIsBrokenAtRelease,
  kTemperature,
  kRealCount
};
enum Boolean : fmi2ValueReference { kPressureGate, kTemperatureGate, kIsOpen, kBooleanCount };

const fmi2CallbackFunctions* g_callbacks = nullptr;
fmi2Real g_reals[kRealCount];
fmi2Boolean g_booleans[kBooleanCount];

void say(fmi2Status status, const char* message, double value) {
  g_callbacks->logger(g_callbacks->componentEnvironment, "mock", status, status == fmi2OK ? "info" : "error", message,
                      value);
}

void update_outputs() {
  g_booleans[kIsOpen] = g_booleans[kPressureGate];
  g_reals[kPressure] = g_booleans[kPressureGate] != 0 ? g_reals[kPressureSet] : 7.0;
  g_reals[kTemperature] = g_booleans[kTemperatureGate] != 0 ? g_reals[kTemperatureSet] : 20.0;
  if (g_reals[kClock] >= g_reals[kNanTime]) g_reals[kPressure] = std::numeric_limits<double>::quiet_NaN();
}

template <typename T>
fmi2Status get(const T* cells, unsigned count, const fmi2ValueReference* vr, size_t nvr, T* value) {
  for (size_t i = 0; i < nvr; ++i) {
    if (vr[i] >= count) return fmi2Error;
    value[i] = cells[vr[i]];
  }
  return fmi2OK;
}

template <typename T>
fmi2Status set(T* cells, const fmi2ValueReference* vr, size_t nvr, const T* value) {
  for (size_t i = 0; i < nvr; ++i) cells[vr[i]] = value[i];
  g_reals[kLastWrite] = g_reals[kClock];
  return fmi2OK;
}

}  // namespace

extern "C" {

const char* fmi2GetVersion() { return "2.0"; }
#ifndef MOCK_IS_FAULTY
const char* fmi2GetTypesPlatform() { return "default"; }
#endif

fmi2Component fmi2Instantiate(fmi2String, fmi2Type, [[maybe_unused]] fmi2String guid, fmi2String,
                              const fmi2CallbackFunctions* functions, fmi2Boolean, fmi2Boolean) {
  g_callbacks = functions;
  std::fill(std::begin(g_reals), std::end(g_reals), 0.0);
  std::fill(std::begin(g_booleans), std::end(g_booleans), 0);
  g_reals[kPressureSet] = 1.5;
  g_reals[kTemperatureSet] = 45.0;
  g_reals[kErrorTime] = g_reals[kNanTime] = 1e9;
#ifdef MOCK_IS_FAULTY
  g_reals[kPressureSet] = 1.6;
  g_booleans[kPressureGate] = 1;
  g_reals[kNanTime] = 0.0;
#else
  if (std::strcmp(guid, "{mock}") != 0) {
    say(fmi2Error, "wrong GUID", 0.0);
    return nullptr;
  }
#endif
  return g_reals;
}

fmi2Status fmi2ExitInitializationMode(fmi2Component) {
  update_outputs();
  return fmi2OK;
}

fmi2Status fmi2DoStep(fmi2Component, fmi2Real now, fmi2Real h, fmi2Boolean) {
  say(fmi2OK, "step of %g s", h);
  if (std::fabs(now - g_reals[kClock]) > 1e-9) {
    say(fmi2Error, "communication point %.16g is not the unit's time", now);
    return fmi2Error;
  }
  if (now + h > g_reals[kErrorTime]) {
    say(fmi2Error, "the pump is blocked at %g s", now);
    return fmi2Error;
  }
  if (g_reals[kDelay] > 0.0) usleep(static_cast<useconds_t>(1e6 * g_reals[kDelay]));
  g_reals[kClock] = now;
  for (long i = std::lround(1000 * h); i > 0; --i) g_reals[kClock] += 0.001;
  g_reals[kLongestStep] = std::max(g_reals[kLongestStep], h);
  g_reals[kShortestStep] = g_reals[kSteps] == 0.0 ? h : std::min(g_reals[kShortestStep], h);
  g_reals[kSteps] += 1.0;
  update_outputs();
  return fmi2OK;
}

void fmi2FreeInstance(fmi2Component) {
  if (g_reals[kIsBrokenAtRelease] != 0.0) say(fmi2Error, "block 7 was out of range", 0.0);
}

fmi2Status fmi2GetReal(fmi2Component, const fmi2ValueReference vr[], size_t nvr, fmi2Real value[]) {
  return get(g_reals, kRealCount, vr, nvr, value);
}
fmi2Status fmi2GetBoolean(fmi2Component, const fmi2ValueReference vr[], size_t nvr, fmi2Boolean value[]) {
  return get(g_booleans, kBooleanCount, vr, nvr, value);
}
fmi2Status fmi2SetReal(fmi2Component, const fmi2ValueReference vr[], size_t nvr, const fmi2Real value[]) {
  return set(g_reals, vr, nvr, value);
}
fmi2Status fmi2SetBoolean(fmi2Component, const fmi2ValueReference vr[], size_t nvr, const fmi2Boolean value[]) {
  return set(g_booleans, vr, nvr, value);
}

}  // extern "C"
