// Entry points for what the unit does not offer: FMU state, derivatives, asynchronous steps and model exchange. They
// report success, do nothing and write nothing, but for fmi2GetRealOutputDerivatives, which answers 0.

#include <algorithm>

#include "fmi/fmi2.h"

extern "C" {

fmi2Status fmi2GetFMUstate(fmi2Component, fmi2FMUstate*) { return fmi2OK; }
fmi2Status fmi2SetFMUstate(fmi2Component, fmi2FMUstate) { return fmi2OK; }
fmi2Status fmi2FreeFMUstate(fmi2Component, fmi2FMUstate*) { return fmi2OK; }
fmi2Status fmi2SerializedFMUstateSize(fmi2Component, fmi2FMUstate, size_t*) { return fmi2OK; }
fmi2Status fmi2SerializeFMUstate(fmi2Component, fmi2FMUstate, fmi2Byte[], size_t) { return fmi2OK; }
fmi2Status fmi2DeSerializeFMUstate(fmi2Component, const fmi2Byte[], size_t, fmi2FMUstate*) { return fmi2OK; }

fmi2Status fmi2GetDirectionalDerivative(fmi2Component, const fmi2ValueReference[], size_t, const fmi2ValueReference[],
                                        size_t, const fmi2Real[], fmi2Real[]) {
  return fmi2OK;
}
fmi2Status fmi2SetRealInputDerivatives(fmi2Component, const fmi2ValueReference[], size_t, const fmi2Integer[],
                                       const fmi2Real[]) {
  return fmi2OK;
}
fmi2Status fmi2GetRealOutputDerivatives(fmi2Component, const fmi2ValueReference[], size_t nvr, const fmi2Integer[],
                                        fmi2Real value[]) {
  if (value != nullptr) std::fill_n(value, nvr, 0.0);
  return fmi2OK;
}

fmi2Status fmi2CancelStep(fmi2Component) { return fmi2OK; }
fmi2Status fmi2GetStatus(fmi2Component, fmi2StatusKind, fmi2Status*) { return fmi2OK; }
fmi2Status fmi2GetRealStatus(fmi2Component, fmi2StatusKind, fmi2Real*) { return fmi2OK; }
fmi2Status fmi2GetIntegerStatus(fmi2Component, fmi2StatusKind, fmi2Integer*) { return fmi2OK; }
fmi2Status fmi2GetBooleanStatus(fmi2Component, fmi2StatusKind, fmi2Boolean*) { return fmi2OK; }
fmi2Status fmi2GetStringStatus(fmi2Component, fmi2StatusKind, fmi2String*) { return fmi2OK; }

fmi2Status fmi2EnterEventMode(fmi2Component) { return fmi2OK; }
fmi2Status fmi2NewDiscreteStates(fmi2Component, fmi2EventInfo*) { return fmi2OK; }
fmi2Status fmi2EnterContinuousTimeMode(fmi2Component) { return fmi2OK; }
fmi2Status fmi2CompletedIntegratorStep(fmi2Component, fmi2Boolean, fmi2Boolean*, fmi2Boolean*) { return fmi2OK; }
fmi2Status fmi2SetTime(fmi2Component, fmi2Real) { return fmi2OK; }
fmi2Status fmi2SetContinuousStates(fmi2Component, const fmi2Real[], size_t) { return fmi2OK; }
fmi2Status fmi2GetDerivatives(fmi2Component, fmi2Real[], size_t) { return fmi2OK; }
fmi2Status fmi2GetEventIndicators(fmi2Component, fmi2Real[], size_t) { return fmi2OK; }
fmi2Status fmi2GetContinuousStates(fmi2Component, fmi2Real[], size_t) { return fmi2OK; }
fmi2Status fmi2GetNominalsOfContinuousStates(fmi2Component, fmi2Real[], size_t) { return fmi2OK; }

}  // extern "C"
