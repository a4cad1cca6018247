// Coefficient vectors from table files, and fluids from source files. The tests write the files.

#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "Vk_lib/Vk_fl_prop_lib/fluid_tables.h"
#include "fluids/fluid_test.h"

namespace Vk_fl_prop_lib {
namespace {

namespace fs = std::filesystem;
using Numbers = std::vector<double>;

/// first + 0.5, first + 1.5, ...
Numbers series(int first, int count) {
  Numbers numbers(static_cast<std::size_t>(count));
  std::iota(numbers.begin(), numbers.end(), first + 0.5);
  return numbers;
}

/// Numbers as they stand in a file.
std::string text(const auto& numbers, const char* between = " ") {
  std::string all;
  for (const double number : numbers) {
    char digits[40];
    std::snprintf(digits, sizeof digits, "%.17g", number);
    all += digits + std::string(between);
  }
  return all;
}

/// A working directory with the folders in which the files are looked for.
class FluidFiles : public ::testing::Test {
 protected:
  FluidFiles() {
    fs::create_directories(root / "tables");
    fs::create_directories(root / "work" / "sources");
    fs::current_path(root / "work");
  }
  ~FluidFiles() override {
    fs::current_path(start);
    fs::remove_all(root);
  }

  static void write(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
  }

  /// What a table file gives for a name; msg tells the reason of a failure.
  Numbers read(int type, const char* name, int result = 0) {
    constexpr double kUntouched = -7;
    Numbers coeffs(120, kUntouched);
    msg[0] = '\0';
    EXPECT_EQ(getCoeffs(type, name, coeffs.data(), msg), result) << msg;
    coeffs.erase(std::find(coeffs.begin(), coeffs.end(), kUntouched), coeffs.end());
    return coeffs;
  }

  const fs::path start = fs::current_path();
  const fs::path root = fs::temp_directory_path() / ("fluid_files_" + std::to_string(::getpid()));
  char msg[200] = "";
};

TEST_F(FluidFiles, TablesOfEachType) {
  const struct {
    int type;
    const char* file;
    int values;
  } tables[] = {{0, "aeration.fdb", 60}, {1, "brines.fdb", 97}, {2, "liquids.fdb", 31},
                {3, "gasIDG.fdb", 25},   {5, "refrig.fdb", 61}, {6, "moistAir.fdb", 10}};
  for (const auto& [type, file, n] : tables) {
    write(std::string("../tables/") + file,
          "#one word\n# two\twords\n#\n\n#last\r\nA more of the field\tsecond field, 3 words\t" +
              text(series(0, n), "\t\n") + "\r\nO2_IDG\t\t" + text(series(200, n)) + "\n#B\t\t" + text(series(400, n)) +
              "\nC\tx\t" + text(series(600, n)));
    EXPECT_EQ(read(type, "A"), series(0, n));
    EXPECT_EQ(read(type, "o2_idg"), series(200, n));
    EXPECT_EQ(read(type, "#b"), series(400, n));  // no comment any more
    EXPECT_EQ(read(type, "C"), series(600, n));   // the file ends without a line end
  }
}

TEST_F(FluidFiles, NumbersOfTables) {
  write("../tables/moistAir.fdb", "Short\t\t" + text(series(0, 8)) + "\n8.5\t9.5\t1\nNamed\t\t1 2 3\nNext\t\t4 5\n" +
                                      "Huge\t\t1 1e999 3\nLong\t\t2 " + std::string(600, '0') + "1 3\n" +
                                      "Forms\t\t+1.25 -.5 3. 4e+2 5E-1 6 1,5\n");
  EXPECT_EQ(read(6, "Short"), series(0, 10));  // takes words of the next line
  EXPECT_EQ(read(6, "Named"), Numbers({1, 2, 3}));
  EXPECT_EQ(read(6, "Huge"), Numbers({1}));
  EXPECT_EQ(read(6, "Long"), Numbers({2}));
  for (const char* locale : {"C", "de_DE.UTF-8", "fr_FR.UTF-8"}) {  // where installed; it does not count
    std::setlocale(LC_NUMERIC, locale);
    EXPECT_EQ(read(6, "Forms"), Numbers({1.25, -0.5, 3, 400, 0.5, 6, 1})) << locale;
  }
  std::setlocale(LC_NUMERIC, "C");
}

TEST_F(FluidFiles, FailuresSayWhatIsMissing) {
  for (const int type : {7, -1, 4, 3}) {
    EXPECT_EQ(read(type, "A", 1), Numbers());
    EXPECT_EQ(msg, type == 4   ? ""
                   : type == 3 ? "The source file of type=3 can not be opened!"
                               : "The fluid type=" + std::to_string(type) + " is not found!");
  }
  for (const char* content : {"", "#", "# only comments\n", "B\t\t1 2 3", "AB\t\t1\nA_\t\t1\n\n \n"}) {
    write("../tables/gasIDG.fdb", content);
    EXPECT_EQ(read(3, "A", 1), Numbers());
    EXPECT_STREQ(msg, "The fluid A is not in source file!");
  }
}

TEST_F(FluidFiles, SourceFilesFillTheVectorInItsOrder) {
  const auto in_order = [](const auto& vector) { return Numbers(vector.begin(), vector.end()); };
  write("sources/gas", "A gas. FLUID_CONSTANTS\nM .5 tMin[K] 1.5 tMax 2.5 p 3.5 T 4.5 h 5.5 s 6.5\ncp SPEC_HEAT " +
                           text(series(7, 6)) + "\nCONDUCTIVITY_ no CONDUCTIVITY\n" + text(series(13, 6), "\r\n") +
                           " VISCOSITY " + text(series(19, 6)));
  CIdG gas;
  gas.loadFile("gas");
  gas.loadFile("nothing");  // or a folder, or too long a path: the fluid stays as it is
  gas.loadFile(".");
  gas.loadFile(std::string(5000, 'x').c_str());
  EXPECT_EQ(in_order(values(gas.coefficients())), series(0, 25));

  write("sources/oil", "FLUID_CONSTANTS K 2 a 1.5 b 2.5 c 3.5 d 4.5 e 5.5 f 6.5 DENSITY " + text(series(7, 6)) +
                           " SPEC_HEAT " + text(series(13, 6)) + " CONDUCTIVITY " + text(series(19, 6)) +
                           " VISCOSITY " + text(series(25, 5)) + "none");
  CLiquide oil(kOil);
  oil.loadFile("oil");  // has the bulk modulus, 2; what can not be read stays
  EXPECT_EQ(oil.coefficients().mu[5], kOil.mu[5]);
  EXPECT_EQ(Numbers(&oil.coefficients().kappa, &oil.coefficients().mu[5]), series(0, 30));

  write("some:where", "FLUID_CONSTANTS K 2e9 COEFFICIENTS " + text(series(0, 90), "\n") +
                          " REFERENCE 40 280 1e5 LIMITS_CONCENTRATION 10 60\n");
  CBrine f(33.0);
  f.loadFile("some:where");  // a name with a colon is a path as it stands
  const BrineVector& c = f.coefficients();
  for (int i = 0; i < 90; ++i) EXPECT_EQ(c.c[i % 5][i / 5], i + 0.5);
  EXPECT_EQ(Numbers({c.kappa, c.concRef, c.tRef, c.pRef, c.cMin, c.cMax}), Numbers({5e-10, 40, 280, 1e5, 10, 60}));
  EXPECT_EQ(c.conc, 33);  // not in the file

  write("sources/air", "FLUID_CONSTANTS Ma 0.03 Mw 0.02 p 1 T 2 h 5000 s 700 SPEC_HEAT 3 4 SATURATION_LINE 5 6 7");
  CAirHumide air;
  air.SetFluidState(1);
  air.loadFile("air");
  EXPECT_EQ(air.hTW(273.15, 0, 1e5, 0), 5000);
  EXPECT_DOUBLE_EQ(air.sTWP(273.15, 0, 101325, 0), 700);
  EXPECT_DOUBLE_EQ(air.vTW(300, 0, 1e5, 0), 8.31451 * 300 / (0.03 * 1e5));
  EXPECT_EQ(air.Get_M(), 0.02);
}

#ifndef _WIN32  // which has no alarm
TEST_F(FluidFiles, MissingSectionKeepsTheReaderWaiting) {
  write("sources/no_key", "FLUID_CONSTANTS a 1 b 2 c 3 d 4 e 5 f 6 g 7 SPEC_HEAT 1 2 3 4 5 6");
  write("sources/no_number", "FLUID_CONSTANTS a 1 b x SPEC_HEAT CONDUCTIVITY VISCOSITY");
  for (const char* name : {"no_key", "no_number"}) {
    EXPECT_EXIT((alarm(1), CIdG().loadFile(name)), ::testing::KilledBySignal(SIGALRM), "") << name;
  }
}
#endif

}  // namespace
}  // namespace Vk_fl_prop_lib
