// play_scenario LIBRARY CSV [SECONDS]
//
// Plays the unit's own scenario by communication steps of 1 s and writes the outputs at each second, every digit of
// them.

#include <array>
#include <chrono>
#include <cstdio>
#include <exception>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <string>

#include "fmu/unit_library.h"
#include "model/tables/catalogue.h"
#include "model/tables/scenario.h"

namespace {

void discard(fmi2ComponentEnvironment, fmi2String, fmi2Status, fmi2String, fmi2String, ...) {}

void check(bool good, const char* call) {
  if (!good) throw std::runtime_error(std::string(call) + " failed");
}

void play(const char* file, const char* csv_file, int seconds) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> csv(std::fopen(csv_file, "wb"), std::fclose);
  check(csv != nullptr, csv_file);
  std::fputs("time", csv.get());
  for (const OutputRow& row : kOutputs) std::fprintf(csv.get(), ",%s", std::string(row.name).c_str());

  const UnitLibrary unit = load_unit(file);
  const fmi2CallbackFunctions functions = {discard, nullptr, nullptr, nullptr, nullptr};
  const char* guid = "{3b1e7a52-6c0d-4f19-a8e4-2d90c7f1b663}";
  fmi2Component c = unit.fmi2Instantiate("play", fmi2CoSimulation, guid, nullptr, &functions, fmi2False, fmi2False);
  check(c != nullptr, "fmi2Instantiate");
  check(unit.fmi2SetupExperiment(c, fmi2False, 0, 0, fmi2False, 0) == fmi2OK, "fmi2SetupExperiment");
  check(unit.fmi2EnterInitializationMode(c) == fmi2OK, "fmi2EnterInitializationMode");
  check(unit.fmi2ExitInitializationMode(c) == fmi2OK, "fmi2ExitInitializationMode");

  std::array<fmi2ValueReference, kOutputCount> references{};
  std::iota(references.begin(), references.end(), 0U);
  std::array<double, kOutputCount> y{};
  std::chrono::duration<double> stepping{};
  for (int t = 0; t <= seconds; ++t) {
    const auto start = std::chrono::steady_clock::now();
    if (t > 0) check(unit.fmi2DoStep(c, t - 1, 1.0, fmi2True) == fmi2OK, "fmi2DoStep");
    stepping += std::chrono::steady_clock::now() - start;
    check(unit.fmi2GetReal(c, references.data(), y.size(), y.data()) == fmi2OK, "fmi2GetReal");
    std::fprintf(csv.get(), "\n%d", t);
    for (const double value : y) std::fprintf(csv.get(), ",%.17g", value);
  }
  std::fputs("\n", csv.get());
  unit.fmi2FreeInstance(c);
  check(std::fflush(csv.get()) == 0 && std::ferror(csv.get()) == 0, csv_file);
  std::printf("%d s of model time in %.3f s\n", seconds, stepping.count());
}

}  // namespace

int main(int argc, char** argv) {
  try {
    check(argc == 3 || argc == 4, "play_scenario LIBRARY CSV [SECONDS]:");
    play(argv[1], argv[2], argc == 4 ? std::stoi(argv[3]) : static_cast<int>(kScenarioEnd_s));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "play_scenario: error: %s\n", error.what());
    return 1;
  }
  return 0;
}
