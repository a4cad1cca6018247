// The communication step: a whole number of model steps, with the outputs of the major evaluations.

#include <algorithm>
#include <cmath>
#include <limits>

#include "fmi/fmu_instance.h"

namespace {

constexpr double kTolerance = 1e-9;  // s, of the step size and of the communication point

/// Truncates; answers the most negative integer for what does not fit, as the x86 instruction does.
std::int32_t truncate_to_int32(double value) {
  const bool fits = value > -2147483649.0 && value < 2147483648.0;
  return fits ? static_cast<std::int32_t>(value) : std::numeric_limits<std::int32_t>::min();
}

fmi2Status do_step(FmuInstance& instance, double t, double h) {
  const std::int32_t n = truncate_to_int32(h / kBaseStep + 0.5);
  log_message(instance, fmi2OK, "CommunicationStepSize=%.16g, LocalSolverStepSize=%.16g", h, kBaseStep);
  if (0 > h || std::fabs(h - n * kBaseStep) > kTolerance) {
    return fail(instance, "Stepsize must be non-negative and divisible by %.16g", kBaseStep);
  }
  if (std::fabs(instance.time - t) > kTolerance) {
    return fail(instance, "CurrentCommunicationPoint is not equal to FMU time");
  }
  instance.time = t;
  log_message(instance, fmi2OK, "Local solver will do %d steps from t = %.16g.", static_cast<int>(n), t);
  for (std::int32_t i = 0; i < n; ++i) {
    if (instance.model->stopRequested != 0) return fail(instance, "stop requested in fmi2DoStep");
    rtOneStep(instance.model);
    instance.time += kBaseStep;
  }
  return fmi2OK;
}

}  // namespace

void fmu_LogOutput() { std::copy(Tessera_Y.begin(), Tessera_Y.end(), output_shadow()); }

void fmu_RestoreOutput() { std::copy_n(output_shadow(), kOutputCount, Tessera_Y.begin()); }

void rtOneStep(ModelRecord* /*model*/) {
  Tessera_step();
  fmu_RestoreOutput();
}

extern "C" fmi2Status fmi2DoStep(fmi2Component c, fmi2Real currentCommunicationPoint, fmi2Real communicationStepSize,
                                 fmi2Boolean /*noSetFMUStatePriorToCurrentPoint*/) {
  if (c == nullptr) return fmi2Error;
  auto& instance = *static_cast<FmuInstance*>(c);
  const fmi2Status status = do_step(instance, currentCommunicationPoint, communicationStepSize);
  if (instance.functions->stepFinished != nullptr) {
    instance.functions->stepFinished(instance.functions->componentEnvironment, status);
  }
  return status;
}
