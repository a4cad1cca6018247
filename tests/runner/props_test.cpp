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
  EXPECT_THAT(value("Moist_Air cp --T 300 --w 0.01"), DoubleNear(1006.6 + 0.01 * 1826.6, 1e-9));
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
  EXPECT_THAT(value("Water v --T 300"), DoubleNear(0.0010035, 5e-7));
  EXPECT_THAT(value("Water v --T 300 --P 1000"), DoubleNear(138.4, 0.1));
  EXPECT_THAT(value("Water t_sat --T 300 --P 1MPa"), DoubleNear(179.9 + 273.15, 0.05));
}

TEST_F(PropsTest, AllAreAsManyAsTheListHas) {
  const std::pair<const char*, std::size_t> fluids[] = {
      {"O2_IDG", 12}, {"Moist_Air --w 0.01", 16}, {"Ethylene_Glycol_Water --concentration 50", 13}, {"Water", 9}};
  for (const auto& [fluid, count] : fluids) EXPECT_EQ(values("--all --T 320 " + std::string(fluid)).size(), count);

  const std::string brine = tessera("props --list Glycerol_Water").output;
  EXPECT_THAT(brine, StartsWith("brine: Glycerol_Water Ethylene_Glycol_Water\n  --T  "));
  EXPECT_EQ(std::count(brine.begin(), brine.end(), '\n'), 1 + 3 + 13 + 1);
  EXPECT_THAT(tessera("props --list").output, HasSubstr("t_freeze         K         freezing temperature\n"));
}

TEST_F(PropsTest, TablesAreCsvWithTheEndsIncluded) {
  const std::string gas = tessera("props H2_IDG t_min h --table T=250:1050:10").output;
  EXPECT_THAT(gas, StartsWith("\"T [K]\",\"t_min [K]\",\"h [J/kg]\"\n250,250,"));
  EXPECT_THAT(gas, HasSubstr("\n1050,250,"));
  EXPECT_EQ(std::count(gas.begin(), gas.end(), '\n'), 82);
  EXPECT_EQ(tessera("props N2_IDG t_min --T 300 --table P=1.2:1:-0.1bar").output,
            "\"P [Pa]\",\"t_min [K]\"\n120000,250\n110000,250\n1e+05,250\n");
  EXPECT_THAT(tessera("props Water h --T 400 --table x=0:1:0.1").output, HasSubstr("\n0.3,"));
}

TEST_F(PropsTest, StatesOutOfRangeAreNoted) {
  const std::pair<const char*, const char*> cases[] = {
      {"O2_IDG h --T 200", "T = 200 K: below the limit of O2_IDG; the library used T = 250 K"},
      {"O2_IDG h --T 300 --P=-5", "P = -5 Pa: not above 0; the library used P = 1e-10 Pa"},
      {"H2_IDG h --table T=230:260:10", "T = 230 K (the first of 2 rows): below the limit of H2_IDG"},
      {"Moist_Air cp --w 0 --T 100", "T = 100 K: below the limit of Moist_Air; the library used T = 173.15 K"},
      {"Moist_Air cp --w 0 --T 700", "the library used T = 640.15 K"},
      {"Moist_Air cp --w 0 --T 300 --P 3e8", "the library used P = 2e+08 Pa"},
      {"Moist_Air cp --w=-1 --T 300", "w = -1 kg/kg: below the limit of Moist_Air; the library used w = 0 kg/kg"},
      {"Glycerol_Water h --T 300 --concentration 10", "concentration = 10 percent: outside the limits of Glycerol_Wat"},
      {"Glycerol_Water h --T 250 --concentration 47.8467", "T = 250 K, freezing at 251.76"},
      {"Water h --T 260", "T = 260 K: below the limit of Water, 273.15 K"},
      {"Water h --T 400 --P 5e6 --x 0.5", "not on the saturation line; the library mixed"},
      {"Water h --T 400 --P 1e5 --x 0", "no liquid below saturation"},
      {"Water h --T 640 --P 25MPa", "above the limit of the liquid"},
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
  write("gasIDG.fdb", "# gases\nOther\t\t1 2 x\nGas\tsome\t" + words(all) + "\n");
  write("gas.txt", source + "VISCOSITY" + words(all.subspan(19)));
  write("cut.txt", source);
  write("text.txt", source + "VISCOSITY 1 2 3 four");
  const std::string expected = tessera("props O2_IDG --all --T 350").output;
  EXPECT_EQ(tessera("props gas --all --T 350 --file gasIDG.fdb").output, expected);
  EXPECT_EQ(tessera("props gas --all --T 350 --file \"$PWD/gas.txt\" --type gas").output, expected);

  write("air.txt", "FLUID_CONSTANTS Ma 0.03 Mw 0.02 p 1e5 T 273 h 5000 s 300 SPEC_HEAT 1 2 SATURATION_LINE 1 2 3");
  EXPECT_THAT(values("Air h s --T 273.15 --P 101325 --w 0 --file air.txt --type moist_air"),
              ::testing::Pointwise(DoubleNear(1e-9), {5000.0, value("Moist_Air s --T 273.15 --w 0") - 1000 + 300}));
  write("liquids",
        "Oil\t\t0 200 400 1e5 300 0 0" + std::string(" 800 0 0 0 0 0 2000 0 0 0 0 0") + words(all.first(12)));
  EXPECT_THAT(value("oil v --T 300 --P 1e5 --file liquids --type liquid"), DoubleNear(1.0 / 800, 1e-15));

  expect_refusal("props gas h --T 300 --file none.txt --type gas", 5, "'none.txt': no such file");
  expect_refusal("props gas h --T 300 --file temporary --type gas", 5, "'temporary': is no regular file");
  expect_refusal("props gas h --T 300 --file gas.txt", 2, "'gas.txt': give the --type of the fluid, one of gas, moist");
  expect_refusal("props gas h --T 300 --file cut.txt --type gas", 5, "lacks the section VISCOSITY behind");
  expect_refusal("props gas h --T 300 --file text.txt --type gas", 5, "section VISCOSITY: value 4 of 6 is no number");
  expect_refusal("props other h --T 300 --file gasIDG.fdb", 5, "record other: value 3 of 25 is no number");
  expect_refusal("props gsa h --T 300 --file gasIDG.fdb", 2, "The fluid gsa is not in source file!");
}

TEST_F(PropsTest, BadQuestionsAreRefusedInOneLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "name a fluid"},
      {"Moistair h --T 300", "did you mean 'Moist_Air'?"},
      {"O2_IDG --T 300", "name the properties, or give --all"},
      {"O2_IDG lamda --T 300", "O2_IDG has no such property; did you mean 'lambda'"},
      {"O2_IDG h", "O2_IDG needs --T, the temperature [K]"},
      {"Glycerol_Water h --T 300", "Glycerol_Water needs --concentration"},
      {"O2_IDG h --T 300 --w 0.1", "--w: means nothing to O2_IDG"},
      {"O2_IDG h --T 300bar", "'bar' is no unit of T; it takes K, degC"},
      {"O2_IDG h --T warm", "--T 'warm': give a finite number"},
      {"O2_IDG h --T 300 --type gas", "--type: belongs to --file"},
      {"O2_IDG h --table T=250:300", "write VAR=START:STOP:STEP"},
      {"O2_IDG h --table Q=250:300:10", "VAR is T, P, w, x or concentration"},
      {"O2_IDG h --table T=250:300:-10", "steps of -10 do not lead from START to STOP"},
      {"O2_IDG h --table T=250:304:10", "no whole number of steps; the nearest STOP is 300"},
      {"O2_IDG h --table T=250:300:1e-9", "more than a million steps"},
      {"O2_IDG h --T 300 --table T=250:300:10", "--T: is in --table already"},
  };
  for (const auto& [arguments, message] : cases) expect_refusal("props " + std::string(arguments), 2, message);
}

}  // namespace
