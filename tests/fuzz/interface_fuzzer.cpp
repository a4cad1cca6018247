// The FMI functions in any order and with any arguments that an importer may give. Each call is held against a small
// picture of what must be true after it: status, log, FMU time, variables.

#include <algorithm>
#include <array>
#include <cstring>

#include "fmi/shell_fixture.h"
#include "fuzz/fuzz_support.h"

namespace {

template <class... Arguments>
std::string formatted(const std::string& format, Arguments... arguments) {
  char text[512];
  std::snprintf(text, sizeof text, format.c_str(), arguments...);
  return text;
}

/// What the importer holds of an instance.
struct Held {
  fmi2Component component = nullptr;
  double time = 0.0;
  bool is_traced = false;
};

class Session : public Shell {
 public:
  Session(const std::uint8_t* data, std::size_t size) : in(data, size) {
    std::copy(Tessera_P.real.begin(), Tessera_P.real.end(), parameters.real.begin());
    if (in.ConsumeBool()) functions.stepFinished = nullptr;
  }

  void TestBody() override {
    constexpr void (Session::*kActions[])() = {
        &Session::free, &Session::reset,   &Session::set_up,  &Session::enter,  &Session::exit,   &Session::disturb,
        &Session::idle, &Session::do_step, &Session::do_step, &Session::access, &Session::access, &Session::access};
    while (in.remaining_bytes() > 0) {
      held = &all[pick(0, 2)];
      const auto action = in.PickValueInArray(kActions);
      (this->*(held->component == nullptr ? &Session::add : action))();
      check();
    }
    Tessera_M_.errorStatus = nullptr;
    for (const Held& left : all) fmi2FreeInstance(left.component);
    for (const fmi2Component c : half_built) fmi2FreeInstance(c);
  }

 private:
  std::size_t pick(std::size_t least, std::size_t most) { return in.ConsumeIntegralInRange(least, most); }
  bool is_rare(std::size_t n = 15) { return pick(0, n) == n; }
  bool is_failed() const { return failure != nullptr && std::strcmp(failure, "Simulation finished") != 0; }

  void tell(const std::string& text) { told.push_back(info(text)); }
  fmi2Status fail(const std::string& text) { return told.push_back(error(text)), fmi2Error; }

  void check() {
    EXPECT(take_log() == std::exchange(told, {}));
    EXPECT(std::exchange(finished, {}) == std::exchange(ends, {}));
    for (const auto& [c, time, is_traced] : all) {
      EXPECT(c == nullptr || is_same(static_cast<FmuInstance*>(c)->time, time));
    }
    EXPECT(std::equal(parameters.real.begin(), parameters.real.end(), Tessera_P.real.begin(), is_same));
    EXPECT(parameters.boolean == Tessera_P.boolean);
    EXPECT(std::equal(outputs.begin(), outputs.end(), Tessera_Y.begin(), is_same));
    EXPECT(Tessera_M_.errorStatus == failure && (Tessera_M_.stopRequested != 0) == is_stopped);
  }

  void follow_model_steps() {
    outputs = Tessera_Y;
    EXPECT(std::equal(outputs.begin(), outputs.end(), output_shadow(), is_same));
    EXPECT(outputs[17] == (is_built ? 1.0 : 0.0) && outputs[24] == (is_built ? 40.0 : 0.0));  // constants
  }

  void add() {
    if (is_rare()) return call_without_instance();
    constexpr const char *kNames[] = {"", "test", nullptr}, *kGuids[] = {"", "%n", nullptr};
    const char* name = is_rare() ? in.PickValueInArray(kNames) : "test";
    const char* guid = is_rare() ? in.PickValueInArray(kGuids) : kGuid;
    const auto type = in.ConsumeBool() ? fmi2CoSimulation : fmi2ModelExchange;
    const char* resources = in.ConsumeBool() ? "file:///resources" : nullptr;
    *held = {nullptr, 0.0, in.ConsumeBool()};
    const FmuInstance* before = _instance;
    held->component = fmi2Instantiate(name, type, guid, resources, &functions, 1, held->is_traced ? -1 : 0);
    const std::string given_guid = guid != nullptr ? guid : "";
    const std::string refusal = given_guid.empty() ? "fmi2Instantiate: Missing GUID."
                                : guid != kGuid ? "fmi2Instantiate: Wrong GUID %n. Expected " + std::string(kGuid) + "."
                                : failure != nullptr ? formatted("Error during model registration: %s\n", failure)
                                : is_stopped         ? "stop requested in fmi2Instantiate"
                                                     : "";
    if (name == nullptr || *name == '\0') {
      told.push_back({"?", fmi2Error, "error", "fmi2Instantiate: Missing instance name."});
    } else if (!refusal.empty()) {
      fail(refusal);
    }
    EXPECT((held->component == nullptr) == !told.empty());
    if (held->component == nullptr && _instance != before) half_built.push_back(_instance);
    std::erase(gone, _instance);  // its place may be taken again
  }

  void call_without_instance() {
    EXPECT(fmi2Instantiate("test", fmi2CoSimulation, kGuid, nullptr, nullptr, 1, 1) == nullptr);
    fmi2FreeInstance(nullptr);
    EXPECT(fmi2Reset(nullptr) == fmi2Error && fmi2SetupExperiment(nullptr, 0, 0, 0, 0, 0) == fmi2Error);
    EXPECT(fmi2ExitInitializationMode(nullptr) == fmi2Error && fmi2DoStep(nullptr, 0, 0.001, 0) == fmi2Error);
    EXPECT(fmi2GetReal(nullptr, nullptr, 1, nullptr) == fmi2Error && fmi2SetReal(nullptr, nullptr, 0, nullptr) == 0);
  }

  void free() {
    if (!gone.empty() && is_rare(3)) return fmi2FreeInstance(gone[pick(0, gone.size() - 1)]);
    fmi2FreeInstance(held->component);
    is_failed() ? void(fail(failure)) : gone.push_back(std::exchange(held->component, nullptr));
  }

  void reset() {
    const fmi2Status status = fmi2Reset(held->component);
    EXPECT(status == (is_failed()          ? fail(failure)
                      : failure != nullptr ? fail(formatted("Error during model registration: %s\n", failure))
                      : is_stopped         ? fail("stop requested in fmi2Reset")
                                           : fmi2OK));
  }

  void set_up() {
    const double start = is_rare(3) ? pick_real(in) : in.PickValueInArray({0.0, 5e-8, 1e-7, 1.1e-7, -1e-6});
    const fmi2Status status = std::fabs(start) > 1e-7 ? fail("start time is not zero.") : fmi2OK;
    if (status == fmi2OK) held->time = start;
    EXPECT(fmi2SetupExperiment(held->component, 1, pick_real(in), start, 1, pick_real(in)) == status);
  }

  void enter() {
    if ((steps_left -= 3) < 0) return;
    EXPECT(fmi2EnterInitializationMode(held->component) == fmi2OK);
    outputs = {};
    failure = nullptr;
    is_stopped = false;
    is_built = true;
  }

  void exit() {
    if (--steps_left < 0) return;
    const fmi2Status status = fmi2ExitInitializationMode(held->component);
    EXPECT(status == (is_stopped ? fail("stop requested in fmi2ExitInitializationMode") : fmi2OK));
    follow_model_steps();
  }

  /// Does to the store what a block of the model may do.
  void disturb() {
    constexpr const char* kTexts[] = {"Simulation finished", "a block failed, 100 %s", nullptr};
    Tessera_M_.errorStatus = failure = in.PickValueInArray(kTexts);
    is_stopped = is_rare(3);
    Tessera_M_.stopRequested = is_stopped ? 0x80 : 0;
  }

  void idle() {
    call_idle(fmi2Terminate, fmi2GetFMUstate, fmi2SetFMUstate, fmi2FreeFMUstate, fmi2SerializedFMUstateSize,
              fmi2SerializeFMUstate, fmi2DeSerializeFMUstate, fmi2GetDirectionalDerivative, fmi2EnterEventMode,
              fmi2NewDiscreteStates, fmi2EnterContinuousTimeMode, fmi2CompletedIntegratorStep, fmi2SetTime,
              fmi2SetContinuousStates, fmi2GetDerivatives, fmi2GetEventIndicators, fmi2GetContinuousStates,
              fmi2GetNominalsOfContinuousStates, fmi2SetRealInputDerivatives, fmi2CancelStep, fmi2GetStatus,
              fmi2GetRealStatus, fmi2GetIntegerStatus, fmi2GetBooleanStatus, fmi2GetStringStatus);
    EXPECT(std::strcmp(fmi2GetTypesPlatform(), "default") == 0 && std::strcmp(fmi2GetVersion(), "2.0") == 0);
    std::array<double, 3> values = {7, 7, 7};
    EXPECT(fmi2GetRealOutputDerivatives(held->component, nullptr, 2, nullptr, values.data()) == fmi2OK);
    EXPECT(values == std::array<double, 3>{0, 0, 7});
    EXPECT(fmi2SetDebugLogging(held->component, held->is_traced = in.ConsumeBool(), 3, nullptr) == fmi2OK);
  }

  /// Entry points that report success, do nothing and write nothing.
  void call_idle(auto... functions_to_call) {
    alignas(std::max_align_t) std::array<unsigned char, 64> memory{};
    const auto call = [&]<class... Types>(fmi2Status (*function)(fmi2Component, Types...)) {
      EXPECT(function(held->component, argument<Types>(memory.data())...) == fmi2OK);
    };
    (call(functions_to_call), ...);
    EXPECT(memory == decltype(memory){});
  }
  template <class Type>
  Type argument(void* memory) {
    if constexpr (std::is_pointer_v<Type>) return static_cast<Type>(memory);
    if constexpr (!std::is_pointer_v<Type>) return static_cast<Type>(pick(0, 3));
  }

  void do_step() {
    const double t = held->time + (is_rare(3) ? in.PickValueInArray({5e-10, 1e-9, 2e-9, -2e-9, HUGE_VAL}) : 0.0);
    const double h = is_rare(3) ? pick_real(in) : in.PickValueInArray({0.001, 0.01, 0.0, 0.0010000005, 0.001000002});
    const double quotient = h / 0.001 + 0.5;
    const bool fits = quotient > -2147483649.0 && quotient < 2147483648.0;
    const int n = fits ? static_cast<int>(quotient) : std::numeric_limits<int>::min();
    const bool is_odd = h < 0 || std::fabs(h - n * 0.001) > 1e-9;
    if (!is_odd && n > steps_left) return;  // takes too long
    const fmi2Status status = expect_step(t, h, n, is_odd);
    if (functions.stepFinished != nullptr) ends.push_back(status);
    EXPECT(fmi2DoStep(held->component, t, h, in.ConsumeBool() ? 1 : 0) == status);
    if (status != fmi2OK || n <= 0) return;
    for (int i = 0; i < n; ++i) held->time += 0.001;
    steps_left -= n;
    follow_model_steps();
  }

  fmi2Status expect_step(double t, double h, int n, bool is_odd) {
    tell(formatted("CommunicationStepSize=%.16g, LocalSolverStepSize=%.16g", h, 0.001));
    if (is_odd) return fail(formatted("Stepsize must be non-negative and divisible by %.16g", 0.001));
    if (std::fabs(held->time - t) > 1e-9) return fail("CurrentCommunicationPoint is not equal to FMU time");
    held->time = t;
    tell(formatted("Local solver will do %d steps from t = %.16g.", n, t));
    return n > 0 && is_stopped ? fail("stop requested in fmi2DoStep") : fmi2OK;
  }

  void access() {
    const std::size_t kind = pick(0, 7);
    if (kind == 0) return access(0, "", fmi2Integer{1}, fmi2GetInteger, fmi2SetInteger);
    if (kind == 1) return access(0, "", fmi2String{"text"}, fmi2GetString, fmi2SetString);
    if (kind > 4) return access(kRealCount, "Real vr:%d, value:%lf", fmi2Real{}, fmi2GetReal, fmi2SetReal);
    const auto value = static_cast<fmi2Boolean>(pick(0, 2)) - 1;
    access(kBooleanCount, "Boolean vr:%d, value:%u", value, fmi2GetBoolean, fmi2SetBoolean);
  }

  /// References below `count` are valid.
  template <class Value>
  void access(unsigned count, const char* trace, Value value, auto get_values, auto set_values) {
    std::vector<fmi2ValueReference> vr(pick(0, is_rare() ? 300 : 12));
    std::vector<Value> values(vr.size(), value);
    for (std::size_t i = 0; i < vr.size(); ++i) {
      vr[i] = static_cast<fmi2ValueReference>(pick(is_rare(1) ? count * 6 / 7 : 0, is_rare(40) ? 0xFFFFFFFF : count));
      if constexpr (std::is_floating_point_v<Value>) values[i] = pick_real(in);
    }
    const bool is_read = in.ConsumeBool(), is_null = is_rare() && !vr.empty();
    const auto is_bad = [&](fmi2ValueReference reference) { return reference >= count; };
    const auto good = static_cast<std::size_t>(std::find_if(vr.begin(), vr.end(), is_bad) - vr.begin());
    std::vector<Value> expected = values;
    if constexpr (std::is_arithmetic_v<Value>) {
      for (std::size_t i = 0; i < (is_null || (is_read && good < vr.size()) ? 0 : good); ++i) {
        exchange(vr[i], expected[i], is_read);
        if (held->is_traced) tell(formatted((is_read ? "get" : "set") + std::string(trace), vr[i], expected[i]));
      }
    }
    const fmi2Status status = is_null            ? fail("invalid memory access")
                              : good < vr.size() ? fail("valueReference out of range")
                                                 : fmi2OK;
    Value* room = is_null ? nullptr : values.data();
    EXPECT((is_read ? get_values(held->component, vr.data(), vr.size(), room)
                    : set_values(held->component, vr.data(), vr.size(), room)) == status);
    EXPECT(vr.empty() || std::memcmp(values.data(), expected.data(), vr.size() * sizeof(Value)) == 0);
  }

  void exchange(fmi2ValueReference vr, double& value, bool is_read) {
    const bool is_time = vr == kTimeReference, is_output = vr < kOutputCount;
    double& cell = is_time ? held->time : is_output ? outputs[vr] : parameters.real[vr - kOutputCount];
    (is_read ? value : cell) = is_read || cell == value ? cell : value;
  }
  void exchange(fmi2ValueReference vr, fmi2Boolean& value, bool is_read) {
    unsigned char& cell = parameters.boolean[vr];
    is_read ? void(value = cell) : void(cell = value != 0 ? 1 : 0);
  }

  FuzzedDataProvider in;
  std::array<Held, 3> all{};
  Held* held = nullptr;  // the one of the present call
  std::vector<fmi2Component> gone, half_built;
  std::vector<LogLine> told;
  std::vector<fmi2Status> ends;
  std::array<double, kOutputCount> outputs{};
  TunableParameters parameters{};
  const char* failure = nullptr;  // in the store
  bool is_stopped = false, is_built = false;
  int steps_left = 50;  // of the model
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Session(data, size).TestBody();
  return 0;
}
