// The eight variable accessors: one shape over the kind of variable.

#include <cstring>
#include <type_traits>

#include "fmi/fmu_instance.h"

namespace {

/// Trace argument of the accessors' "%d" for a value reference.
int trace_reference(fmi2ValueReference vr) { return static_cast<int>(vr); }

struct RealVariables {
  using Value = fmi2Real;
  static constexpr double kCount = kRealCount;
  static constexpr const char* kGetTrace = "getReal vr:%d, value:%lf";
  static constexpr const char* kSetTrace = "setReal vr:%d, value:%lf";
  static Value get(const FmuInstance& instance, fmi2ValueReference vr) { return *instance.realPtrs[vr]; }
  static void set(FmuInstance& instance, fmi2ValueReference vr, Value value) {
    double& cell = *instance.realPtrs[vr];
    if (cell != value) cell = value;
  }
  static fmi2Real trace(Value value) { return value; }
};

struct IntegerVariables {
  using Value = fmi2Integer;
  static constexpr double kCount = 0.0;
  static constexpr const char* kGetTrace = "getInteger vr:%d, value:%d";
  static constexpr const char* kSetTrace = "setInteger vr:%d, value:%d";
  static Value get(const FmuInstance& instance, fmi2ValueReference vr) { return *instance.integerPtrs[vr]; }
  static void set(FmuInstance& instance, fmi2ValueReference vr, Value value) {
    std::int32_t& cell = *instance.integerPtrs[vr];
    if (cell != value) cell = value;
  }
  static int trace(Value value) { return value; }
};

struct BooleanVariables {
  using Value = fmi2Boolean;
  static constexpr double kCount = kBooleanCount;
  static constexpr const char* kGetTrace = "getBoolean vr:%d, value:%u";
  static constexpr const char* kSetTrace = "setBoolean vr:%d, value:%u";
  static Value get(const FmuInstance& instance, fmi2ValueReference vr) {
    return *instance.booleanPtrs[vr] != 0 ? 1 : 0;
  }
  static void set(FmuInstance& instance, fmi2ValueReference vr, Value value) {
    unsigned char& cell = *instance.booleanPtrs[vr];
    const unsigned char flag = value != 0 ? 1 : 0;
    if (cell != flag) cell = flag;
  }
  static unsigned trace(Value value) { return static_cast<unsigned>(value); }
};

struct StringVariables {
  using Value = fmi2String;
  static constexpr double kCount = 0.0;
  static constexpr const char* kGetTrace = "getString vr:%d, value:%s";
  static constexpr const char* kSetTrace = "setString vr:%d, value:%s";
  static Value get(const FmuInstance& instance, fmi2ValueReference vr) { return instance.stringPtrs[vr]; }
  static void set(FmuInstance& instance, fmi2ValueReference vr, Value value) {
    char* cell = instance.stringPtrs[vr];
    if (std::strcmp(cell, value) == 0) return;
    const auto capacity = static_cast<std::size_t>(instance.stringSizes[vr]);
    std::strncpy(cell, value, capacity - 1);
    cell[capacity - 1] = '\0';
  }
  static const char* trace(Value value) { return value; }
};

/// Common head of the accessors; fmi2OK with nvr above 0 means that they may go on.
template <class Value>
fmi2Status check_call(const FmuInstance* instance, const fmi2ValueReference vr[], std::size_t nvr, const Value* value) {
  if (nvr == 0) return fmi2OK;
  if (instance == nullptr) return fmi2Error;
  if (vr == nullptr || value == nullptr) return fail(*instance, "invalid memory access");
  return fmi2OK;
}

template <class Variables>
bool in_range(fmi2ValueReference vr) {
  return !(static_cast<double>(vr) >= Variables::kCount);
}

/// Tests all references before it writes the first value.
template <class Variables>
fmi2Status get(fmi2Component c, const fmi2ValueReference vr[], std::size_t nvr, typename Variables::Value value[]) {
  const auto* instance = static_cast<const FmuInstance*>(c);
  if (check_call(instance, vr, nvr, value) != fmi2OK) return fmi2Error;
  for (std::size_t i = 0; i < nvr; ++i) {
    if (!in_range<Variables>(vr[i])) return fail(*instance, "valueReference out of range");
  }
  for (std::size_t i = 0; i < nvr; ++i) {
    value[i] = Variables::get(*instance, vr[i]);
    if (instance->loggingOn != 0) {
      log_message(*instance, fmi2OK, Variables::kGetTrace, trace_reference(vr[i]), Variables::trace(value[i]));
    }
  }
  return fmi2OK;
}

/// Writes element by element up to the first reference that is out of range.
template <class Variables, class Value>
fmi2Status set(fmi2Component c, const fmi2ValueReference vr[], std::size_t nvr, const Value value[]) {
  auto* instance = static_cast<FmuInstance*>(c);
  if (check_call(instance, vr, nvr, value) != fmi2OK) return fmi2Error;
  for (std::size_t i = 0; i < nvr; ++i) {
    if (!in_range<Variables>(vr[i])) return fail(*instance, "valueReference out of range");
    Variables::set(*instance, vr[i], value[i]);
    if (instance->loggingOn != 0) {
      log_message(*instance, fmi2OK, Variables::kSetTrace, trace_reference(vr[i]), Variables::trace(value[i]));
    }
  }
  return fmi2OK;
}

}  // namespace

extern "C" {

fmi2Status fmi2GetReal(fmi2Component c, const fmi2ValueReference vr[], size_t nvr, fmi2Real value[]) {
  return get<RealVariables>(c, vr, nvr, value);
}

fmi2Status fmi2GetInteger(fmi2Component c, const fmi2ValueReference vr[], size_t nvr, fmi2Integer value[]) {
  return get<IntegerVariables>(c, vr, nvr, value);
}

fmi2Status fmi2GetBoolean(fmi2Component c, const fmi2ValueReference vr[], size_t nvr, fmi2Boolean value[]) {
  return get<BooleanVariables>(c, vr, nvr, value);
}

fmi2Status fmi2GetString(fmi2Component c, const fmi2ValueReference vr[], size_t nvr, fmi2String value[]) {
  return get<StringVariables>(c, vr, nvr, value);
}

fmi2Status fmi2SetReal(fmi2Component c, const fmi2ValueReference vr[], size_t nvr, const fmi2Real value[]) {
  return set<RealVariables>(c, vr, nvr, value);
}

fmi2Status fmi2SetInteger(fmi2Component c, const fmi2ValueReference vr[], size_t nvr, const fmi2Integer value[]) {
  return set<IntegerVariables>(c, vr, nvr, value);
}

fmi2Status fmi2SetBoolean(fmi2Component c, const fmi2ValueReference vr[], size_t nvr, const fmi2Boolean value[]) {
  return set<BooleanVariables>(c, vr, nvr, value);
}

fmi2Status fmi2SetString(fmi2Component c, const fmi2ValueReference vr[], size_t nvr, const fmi2String value[]) {
  return set<StringVariables>(c, vr, nvr, value);
}

}  // extern "C"
