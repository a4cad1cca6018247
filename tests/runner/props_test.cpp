// `tessera props`. Expected values come by hand from the fluids' vectors, or from the steam tables.

#include <array>
#include <bit>
#include <span>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG_vectors.h"
#include "apps/runner/text.h"
#include "runner/test_support.h"

namespace {

using ::testing::DoubleNear;
using ::testing::StartsWith;

std::string words(std::span<const double> values) {
  std::string text;
  for (const double value : values) text.append(" ").append(runner::number_text(value));
  return text;
}

class PropsTest : public ProgramTest {
 protected:
  /// The values of the printed properties, without anything on standard error.
  std::vector<double> values(const std::string& arguments) {
    const Outcome outcome = tessera("props " + arguments);
    EXPECT_EQ(outcome.code, 0) << arguments;
    EXPECT_EQ(outcome.errors, "") << arguments;
    std::vector<double> result;
    std::istringstream lines(outcome.output);
    for (std::string line; std::getline(lines, line);) result.push_back(std::stod(line.substr(line.find('=') + 1)));
    return result;
  }
  double value(const std::string& arguments) { return values(arguments).at(0); }
};

TEST_F(PropsTest, PrintsNameValueAndUnit) {
  EXPECT_EQ(tessera("props o2_idg H s T_max --T 273.15").output, "h = 1e+05 J/kg\ns = 1000 J/(kg K)\nt_max = 1050 K\n");
  EXPECT_EQ(tessera("props Moist_Air rh --T 300 --w 0").output, "rh = 0\n");
}

TEST_F(PropsTest, ValuesAreThoseOfTheHandCalculation) {
  EXPECT_THAT(value("Moist_Air h --T 26.85degC --P 1.01325bar --w 10g/kg"),
              DoubleNear(1e5 + 1006.6 * 26.85 + 0.01 * (2500800 + 1826.6 * 26.85), 1e-6));
  EXPECT_THAT(value("N2_IDG v --T 400 --P 2bar"), DoubleNear(8.31451 * 400 / (0.028013 * 2e5), 1e-12));
  EXPECT_THAT(value("Glycerol_Water v --T 280.15 --concentration 47.8467"), DoubleNear(1 / 1127.0, 1e-15));
  EXPECT_THAT(value("Glycerol_Water t_freeze --T 300 --concentration 47.8467%"),
              DoubleNear(273.15 - 21.38 - 0.0002444 + 3.632e-06 + 5.74e-08, 1e-9));
}

TEST_F(PropsTest, WaterIsLiquidVapourOrBoth) {
  EXPECT_THAT(value("Water h --T 100degC --x 0"), DoubleNear(419.1e3, 100));
  EXPECT_THAT(value("Water h --T 100degC --x 1"), DoubleNear(2676.0e3, 100));
  EXPECT_THAT(value("Water h --T 100degC --x 0.9"), DoubleNear(419.1e3 + 0.9 * 2256.9e3, 200));
  EXPECT_THAT(value("Water p_sat --T 100degC --x 0.9"), DoubleNear(101325, 20));
  EXPECT_THAT(value("Water t_sat --T 300 --P 1MPa"), DoubleNear(179.9 + 273.15, 0.05));
}

TEST_F(PropsTest, TablesAreCsvWithTheEndsIncluded) {
  const std::string gas = tessera("props H2_IDG t_min h --table T=250:1050:10").output;
  EXPECT_THAT(gas, StartsWith("\"T [K]\",\"t_min [K]\",\"h [J/kg]\"\n250,250,"));
  EXPECT_THAT(gas, HasSubstr("\n1050,250,"));
  EXPECT_EQ(std::count(gas.begin(), gas.end(), '\n'), 82);
  EXPECT_EQ(tessera("props N2_IDG t_min --T 300 --table P=1.2:1:-0.1bar").output,
            "\"P [Pa]\",\"t_min [K]\"\n120000,250\n110000,250\n1e+05,250\n");
}

TEST_F(PropsTest, StatesOutOfRangeAreNoted) {
  const std::pair<const char*, const char*> cases[] = {
      {"O2_IDG h --T 200", "T = 200 K: below the limit of O2_IDG; the library used T = 250 K"},
      {"H2_IDG h --table T=230:260:10", "T = 230 K (the first of 2 rows): below the limit of H2_IDG"},
      {"Moist_Air cp --w=-1 --T 300", "w = -1 kg/kg: below the limit of Moist_Air; the library used w = 0 kg/kg"},
      {"Glycerol_Water h --T 300 --concentration 10", "concentration = 10 percent: outside the limits of Glycerol_Wat"},
      {"Glycerol_Water h --T 250 --concentration 47.8467", "T = 250 K, freezing at 251.76"},
      {"Water h --T 260", "T = 260 K: below the limit of Water, 273.15 K"},
      {"Water h --T 400 --P 5e6 --x 0.5", "not on the saturation line; the library mixed"},
      {"Water h --T 400 --P 1e5 --x 0", "no liquid below saturation"},
      {"Water t_sat --T 300 --P 300bar", "<invertion_x>"},  // the library's own words
  };
  for (const auto& [arguments, note] : cases) {
    const Outcome outcome = tessera("props " + std::string(arguments));
    EXPECT_EQ(outcome.code, 0) << arguments;
    EXPECT_THAT(outcome.errors, HasSubstr("tessera: note: "));
    EXPECT_THAT(outcome.errors, HasSubstr(note));
  }
  EXPECT_EQ(value("O2_IDG t_max --T 1050"), 1050);  // the limits themselves are in the range
  expect_refusal("props O2_IDG v --T 300 --P 1e-310", 4, "v is inf, T = 300 K, P = 1e-310 Pa");
}

TEST_F(PropsTest, FluidsComeFromTablesAndSourceFiles) {
  const auto oxygen = std::bit_cast<std::array<double, 25>>(Vk_fl_prop_lib::kO2_IDG);
  const std::span all(oxygen);
  std::string source = "A gas FLUID_CONSTANTS";
  for (const double constant : all.first(7)) source += " label" + words({&constant, 1});
  source += "\nSPEC_HEAT" + words(all.subspan(7, 6)) + "\nCONDUCTIVITY" + words(all.subspan(13, 6)) + "\n";
  write("gasIDG.fdb", "# gases\nGas\tsome\t" + words(all) + "\n");
  write("gas.txt", source + "VISCOSITY" + words(all.subspan(19)));
  write("cut.txt", source);
  const std::string expected = tessera("props O2_IDG --all --T 350").output;
  EXPECT_EQ(tessera("props gas --all --T 350 --file gasIDG.fdb").output, expected);
  EXPECT_EQ(tessera("props gas --all --T 350 --file \"$PWD/gas.txt\" --type gas").output, expected);

  expect_refusal("props gas h --T 300 --file gas.txt", 2, "'gas.txt': give the --type of the fluid, one of gas, moist");
  expect_refusal("props gas h --T 300 --file cut.txt --type gas", 5, "lacks the section VISCOSITY behind");
  expect_refusal("props gsa h --T 300 --file gasIDG.fdb", 2, "The fluid gsa is not in source file!");
}

TEST_F(PropsTest, BadQuestionsAreRefusedInOneLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "name a fluid"},
      {"Moistair h --T 300", "did you mean 'Moist_Air'?"},
      {"O2_IDG --T 300", "name the properties, or give --all"},
      {"O2_IDG lamda --T 300", "O2_IDG has no such property; did you mean 'lambda'"},
      {"O2_IDG h", "O2_IDG needs --T, the temperature [K]"},
      {"O2_IDG h --T 300 --w 0.1", "--w: means nothing to O2_IDG"},
      {"O2_IDG h --T 300bar", "'bar' is no unit of T; it takes K, degC"},
      {"O2_IDG h --T 300 --type gas", "--type: belongs to --file"},
      {"O2_IDG h --table T=250:300", "write VAR=START:STOP:STEP"},
      {"O2_IDG h --table T=250:304:10", "no whole number of steps; the nearest STOP is 300"},
      {"O2_IDG h --T 300 --table T=250:300:10", "--T: is in --table already"},
  };
  for (const auto& [arguments, message] : cases) expect_refusal("props " + std::string(arguments), 2, message);
}

}  // namespace
