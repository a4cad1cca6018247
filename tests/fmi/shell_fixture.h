#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "fmi/fmu_instance.h"
#include "model/signals.h"

/// A line that reached the importer's logger.
struct LogLine {
  std::string name;
  fmi2Status status;
  std::string category, text;
  bool operator==(const LogLine&) const = default;
};

inline void PrintTo(const LogLine& line, std::ostream* out) {
  *out << "{" << line.name << ", " << line.status << ", " << line.category << ", \"" << line.text << "\"}";
}

inline LogLine error(std::string text) { return {"test", fmi2Error, "error", std::move(text)}; }
inline LogLine info(std::string text) { return {"test", fmi2OK, "info", std::move(text)}; }

/// Starts from the store as it is at load, and records what the unit tells the importer.
class Shell : public ::testing::Test {
 protected:
  Shell() {
    Tessera_M_ = {};
    Tessera_X = {};
    Tessera_Y = {};
    Tessera_B = {};
    Tessera_DW = {};
    for (std::size_t k = 0; k < kInputCount; ++k) Tessera_P.real[k] = kInputs[k].start;
    Tessera_P.boolean = {};
  }

  ~Shell() override {
    Tessera_M_.errorStatus = nullptr;
    for (fmi2Component c : made) fmi2FreeInstance(c);
  }

  fmi2Component instantiate(const char* name = "test", const char* guid = kGuid) {
    fmi2Component c = fmi2Instantiate(name, fmi2CoSimulation, guid, nullptr, &functions, fmi2False, fmi2False);
    if (c != nullptr) made.push_back(c);
    return c;
  }

  /// An instance after its initialization.
  fmi2Component start() {
    fmi2Component c = instantiate();
    initialize(c);
    return c;
  }

  static void initialize(fmi2Component c) {
    EXPECT_EQ(fmi2SetupExperiment(c, fmi2False, 0, 0, fmi2False, 0), fmi2OK);
    EXPECT_EQ(fmi2EnterInitializationMode(c), fmi2OK);
    EXPECT_EQ(fmi2ExitInitializationMode(c), fmi2OK);
  }

  static double get(fmi2Component c, fmi2ValueReference vr) {
    double value = -999.0;
    EXPECT_EQ(fmi2GetReal(c, &vr, 1, &value), fmi2OK);
    return value;
  }

  static void set(fmi2Component c, fmi2ValueReference vr, double value) {
    EXPECT_EQ(fmi2SetReal(c, &vr, 1, &value), fmi2OK);
  }

  static void set_gate(fmi2Component c, fmi2ValueReference vr, fmi2Boolean value) {
    EXPECT_EQ(fmi2SetBoolean(c, &vr, 1, &value), fmi2OK);
  }

  static fmi2Status step(fmi2Component c, double t, double h) { return fmi2DoStep(c, t, h, fmi2True); }

  /// What was logged since the last call.
  std::vector<LogLine> take_log() { return std::exchange(lines, {}); }

  std::vector<LogLine> lines;
  std::vector<fmi2Status> finished;
  fmi2CallbackFunctions functions = {record, nullptr, nullptr, step_finished, this};

 private:
  static void record(fmi2ComponentEnvironment environment, fmi2String name, fmi2Status status, fmi2String category,
                     fmi2String message, ...) {
    char text[512];
    va_list arguments;
    va_start(arguments, message);
    std::vsnprintf(text, sizeof text, message, arguments);
    va_end(arguments);
    static_cast<Shell*>(environment)->lines.push_back({name, status, category, text});
  }

  static void step_finished(fmi2ComponentEnvironment environment, fmi2Status status) {
    static_cast<Shell*>(environment)->finished.push_back(status);
  }

  std::vector<fmi2Component> made;
};
