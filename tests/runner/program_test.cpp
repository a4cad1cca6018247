// `tessera run` as a child process, with the mock unit.

#include <algorithm>

#include "runner/test_support.h"

namespace {

TEST_F(ProgramTest, RowsAreCsvFromZeroToTheStopTime) {
  const Outcome outcome =
      tessera("run --output-variable steps --output-variable 'inlet.*' mock.fmu --stop-time 1.234 --quiet");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(read("results.csv"),
            "\"time\",\"inlet.temperature\",\"inlet.is_open\",\"steps\"\n"
            "0,20,0,0\n0.5,20,0,1\n1,20,0,2\n1.234,20,0,3\n");
  EXPECT_THAT(
      outcome.output,
      HasSubstr("rows            4\nvariables       3\nfile            results.csv\nsimulated time  1.234 s\n"));
  EXPECT_THAT(outcome.output, HasSubstr("state           finished\n"));
}

TEST_F(ProgramTest, StepsAreAtMostOneSecondAndEndWhereAChangeFalls) {  // the mock unit refuses longer ones
  const std::string command = "run mock.fmu --stop-time=20 --output-interval=10 --keep-gates";
  ASSERT_EQ(tessera(command).code, 0);
  EXPECT_THAT(read("results.csv"), HasSubstr("\n10,20,0,10,0\n20,20,0,20,0\n"));

  ASSERT_EQ(tessera(command + " --set-at 2.25:gate0=1 --set-at 0:3=5").code, 0);
  EXPECT_THAT(read("results.csv"), HasSubstr("\n0,20,0,0,0\n10,5,1,11,2.25\n20,5,1,21,2.25\n"));

  const Outcome outcome = tessera("run mock.fmu --stop-time=40000 --output-interval=20000 --quiet");
  EXPECT_EQ(outcome.code, 0) << outcome.errors;  // the unit's clock, a sum of milliseconds, stays with the runner's
}

TEST_F(ProgramTest, SettingAParameterConvertsItsUnitAndOpensItsGate) {
  const struct {
    const char* arguments;
    double temperature, is_open;
  } cases[] = {{"--start-value inlet.temperature_set=5", 5, 1},
               {"--start-value '3 = 5'", 5, 1},
               {"--start-value 3=5 --keep-gates", 20, 0},
               {"--start-value 3=5 --start-value gate0=false", 20, 0},
               {"--start-value gate0=1", 45, 1},
               {"--set-at 1:inlet.temperature_set=5", 5, 1},
               {"--set-at 1:3=5 --keep-gates", 20, 0},
               {"--set-at 2:inlet.temperature_gate=0 --set-at 1:3=5", 20, 0},
               {"--start-value 3=212degF", 100, 1},
               {"--start-value '3=300 K'", 26.85, 1},
               {"--start-value 3=300000mK", 26.85, 1}};
  for (const auto& c : cases) {
    const Outcome outcome = tessera("run mock.fmu --quiet --output-variable 'inlet.*' " + std::string(c.arguments));
    EXPECT_EQ(outcome.code, 0) << c.arguments;
    EXPECT_EQ(outcome.errors, "");
    const std::vector<double> expected = {3.0, c.temperature, c.is_open};
    EXPECT_THAT(last_row(), ::testing::Pointwise(::testing::DoubleNear(1e-9), expected)) << c.arguments;
  }
  EXPECT_THAT(tessera("run mock.fmu --start-value 3=-300").errors, HasSubstr("outside the described range"));
}

TEST_F(ProgramTest, WhateverEndsARunItKeepsItsRows) {
  const struct {
    const char* start;
    int code;
    const char *message, *state;
    double last_time;
  } cases[] = {{"fail_at=1.7", 3, "tessera: fmi2DoStep from 1.5 s to 2 s answered fmi2Error: the pump is blocked",
                "stopped by an error of the unit at 1.5 s of 3 s", 1.5},
               {"bad_end=1", 3, "block 7 was out of range", "stopped by an error of the unit at 3 s", 3},
               {"nan_at=0.9 --start-value bad_end=1", 4, "tessera: inlet.temperature is nan at 1 s",
                "stopped by a non-finite output", 1},
               {"nan_at=0.9 --allow-non-finite", 0, "", "finished", 3},
               {"signal=2", 130, "tessera: cancelled at 0.5 s", "cancelled at 0.5 s of 3 s", 0.5},
               {"signal=15", 143, "tessera: terminated at 0.5 s", "terminated at 0.5 s of 3 s", 0.5},
               {"bad_end=0 --timeout 1e-9", 124, "tessera: timed out at 0 s", "timed out at 0 s of 3 s", 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.start);
    write("results.csv", "old");
    const Outcome outcome = tessera("run mock.fmu --start-value " + std::string(c.start));
    EXPECT_EQ(outcome.code, c.code);
    EXPECT_THAT(outcome.errors, HasSubstr(c.message));
    EXPECT_THAT(outcome.output, HasSubstr("state           " + std::string(c.state)));
    EXPECT_EQ(last_row().at(0), c.last_time);
    EXPECT_FALSE(exists("results.csv.part"));
  }
}

TEST_F(ProgramTest, AWriteErrorKeepsTheOldResultsAndTheWholeRowsOfTheNew) {
  write("results.csv", "old");
  const Outcome outcome =
      tessera("run mock.fmu --stop-time=200 --output-interval=0.001 --quiet", "ulimit -f 2200");  // of 512 bytes
  EXPECT_EQ(outcome.code, 5);
  EXPECT_EQ(outcome.errors, "tessera: cannot write 'results.csv.part': File too large\n");
  EXPECT_EQ(read("results.csv"), "old");
  EXPECT_FALSE(exists("results.meta.json") || exists("results.meta.json.part"));
  const std::string part = read("results.csv.part");
  ASSERT_GT(part.size(), 1'120'000U);
  EXPECT_EQ(part.back(), '\n');
  const auto rows = std::count(part.begin(), part.end(), '\n') - 1;
  EXPECT_THAT(outcome.output, HasSubstr("rows            " + std::to_string(rows) + "\n"));
}

TEST_F(ProgramTest, MessagesFollowTheLogLevel) {
  const std::string info = "run mock.fmu --quiet --log-level info ";
  EXPECT_THAT(tessera(info).errors, HasSubstr("[info] step of 0.5 s\n"));
  const Outcome filed = tessera(info + "--log-file log --start-value fail_at=1.7");
  EXPECT_THAT(filed.errors, Not(HasSubstr("[info]")));
  EXPECT_THAT(filed.errors, HasSubstr("[error] the pump"));
  EXPECT_THAT(read("log"), HasSubstr("[info] step of 0.5 s\n[error] the pump"));
}

TEST_F(ProgramTest, BadCommandLinesAreRefusedInOneLine) {
  expect_refusal("", 2, "subcommand");
  expect_refusal("info mock.fmu --filter stpes", 2, "did you mean 'steps'");
  expect_refusal("info mock.fmu --filter steps --causality parameter", 2,
                 "'steps': matches no parameter of the unit\n");
  expect_refusal("run none.fmu", 5, "none.fmu: no such file");
  const struct {
    const char* arguments;
    int code;
    const char* message;
  } cases[] = {
      {"--stop-time soon", 2, "--stop-time: 'soon' is no number of seconds"},
      {"--stop-time 1e10", 2, "--stop-time: 1e10 s is outside the range from 0 to"},
      {"--stop-time 1.00000001", 2, "is no whole number of milliseconds; the nearest valid time is 1 s"},
      {"--output-interval 0.0016", 2, "is no positive whole number of milliseconds; the nearest valid time is 0.002 s"},
      {"--set-at 3:3=1", 2, "would change nothing, the run ends at 3 s"},
      {"--set-at 1:fail_at=2", 2, "fail_at cannot change during the run"},
      {"--start-value inlet.temprature_set=1", 2,
       "'inlet.temprature_set': the unit has no such variable; did you mean 'inlet.temperature_set'"},
      {"--start-value 3=high", 2, "'inlet.temperature_set=high': the value is no finite number"},
      {"--start-value 3=3s", 2, "'s' is no unit of this variable; it takes degC, mK, degF, K"},
      {"--start-value gate0=2", 2, "the value of a Boolean is 0, 1, true or false"},
      {"--start-value steps=2", 2, "steps cannot be set, its causality is output"},
      {"--output-variable stpes", 2, "matches no output; did you mean 'steps'"},
      {"--output-file none/r.csv", 5, "cannot write 'none/r.csv': there is no folder 'none'"},
      {"--output-file ''", 5, "cannot write '': no name of a file"},
      {"--output-file mock.fmu", 2, "'mock.fmu' is the unit itself"},
      {"--log-file ./results.csv.part", 2, "'./results.csv.part' is where the results go; give the log another name"},
      {"--log-file none/log", 5, "cannot write the log file 'none/log': No such file"},
  };
  for (const auto& c : cases) expect_refusal("run mock.fmu " + std::string(c.arguments), c.code, c.message);
}

}  // namespace
