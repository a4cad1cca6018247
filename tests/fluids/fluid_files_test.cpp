// Coefficient vectors from table files, and fluids from source files. The tests write the files.

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluidFile.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"
#include "Vk_lib/Vk_fl_prop_lib/fluid_tables.h"

namespace Vk_fl_prop_lib {
namespace {

namespace fs = std::filesystem;

/// Words first, first + 1, ... as they stand in a file.
std::string counted(int first, int count, const char* between = " ") {
  std::string text;
  for (int i = 0; i < count; ++i) text += std::to_string(first + i) + ".5e0" + between;
  return text;
}

/// A working directory with the folders in which the files are looked for.
class FluidFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    root = fs::temp_directory_path() / ("fluid_files_" + std::to_string(::getpid()) + "_" + test->name());
    fs::create_directories(root / "tables");
    fs::create_directories(root / "work" / "sources");
    fs::current_path(root / "work");
    coeffs.fill(kUnset);
  }
  void TearDown() override {
    fs::current_path(start);
    fs::remove_all(root);
  }

  void write_table(const char* file, const std::string& text) {
    std::ofstream(root / "tables" / file, std::ios::binary) << text;
  }
  static void write_source(const char* file, const std::string& text) {
    std::ofstream(fs::path("sources") / file, std::ios::binary) << text;
  }

  /// Reads a fluid of count values, which must be first + 0.5, first + 1.5, ...
  void expect_vector(int type, const char* name, int first, int count) {
    coeffs.fill(kUnset);
    EXPECT_EQ(getCoeffs(type, name, coeffs.data(), msg), 0) << msg;
    for (int i = 0; i < count; ++i) EXPECT_EQ(coeffs[static_cast<std::size_t>(i)], first + i + 0.5) << name << ' ' << i;
    EXPECT_EQ(coeffs[static_cast<std::size_t>(count)], kUnset);
  }

  static constexpr double kUnset = -7;
  fs::path start = fs::current_path();
  fs::path root;
  std::array<double, 120> coeffs{};
  char msg[200] = "untouched";
};

TEST_F(FluidFiles, TableOfEachTypeHasItsNameAndLength) {
  const struct {
    int type;
    const char* file;
    int values;
  } tables[] = {{0, "aeration.fdb", 60}, {1, "brines.fdb", 97}, {2, "liquids.fdb", 31},
                {3, "gasIDG.fdb", 25},   {5, "refrig.fdb", 61}, {6, "moistAir.fdb", 10}};
  for (const auto& table : tables) {
    write_table(table.file, "# comment\nFirst\t\t" + counted(0, table.values) + "\nSecond\tgroup\t" +
                                counted(500, table.values) + "\n");
    expect_vector(table.type, "First", 0, table.values);
    expect_vector(table.type, "Second", 500, table.values);
  }
}

TEST_F(FluidFiles, RecordsAreFreeInForm) {
  write_table("gasIDG.fdb", "#one word\n# two\twords\n#\n\n#last\nA more of the field\tsecond field, 3 words\t" +
                                counted(0, 12) + "\n  " + counted(12, 13, "\t\n") + "\nO2_IDG\t\t" + counted(30, 25) +
                                "\n#B\t\t" + counted(60, 25) + "\nC\tx\t" + counted(90, 25, " "));
  expect_vector(3, "A", 0, 25);
  expect_vector(3, "o2_idg", 30, 25);
  expect_vector(3, "#b", 60, 25);  // no comment any more
  expect_vector(3, "C", 90, 25);   // the file ends without a line end
}

TEST_F(FluidFiles, LineEndsMayBeThoseOfAnotherPlatform) {
  write_table("moistAir.fdb", "# comment\r\nA\t\t" + counted(0, 10) + "\r\nB\t\t" + counted(20, 10, "\r\n"));
  expect_vector(6, "A", 0, 10);
  expect_vector(6, "B", 20, 10);
}

TEST_F(FluidFiles, WrongCountsAndWrongNumbers) {
  write_table("moistAir.fdb", "Short\t\t" + counted(0, 8) + "\n10.5\t20.5\t" + counted(40, 10) +
                                  "\nNamed\t\t1 2 3\nNext\t\t4 5\nHuge\t\t1 1e999 3\n");
  EXPECT_EQ(getCoeffs(6, "Short", coeffs.data(), msg), 0);  // takes two words of the next line
  EXPECT_EQ(coeffs[7], 7.5);
  EXPECT_EQ(coeffs[8], 10.5);
  EXPECT_EQ(coeffs[9], 20.5);
  for (const char* name : {"Named", "Huge"}) {
    coeffs.fill(kUnset);
    EXPECT_EQ(getCoeffs(6, name, coeffs.data(), msg), 0);  // stops at what is no number
    const std::size_t read = name[0] == 'N' ? 3 : 1;
    for (std::size_t i = 0; i < 10; ++i) EXPECT_EQ(coeffs[i], i < read ? static_cast<double>(i + 1) : kUnset);
  }
}

TEST_F(FluidFiles, FailuresSayWhatIsMissing) {
  for (const int type : {7, -1}) {
    EXPECT_EQ(getCoeffs(type, "A", coeffs.data(), msg), 1);
    EXPECT_EQ(msg, "The fluid type=" + std::to_string(type) + " is not found!");
  }
  EXPECT_EQ(getCoeffs(3, "A", coeffs.data(), msg), 1);
  EXPECT_STREQ(msg, "The source file of type=3 can not be opened!");
  for (const char* text : {"", "#", "# only comments\n", "B\t\t1 2 3", "B\t\t1 2 3\n", "AB\t\t1\nA_\t\t1\n\n \n"}) {
    write_table("gasIDG.fdb", text);
    EXPECT_EQ(getCoeffs(3, "A", coeffs.data(), msg), 1);
    EXPECT_STREQ(msg, "The fluid A is not in source file!") << text;
  }
  std::snprintf(msg, sizeof msg, "untouched");
  EXPECT_EQ(getCoeffs(4, "A", coeffs.data(), msg), 1);
  EXPECT_STREQ(msg, "untouched");
  for (const double value : coeffs) EXPECT_EQ(value, kUnset);
}

TEST_F(FluidFiles, NumbersInAllForms) {
  write_table("moistAir.fdb", "A\t\t+1.25 -.5 3. 4e+2 5E-1 6 1,5\n");
  EXPECT_EQ(getCoeffs(6, "A", coeffs.data(), msg), 0);
  const double expected[] = {1.25, -0.5, 3, 400, 0.5, 6, 1, kUnset, kUnset};  // a comma is no part of a number
  for (std::size_t i = 0; i < std::size(expected); ++i) EXPECT_EQ(coeffs[i], expected[i]) << i;
}

TEST_F(FluidFiles, NumbersDoNotFollowTheLocale) {
  const char* comma = nullptr;
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "German"}) {
    if (comma == nullptr) comma = std::setlocale(LC_NUMERIC, name);
  }
  if (comma == nullptr) GTEST_SKIP() << "no locale with a decimal comma is installed";
  write_table("moistAir.fdb", "A\t\t0.5 1.5 2.5 3.5 4.5 5.5 6.5 7.5 8.5 9.5\n");
  expect_vector(6, "A", 0, 10);
  std::setlocale(LC_NUMERIC, "C");
}

TEST_F(FluidFiles, GasFromASourceFile) {
  write_source("gas",
               "A gas. Constants in SI FLUID_CONSTANTS\nM 1.5 tMin[K] 2.5 tMax 3.5 p 4.5 T 5.5 h 6.5 s 7.5\n"
               "cp in J/(kg K) SPEC_HEAT " +
                   counted(8, 6) + "\nCONDUCTIVITY_ no CONDUCTIVITY\n" + counted(14, 6, "\r\n") + " VISCOSITY " +
                   counted(20, 6));
  CIdG gas;
  gas.loadFile("gas");
  std::array<double, 25> expected{};  // the order of the file is that of the vector
  std::iota(expected.begin(), expected.end(), 1.5);
  EXPECT_EQ(std::bit_cast<decltype(expected)>(gas.coefficients()), expected);
}

TEST_F(FluidFiles, LiquidFromASourceFile) {
  write_source("oil", "FLUID_CONSTANTS K 4 a 2.5 b 3.5 c 4.5 d 5.5 e 6.5 f 7.5 DENSITY " + counted(8, 6) +
                          " SPEC_HEAT " + counted(14, 6) + " CONDUCTIVITY " + counted(20, 6) + " VISCOSITY " +
                          counted(26, 6));
  CLiquide oil;
  oil.loadFile("oil");
  std::array<double, 31> expected{};
  std::iota(expected.begin(), expected.end(), 1.5);
  expected[0] = 0.25;  // the file has the bulk modulus
  EXPECT_EQ(std::bit_cast<decltype(expected)>(oil.coefficients()), expected);
}

TEST_F(FluidFiles, BrineFromASourceFileAtAnyPath) {
  const std::string text = "FLUID_CONSTANTS K 2e9 COEFFICIENTS " + counted(0, 90, "\n") +
                           " REFERENCE 40 280 1e5 LIMITS_CONCENTRATION 10 60\n";
  std::ofstream("some:where") << text;  // a name with a colon is a path as it stands
  CBrine brine(33.0);
  brine.loadFile("some:where");
  const BrineVector& c = brine.coefficients();
  EXPECT_EQ(c.kappa, 5e-10);
  for (int term = 0; term < 18; ++term) {
    for (int property = 0; property < 5; ++property) EXPECT_EQ(c.c[property][term], 5 * term + property + 0.5);
  }
  EXPECT_TRUE(c.concRef == 40 && c.tRef == 280 && c.pRef == 1e5 && c.cMin == 10 && c.cMax == 60);
  EXPECT_EQ(c.conc, 33);  // not in the file
}

TEST_F(FluidFiles, AbsentSourceFileLeavesTheFluidAsItWas) {
  CIdG gas(kO2_IDG);
  gas.loadFile("nothing");
  gas.loadFile(std::string(5000, 'x').c_str());
  EXPECT_EQ(gas.hTP(350, 1e5), CIdG(kO2_IDG).hTP(350, 1e5));
  CLiquide().loadFile("nothing");
  CBrine(50.0).loadFile("nothing");
  CAirHumide().loadFile("nothing");
}

TEST_F(FluidFiles, WrongNumberInTheLastSectionLeavesTheRest) {
  write_source("gas", "FLUID_CONSTANTS" + std::string(7, ' ') + "a 1 b 2 c 3 d 4 e 5 f 6 g 7 SPEC_HEAT " +
                          counted(0, 6) + "CONDUCTIVITY " + counted(0, 6) + "VISCOSITY 1 2 none 4 5 6");
  CIdG gas(kO2_IDG);
  gas.loadFile("gas");
  EXPECT_EQ(gas.coefficients().mu[1], 2);
  for (int i = 2; i < 6; ++i) EXPECT_EQ(gas.coefficients().mu[i], kO2_IDG.mu[i]);
}

#ifndef _WIN32
TEST_F(FluidFiles, MissingSectionKeepsTheReaderWaiting) {
  write_source("no_key", "FLUID_CONSTANTS a 1 b 2 c 3 d 4 e 5 f 6 g 7 SPEC_HEAT " + counted(0, 6));
  write_source("no_number", "FLUID_CONSTANTS a 1 b x SPEC_HEAT CONDUCTIVITY VISCOSITY");
  for (const char* name : {"no_key", "no_number"}) {
    EXPECT_EXIT((alarm(1), CIdG().loadFile(name)), ::testing::KilledBySignal(SIGALRM), "") << name;
  }
}
#endif

}  // namespace
}  // namespace Vk_fl_prop_lib
