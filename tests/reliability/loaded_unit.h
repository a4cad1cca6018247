#pragma once

/// An instance of the unit that minds each answer.

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "fmu/unit_library.h"
#include "model/tables/catalogue.h"

/// All outputs as bits, so that rows with a NaN compare too.
using Row = std::array<std::uint64_t, kOutputCount>;
using Rows = std::vector<Row>;

/// Expects fmi2OK of each call, and no other messages than the two texts of a communication step.
class LoadedUnit {
 public:
  explicit LoadedUnit(const std::string& file) : fmi_(load_unit(file)) {
    std::iota(references_.begin(), references_.end(), 0U);
    instantiate();
  }
  ~LoadedUnit() { free(); }
  LoadedUnit(const LoadedUnit&) = delete;
  LoadedUnit& operator=(const LoadedUnit&) = delete;

  void instantiate() {
    c_ = fmi_.fmi2Instantiate("test", fmi2CoSimulation, "{3b1e7a52-6c0d-4f19-a8e4-2d90c7f1b663}", nullptr, &callbacks_,
                              fmi2False, fmi2False);
    ASSERT_NE(c_, nullptr);
  }
  void free() { fmi_.fmi2FreeInstance(std::exchange(c_, nullptr)); }
  void reset() { EXPECT_EQ(fmi_.fmi2Reset(c_), fmi2OK); }

  /// Sets an input and opens its gate.
  void open(std::size_t input, double value) { set(input, value, fmi2True); }
  /// Gives an input its start value and closes its gate.
  void close(std::size_t input) { set(input, kInputs[input].start, fmi2False); }

  void initialize() {
    ASSERT_EQ(fmi_.fmi2SetupExperiment(c_, fmi2False, 0, 0, fmi2False, 0), fmi2OK);
    ASSERT_EQ(fmi_.fmi2EnterInitializationMode(c_), fmi2OK);
    ASSERT_EQ(fmi_.fmi2ExitInitializationMode(c_), fmi2OK);
    ms_ = 0;
  }

  /// One communication step. @return the outputs behind it
  Row step(int step_ms) {
    EXPECT_EQ(fmi_.fmi2DoStep(c_, ms_ / 1000.0, step_ms / 1000.0, fmi2True), fmi2OK);
    ms_ += step_ms;
    std::array<double, kOutputCount> outputs{};
    EXPECT_EQ(fmi_.fmi2GetReal(c_, references_.data(), outputs.size(), outputs.data()), fmi2OK);
    const fmi2ValueReference time_reference = kTimeReference;
    double time = -1;
    EXPECT_EQ(fmi_.fmi2GetReal(c_, &time_reference, 1, &time), fmi2OK);
    EXPECT_NEAR(time, ms_ / 1000.0, 1e-9);
    return std::bit_cast<Row>(outputs);
  }

  Rows go_on(int duration_ms, int step_ms) {
    Rows rows(static_cast<std::size_t>(duration_ms / step_ms));
    for (Row& row : rows) row = step(step_ms);
    return rows;
  }

  /// A run from the start.
  Rows run(int duration_ms, int step_ms) {
    initialize();
    return go_on(duration_ms, step_ms);
  }

 private:
  static void check_message(fmi2ComponentEnvironment, fmi2String, fmi2Status status, fmi2String category,
                            fmi2String message, ...) {
    EXPECT_EQ(status, fmi2OK) << message;
    EXPECT_STREQ(category, "info");
    EXPECT_TRUE(std::strncmp(message, "CommunicationStepSize=", 22) == 0 ||
                std::strncmp(message, "Local solver will do ", 21) == 0)
        << message;
  }

  void set(std::size_t input, double value, fmi2Boolean is_open) {
    const auto gate = static_cast<fmi2ValueReference>(input);
    const auto parameter = static_cast<fmi2ValueReference>(kFirstParameter + input);
    EXPECT_EQ(fmi_.fmi2SetReal(c_, &parameter, 1, &value), fmi2OK);
    EXPECT_EQ(fmi_.fmi2SetBoolean(c_, &gate, 1, &is_open), fmi2OK);
  }

  UnitLibrary fmi_;
  fmi2CallbackFunctions callbacks_ = {check_message, nullptr, nullptr, nullptr, nullptr};
  fmi2Component c_ = nullptr;
  int ms_ = 0;
  std::array<fmi2ValueReference, kOutputCount> references_{};
};
