// Files of fluids: records of table files and sections of source files. What was read answers any question.

#include <algorithm>
#include <array>
#include <sstream>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"
#include "Vk_lib/Vk_fl_prop_lib/fluid_tables.h"
#include "fuzz/fuzz_support.h"

using namespace Vk_fl_prop_lib;

namespace {

/// Keys of a source file, each with the number of values behind it; those of the first section have labels.
using Sections = const char*;

/// A source file that has all of it: a reader would wait for the rest for ever. Receives the numbers as they are read.
std::string source(FuzzedDataProvider& in, const Sections& sections, std::vector<double>& numbers) {
  std::string text, key;
  int count = 0;
  for (std::istringstream list(sections); list >> key >> count;) {
    std::string words = in.ConsumeRandomLengthString(20);
    for (char& c : words) c = c >= 'A' && c <= 'Z' ? '-' : c;  // no key
    text.append(words).append("\n").append(key).append(in.ConsumeBool() ? " " : "\r\n\t");
    for (int i = 0; i < count; ++i) {
      const double value = in.remaining_bytes() > 0 ? pick_real(in) : i + 0.5;
      char digits[400];
      std::snprintf(digits, sizeof digits, in.ConsumeBool() ? "%.17g" : "%+.3f", std::isfinite(value) ? value : 1.0);
      numbers.push_back(std::strtod(digits, nullptr));
      text += (key == "FLUID_CONSTANTS" ? "label " : "") + std::string(digits) + " ";
    }
  }
  return text + in.ConsumeRemainingBytesAsString();
}

/// The fluid of a source file answers any question, and the same when the file is read again.
template <class Fluid>
void load_and_ask(FuzzedDataProvider& in, const Fluid& fluid, const Sections& sections) {
  const double T = pick_real(in), P = 1000 * pick_real(in), x = pick_real(in), y = pick_real(in);
  const int state = in.ConsumeIntegralInRange(0, 1);
  std::vector<double> numbers;
  const std::string path = write_file("source", source(in, sections, numbers));
  const auto answers = [&]() -> std::vector<double> {
    Fluid f = fluid;
    f.loadFile(path.c_str());
    f.SetFluidState(state);
    if constexpr (std::is_same_v<Fluid, CIdG> || std::is_same_v<Fluid, CLiquide>) {
      const auto values = std::bit_cast<std::array<double, sizeof f.coefficients() / sizeof(double)>>(f.coefficients());
      EXPECT(std::equal(numbers.end() - 6, numbers.end(), values.end() - 6, is_same));
    }
    if constexpr (std::is_same_v<Fluid, CBrine>) {  // ends the process where there is no Cp
      if (f.CpTP(f.coefficients().tRef, P, 0) == 0) return {};
    }
    f.calCoeff(T, P, x, y, x, y);
    const auto list = [](auto... values) { return std::vector<double>{values...}; };
    const CFluideBase& g = f;
    return list(f.calcCoeffs[1], g.CvTP(T, P, x), g.pUV(y, x), g.hPS(P, y), g.hPV(P, x), g.sPH(P, y), g.tHP(y, P),
                g.CpPH(P, y), g.muPH(P, y), g.lambdaTP(T, P, x), g.tPV(P, x), g.tPS(P, y), g.alfa_p(T, P, x), g.tSat(P),
                g.xPH(P, y), g.beta_h(T, P, x), g.hPVgaz(P, x), g.rhTWP(T, x, P), g.wTRhP(T, x, P), g.TdewWP(x, P),
                g.thumTWP(T, x, P, y), g.CpTW(T, x, P, y), g.wTH(T, y, P), g.wTV(T, x, P), g.tThumW(T, x, P, y));
  };
  const std::vector<double> first = answers(), second = answers();
  EXPECT(std::equal(first.begin(), first.end(), second.begin(), second.end(), is_same));
}

/// A table may hold anything: what it gives is whole, or ends at the first value that is none.
void read_table(FuzzedDataProvider& in) {
  constexpr std::size_t kValues[] = {60, 97, 31, 25, 0, 61, 10};
  const int type = in.ConsumeIntegralInRange(-1, 7);
  const std::string name = in.ConsumeRandomLengthString(10);
  const std::string path = write_file("table", in.ConsumeRemainingBytesAsString());
  const double kUntouched = std::nan("");
  std::vector<double> coeffs(120, kUntouched);
  char message[80] = "";
  const bool is_found = getCoeffs(type, name.c_str(), path.c_str(), coeffs.data(), message) == 0;
  const auto end = std::find_if(coeffs.begin(), coeffs.end(), [](double value) { return std::isnan(value); });
  EXPECT(std::all_of(end, coeffs.end(), [](double value) { return std::isnan(value); }));
  EXPECT(is_found ? message[0] == '\0' : end == coeffs.begin() && (message[0] != '\0' || type == 4));
  EXPECT(end - coeffs.begin() <= (is_found ? static_cast<std::ptrdiff_t>(kValues[type]) : 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider in(data, size);
  const int kind = in.ConsumeIntegralInRange(0, 5);
  if (kind == 0) load_and_ask(in, CIdG(), "FLUID_CONSTANTS 7 SPEC_HEAT 6 CONDUCTIVITY 6 VISCOSITY 6");
  if (kind == 1) load_and_ask(in, CAirHumide(), "FLUID_CONSTANTS 6 SPEC_HEAT 2 SATURATION_LINE 3");
  if (kind == 2) load_and_ask(in, CBrine(30), "FLUID_CONSTANTS 1 COEFFICIENTS 90 REFERENCE 3 LIMITS_CONCENTRATION 2");
  if (kind == 3) load_and_ask(in, CLiquide(), "FLUID_CONSTANTS 7 DENSITY 6 SPEC_HEAT 6 CONDUCTIVITY 6 VISCOSITY 6");
  if (kind == 4) {
    load_and_ask(
        in, CEau(),
        "FLUID_CONSTANTS 10 SATURATION_LINE 10 SUBCOOLED_A 23 SUBCOOLED_a 13 SUPERHEATED_B 70 SUPERHEATED_bi 27 "
        "EXP_z 36 EXP_x 27 FUN_L 3 CONDUCTIVITY 12 VISCOSITY_L 42 VISCOSITY_0 4 VISCOSITY_REF 3");
  }
  if (kind == 5) read_table(in);
  return 0;
}
