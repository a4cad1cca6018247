// `tessera run` as a child process, mostly with the mock unit.

#include <signal.h>

#include <algorithm>
#include <tuple>

#include "test_support.h"

namespace runner_test {
namespace {

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST_F(ProgramTest, DefaultsComeFromTheDescription) {
  const Outcome outcome = tessera({"run", "mock.fmu", "--quiet"});
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_EQ(outcome.errors, "");
  const std::string csv = read("results.csv");
  EXPECT_EQ(
      csv.substr(0, csv.find('\n')),
      R"("time","clock","inlet.pressure","steps","longest_step","inlet.is_open","shortest_step","last_write","inlet.temperature")");
  EXPECT_TRUE(contains(csv, "\n0,0,7,0,0,0,0,0,20\n"));
  EXPECT_FALSE(contains(csv, "\r"));
  const Table table = results();
  ASSERT_EQ(table.rows.size(), 7U);
  EXPECT_EQ(table.at(1, "time"), "0.5");
  EXPECT_EQ(table.last("time"), "3");
  for (const char* part :
       {"rows            7\n", "results.csv\n", "simulated time  3 s\n", "state           finished\n"}) {
    EXPECT_TRUE(contains(outcome.output, part)) << outcome.output;
  }
}

TEST_F(ProgramTest, LastRowIsAtTheStopTime) {
  ASSERT_EQ(tessera({"run", "mock.fmu", "--stop-time", "1.234", "--output-interval", "0.5"}).code, 0);
  EXPECT_EQ(results().rows.size(), 4U);
  EXPECT_EQ(results().last("time"), "1.234");
}

TEST_F(ProgramTest, StepsAreAtMostOneSecondAndEndWhereAChangeFalls) {
  ASSERT_EQ(tessera({"run", "mock.fmu", "--stop-time=20", "--output-interval=10"}).code, 0);
  EXPECT_EQ(results().last("steps"), "20");
  EXPECT_EQ(results().last("longest_step"), "1");

  ASSERT_EQ(tessera({"run", "mock.fmu", "--stop-time=20", "--output-interval=10", "--set-at",
                     "2.25:inlet.pressure_set=3", "--set-at", "0:inlet.pressure_set=2"})
                .code,
            0);
  const Table table = results();
  ASSERT_EQ(table.rows.size(), 3U);
  EXPECT_EQ(table.at(1, "steps"), "11");  // 0 1 2 2.25 3.25 ... 9.25 10
  EXPECT_EQ(table.last("shortest_step"), "0.25");
  EXPECT_NEAR(std::stod(table.last("last_write")), 2.25, 1e-9);
  EXPECT_EQ(table.at(0, "inlet.pressure"), "7");  // a change at 0 comes after the first row
  EXPECT_EQ(table.last("inlet.pressure"), "3");
}

TEST_F(ProgramTest, ALongRunStaysAtTheUnitsClock) {
  const Outcome outcome = tessera({"run", "mock.fmu", "--stop-time=20000", "--output-interval=10000", "--quiet"});
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
}

TEST_F(ProgramTest, SettingAParameterOpensItsGate) {
  const struct {
    std::vector<std::string> arguments;
    const char *pressure, *is_open;
  } cases[] = {
      {{"--start-value", "inlet.pressure_set=3"}, "3", "1"},
      {{"--start-value", "10 = 3"}, "3", "1"},
      {{"--start-value", "inlet.pressure_set=3", "--keep-gates"}, "7", "0"},
      {{"--start-value", "inlet.pressure_set=3", "--start-value", "gate0=false"}, "7", "0"},
      {{"--start-value", "gate0=1"}, "1.5", "1"},
      {{"--set-at", "1:inlet.pressure_set=3"}, "3", "1"},
      {{"--set-at", "1:inlet.pressure_set=3", "--keep-gates"}, "7", "0"},
      {{"--set-at", "1:10=3", "--set-at", "2:inlet.pressure_gate=0"}, "7", "0"},
  };
  for (const auto& c : cases) {
    std::vector<std::string> arguments = {"run", "mock.fmu"};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    const Outcome outcome = tessera(arguments);
    ASSERT_EQ(outcome.code, 0) << outcome.errors;
    EXPECT_EQ(results().last("inlet.pressure"), c.pressure) << c.arguments[1];
    EXPECT_EQ(results().last("inlet.is_open"), c.is_open) << c.arguments[1];
  }
}

TEST_F(ProgramTest, ValuesMayCarryAUnit) {
  const Outcome outcome = tessera({"run", "mock.fmu", "--quiet", "--start-value", "inlet.pressure_set=98kPa",
                                   "--start-value", "inlet.temperature_set=300 K"});
  ASSERT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_EQ(results().last("inlet.pressure"), "0.98");
  EXPECT_NEAR(std::stod(results().last("inlet.temperature")), 300 - 273.15, 1e-12);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_TRUE(contains(tessera({"run", "mock.fmu", "--start-value", "10=-1"}).errors, "outside the described range"));
}

TEST_F(ProgramTest, OutputsAreChosenByPatternInTheOrderOfTheDescription) {
  ASSERT_EQ(tessera({"run", "--output-variable", "steps", "--output-variable", "inlet.*e", "mock.fmu"}).code, 0);
  EXPECT_EQ(results().names,
            (std::vector<std::string>{"\"time\"", "\"inlet.pressure\"", "\"steps\"", "\"inlet.temperature\""}));
}

TEST_F(ProgramTest, AnErrorOfTheUnitEndsTheRunAndKeepsItsRows) {
  write("results.csv", "old");
  const Outcome outcome = tessera({"run", "mock.fmu", "--start-value", "error_time=1.7"});
  EXPECT_EQ(outcome.code, 3);
  EXPECT_TRUE(contains(outcome.errors, "[error] the pump is blocked at 1.5 s"));
  EXPECT_TRUE(
      contains(outcome.errors, "tessera: fmi2DoStep from 1.5 s to 2 s answered fmi2Error: the pump is blocked"));
  EXPECT_TRUE(contains(outcome.output, "stopped by an error of the unit at 1.5 s of 3 s"));
  EXPECT_EQ(results().last("time"), "1.5");
  EXPECT_FALSE(exists("results.csv.part"));

  // An error that the unit tells only when it is freed counts as well.
  EXPECT_EQ(tessera({"run", "mock.fmu", "--start-value", "is_broken_at_release=1"}).code, 3);
  EXPECT_EQ(results().last("time"), "3");
}

TEST_F(ProgramTest, ANonFiniteOutputEndsTheRunUnlessAllowed) {
  const Outcome outcome = tessera({"run", "mock.fmu", "--start-value", "nan_time=0.9"});
  EXPECT_EQ(outcome.code, 4);
  EXPECT_TRUE(contains(outcome.errors, "tessera: inlet.pressure is nan at 1 s"));
  EXPECT_EQ(results().last("time"), "1");
  EXPECT_EQ(tessera({"run", "mock.fmu", "--start-value", "nan_time=0.9", "--allow-non-finite"}).code, 0);
  EXPECT_EQ(results().last("time"), "3");
  EXPECT_EQ(results().last("inlet.pressure"), "nan");
}

TEST_F(ProgramTest, SignalsEndTheRunAndKeepItsRows) {
  for (const auto& [signal, code, state] :
       {std::tuple{SIGINT, 130, "cancelled"}, std::tuple{SIGTERM, 143, "terminated"}}) {
    const Outcome outcome = tessera_with_signal(
        signal, {"run", "mock.fmu", "--stop-time=100", "--output-interval=1", "--start-value=delay=0.02"});
    EXPECT_EQ(outcome.code, code);
    EXPECT_TRUE(contains(outcome.output, "state           " + std::string(state))) << outcome.output;
    const std::size_t rows = results().rows.size();
    EXPECT_GT(rows, 10U);
    EXPECT_LT(rows, 101U);
    EXPECT_EQ(results().last("time"), std::to_string(rows - 1));
    EXPECT_FALSE(exists("results.csv.part"));
    std::filesystem::remove(path("results.csv"));
  }
}

TEST_F(ProgramTest, AFullDiskKeepsTheOldResultsAndTheWholeRowsOfTheNew) {
  write("results.csv", "old");
  const Outcome outcome =
      tessera_with_file_limit(1'500'000, {"run", "mock.fmu", "--stop-time=60", "--output-interval=0.001", "--quiet"});
  EXPECT_EQ(outcome.code, 5);
  EXPECT_TRUE(contains(outcome.errors, "cannot write 'results.csv.part': File too large"));
  EXPECT_EQ(read("results.csv"), "old");
  const std::string part = read("results.csv.part");
  EXPECT_GT(part.size(), 1'400'000U);
  EXPECT_EQ(part.back(), '\n');
  EXPECT_TRUE(
      contains(outcome.output, "rows            " + std::to_string(std::count(part.begin(), part.end(), '\n') - 1)));
}

TEST_F(ProgramTest, ARunThatCannotBeginLeavesTheOldResults) {
  write("results.csv", "old");
  pack("other.fmu", {{"modelDescription.xml", mock_description("{mock}", "{other}")},
                     {"binaries/linux64/mock.so", file_content(MOCK_UNIT)}});
  const Outcome outcome = tessera({"run", "other.fmu"});
  EXPECT_EQ(outcome.code, 3);
  EXPECT_TRUE(contains(outcome.errors, "tessera: fmi2Instantiate refused: wrong GUID"));
  EXPECT_EQ(read("results.csv"), "old");
  EXPECT_FALSE(exists("results.csv.part"));
}

TEST_F(ProgramTest, MessagesFollowTheLogLevel) {
  const Outcome loud = tessera({"run", "mock.fmu", "--quiet", "--log-level", "info"});
  EXPECT_TRUE(contains(loud.errors, "[info] step of 0.5 s\n"));
  const Outcome filed = tessera(
      {"run", "mock.fmu", "--quiet", "--log-level", "info", "--log-file", "log", "--start-value", "error_time=1.7"});
  EXPECT_FALSE(contains(filed.errors, "[info]"));
  EXPECT_TRUE(contains(filed.errors, "[error]"));
  EXPECT_TRUE(contains(read("log"), "[info] step of 0.5 s\n"));
  EXPECT_TRUE(contains(read("log"), "[error] the pump"));
}

TEST_F(ProgramTest, ProgressIsALineEveryTenPercentOffATerminal) {
  const std::string errors = tessera({"run", "mock.fmu", "--stop-time=100"}).errors;
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 10);
  EXPECT_TRUE(contains(errors, " 10 %, 10 of 100 s"));
}

TEST_F(ProgramTest, BadCommandLinesAreRefusedInOneLine) {
  const struct {
    std::vector<std::string> arguments;
    int code;
    const char* message;
  } cases[] = {
      {{}, 2, "subcommand"},
      {{"run", "--colour"}, 2, "--colour"},
      {{"run", "none.fmu"}, 5, "none.fmu: no such file"},
      {{"run", "mock.fmu", "--stop-time", "soon"}, 2, "'soon' is no number of seconds"},
      {{"run", "mock.fmu", "--output-interval", "0.0014"}, 2, "the nearest valid time is 0.001 s"},
      {{"run", "mock.fmu", "--set-at", "3:10=1"}, 2, "the run ends at 3 s"},
      {{"run", "mock.fmu", "--set-at", "10=1"}, 2, "write it as TIME:NAME=VALUE"},
      {{"run", "mock.fmu", "--set-at", "1:error_time=2"}, 2, "error_time cannot change during the run"},
      {{"run", "mock.fmu", "--start-value", "inlet.presure_set=1"}, 2, "did you mean 'inlet.pressure_set'"},
      {{"run", "mock.fmu", "--start-value", "10=high"}, 2, "the value is no finite number"},
      {{"run", "mock.fmu", "--start-value", "10=nan"}, 2, "the value is no finite number"},
      {{"run", "mock.fmu", "--start-value", "10=3 K"}, 2, "'K' is no unit of this variable; it takes bar, kPa, mbar"},
      {{"run", "mock.fmu", "--start-value", "gate0=2"}, 2, "the value of a Boolean is 0, 1, true or false"},
      {{"run", "mock.fmu", "--start-value", "steps=2"}, 2, "steps cannot be set, its causality is output"},
      {{"run", "mock.fmu", "--output-variable", "stpes"}, 2, "matches no output; did you mean 'steps'"},
      {{"run", "mock.fmu", "--output-file", "none/r.csv"}, 5, "cannot write 'none/r.csv.part': No such file"},
      {{"run", "mock.fmu", "--output-file", "temporary"}, 5, "it is a folder"},
      {{"run", "mock.fmu", "--output-file", "mock.fmu"}, 2, "is the unit itself"},
      {{"run", "mock.fmu", "--log-level", "loud"}, 2, "--log-level"},
      {{"info", "mock.fmu", "--filter", "stpes"}, 2, "did you mean 'steps'"},
  };
  for (const auto& c : cases) {
    const Outcome outcome = tessera(c.arguments);
    EXPECT_EQ(outcome.code, c.code) << c.message;
    EXPECT_EQ(outcome.errors.substr(0, 9), "tessera: ");
    EXPECT_TRUE(contains(outcome.errors, c.message)) << outcome.errors;
    EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
  }
}

}  // namespace
}  // namespace runner_test
