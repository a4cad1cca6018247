// A small unit for the tests of the runner. It counts its steps, and its parameters make it fail in chosen ways.
//
// Built once more with MOCK_IS_FAULTY it accepts any GUID, names no platform and puts out a NaN.

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstring>
#include <iterator>
#include <limits>

#include "fmi/fmi2.h"

namespace {

// Value references, in the order of mock_description.xml.
enum { kTemperature, kSteps, kLastWrite, kTemperatureSet, kFailAt, kNanAt, kSignal, kBadEnd };
enum { kGate, kIsOpen };

constexpr fmi2Real kRealsAtStart[] = {20.0, 0.0, 0.0, 45.0, 1e9, MOCK_IS_FAULTY ? 0.0 : 1e9, 0.0, 0.0};
fmi2Real g_reals[std::size(kRealsAtStart)];
fmi2Boolean g_booleans[2];
double g_clock = 0.0;
const fmi2CallbackFunctions* g_callbacks = nullptr;

fmi2Status say(fmi2Status status, const char* message, double value) {
  g_callbacks->logger(g_callbacks->componentEnvironment, "mock", status, "", message, value);
  return status;
}

template <typename T, size_t count>
fmi2Status get(const T (&cells)[count], const fmi2ValueReference* vr, size_t nvr, T* value) {
  g_booleans[kIsOpen] = g_booleans[kGate];
  g_reals[kTemperature] = g_booleans[kGate] != 0 ? g_reals[kTemperatureSet] : 20.0;
  if (g_clock >= g_reals[kNanAt]) g_reals[kTemperature] = std::numeric_limits<double>::quiet_NaN();
  for (size_t i = 0; i < nvr; ++i) {
    if (vr[i] >= count) return fmi2Error;
    value[i] = cells[vr[i]];
  }
  return fmi2OK;
}

template <typename T>
fmi2Status set(T* cells, const fmi2ValueReference* vr, size_t nvr, const T* value) {
  for (size_t i = 0; i < nvr; ++i) cells[vr[i]] = value[i];
  g_reals[kLastWrite] = std::round(1000 * g_clock) / 1000;
  return fmi2OK;
}

}  // namespace

extern "C" {

const char* fmi2GetVersion() { return "2.0"; }
const char* fmi2GetTypesPlatform() { return MOCK_IS_FAULTY ? "" : "default"; }

fmi2Component fmi2Instantiate(fmi2String, fmi2Type, fmi2String guid, fmi2String, const fmi2CallbackFunctions* functions,
                              fmi2Boolean, fmi2Boolean) {
  g_callbacks = functions;
  std::copy(std::begin(kRealsAtStart), std::end(kRealsAtStart), g_reals);
  std::fill(std::begin(g_booleans), std::end(g_booleans), fmi2False);
  g_clock = 0.0;
  return MOCK_IS_FAULTY || std::strcmp(guid, "{mock}") == 0 ? g_reals : nullptr;
}

fmi2Status fmi2DoStep(fmi2Component, fmi2Real now, fmi2Real h, fmi2Boolean) {
  say(fmi2OK, "step of %g s", h);
  if (std::fabs(now - g_clock) > 1e-9) return say(fmi2Error, "communication point %.16g s is not the unit's time", now);
  if (h > 1.0) return say(fmi2Error, "a step of %g s is too long", h);
  if (now + h > g_reals[kFailAt]) return say(fmi2Error, "the pump is blocked at %g s", now);
  if (g_reals[kSignal] > 0.0) std::raise(static_cast<int>(g_reals[kSignal]));
  g_clock = now;
  for (long i = std::lround(1000 * h); i > 0; --i) g_clock += 0.001;
  g_reals[kSteps] += 1.0;
  return fmi2OK;
}

void fmi2FreeInstance(fmi2Component) {
  if (g_reals[kBadEnd] > 0.0) say(fmi2Error, "block %g was out of range", 7.0);
}

fmi2Status fmi2GetReal(fmi2Component, const fmi2ValueReference vr[], size_t nvr, fmi2Real value[]) {
  return get(g_reals, vr, nvr, value);
}
fmi2Status fmi2GetBoolean(fmi2Component, const fmi2ValueReference vr[], size_t nvr, fmi2Boolean value[]) {
  return get(g_booleans, vr, nvr, value);
}
fmi2Status fmi2SetReal(fmi2Component, const fmi2ValueReference vr[], size_t nvr, const fmi2Real value[]) {
  return set(g_reals, vr, nvr, value);
}
fmi2Status fmi2SetBoolean(fmi2Component, const fmi2ValueReference vr[], size_t nvr, const fmi2Boolean value[]) {
  return set(g_booleans, vr, nvr, value);
}

}  // extern "C"
