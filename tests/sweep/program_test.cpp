// tessera-sweep as a child process, alone and under mpirun.

#include <set>

#include "apps/sweep/table.h"
#include "runner/test_support.h"

namespace {

class SweepTest : public ProgramTest {
 protected:
  using Cells = std::vector<std::vector<std::string>>;

  SweepTest() {
    for (const char* allowed : {"OMPI_ALLOW_RUN_AS_ROOT", "OMPI_ALLOW_RUN_AS_ROOT_CONFIRM"}) setenv(allowed, "1", 1);
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // the MPI library keeps memory to its end
  }

  static std::string alone(const std::string& arguments) { return SWEEP_PROGRAM " --quiet " + arguments; }
  static std::string on_two(const std::string& arguments) { return MPIRUN " --oversubscribe -n 3 " + alone(arguments); }

  Outcome shell(const std::string& command) const {
    const int status = std::system(
        ("cd '" + path("").string() + "' && export TMPDIR=$PWD && (" + command + ") >stdout 2>stderr").c_str());
    return {WEXITSTATUS(status), read("stdout"), read("stderr")};
  }

  Cells table(const std::string& name) const {
    std::istringstream lines(read(name));
    Cells cells;
    for (std::string line; std::getline(lines, line);) cells.push_back(sweep::csv_cells(line));
    return cells;
  }

  static constexpr const char* kShort =
      "[run]\nunit = '" TESSERA_FMU
      "'\nstop-time = 10\nset-at = [{time = 5, name = 'power.demand_set', value = 30}]\n"
      "[grid]\nambient.temperature_set = {from = -10, to = 30, count = 5}\n[sample]\ncount = 6\n"
      "power.demand_set = {from = 5, to = 60}\nambient.pressure_set = {from = 0.8, to = 1.1}\n"
      "[keep]\nstack.power = ['last', 'max']\nstack.voltage = 'last'\nscalars = ['hydrogen_used']\n";
};

TEST_F(SweepTest, PointsThatSurviveAKillEqualThoseRunAlone) {
  write("plan.toml", kShort);
  const std::string sweep = on_two("plan.toml -o out");
  const Outcome killed = shell(sweep +
                               " & until grep -sq ok out/journal.csv; do sleep 0.02; done; sleep 0.5; "
                               "kill -KILL $! $(cat /proc/$!/task/$!/children); wait $!");
  ASSERT_EQ(killed.code, 137) << killed.errors;
  ASSERT_FALSE(exists("out/results.csv")) << "it was killed too late to tell anything";
  const Cells before = table("out/journal.csv");

  const Outcome outcome = shell(sweep);
  ASSERT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_THAT(outcome.output, HasSubstr("points          30 of 30 done"));
  const Cells journal = table("out/journal.csv"), results = table("out/results.csv");
  ASSERT_EQ(results.size(), 31U);
  ASSERT_EQ(journal.size(), 31U) << "a point was played twice";
  EXPECT_TRUE(std::equal(before.begin(), before.end(), journal.begin()));
  EXPECT_TRUE(std::is_permutation(journal.begin(), journal.end(), results.begin()));

  const std::string run = "run " TESSERA_FMU
                          " --quiet --stop-time 10 --set-at 5:power.demand_set=30 "
                          "--output-variable stack.power --output-variable stack.voltage";
  for (const std::size_t point : {1U, 17U, 30U}) {
    const std::vector<std::string>& row = results[point];
    std::string start;
    for (const std::size_t i : {3U, 4U, 5U}) start += " --start-value " + results[0][i] + "=" + row[i];
    ASSERT_EQ(tessera(run + start).code, 0);
    const Cells rows = table("results.csv");
    ASSERT_THAT(rows[0], ::testing::ElementsAre("time", "stack.voltage", "stack.power"));
    double most = 0.0;
    for (std::size_t i = 1; i < rows.size(); ++i) most = std::max(most, std::stod(rows[i][2]));
    EXPECT_EQ(row[0] + row[1], std::to_string(point) + "ok");
    EXPECT_EQ(row[6], rows.back()[2]);
    EXPECT_EQ(std::stod(row[7]), most);
    EXPECT_EQ(row[8], rows.back()[1]);
  }
}

TEST_F(SweepTest, APointThatFailsKeepsItsReasonAndStopsNobody) {
  write("plan.csv", "signal,fail_at,nan_at\n0,9,9\n9,9,9\n0,1.7,9\n19,9,9\n0,9,0.9\n0,9,9\n0,9,9\n");  // 19 is SIGSTOP
  const std::string arguments = "plan.csv -o out --unit mock.fmu --keep steps=last --point-timeout 3 ";
  for (const std::string& command : {on_two(arguments), alone(arguments + "--restart")}) {
    const Outcome outcome = shell(command);
    EXPECT_EQ(outcome.code, 1) << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr("failed          4, 1 crashed, 1 non_finite, 1 time_out, 1 unit_error\n"));
    const Cells rows = table("out/results.csv");
    ASSERT_EQ(rows.size(), 8U);
    for (const std::size_t i : {1U, 6U, 7U}) EXPECT_THAT(rows[i][1] + rows[i][2] + " " + rows[i][6], "ok 6");
    EXPECT_THAT(rows[2][1] + " " + rows[2][2], HasSubstr("crashed the process was ended by signal 9"));
    EXPECT_THAT(rows[3][1] + " " + rows[3][2], HasSubstr("unit_error fmi2DoStep from 1.5 s to 2 s answered fmi2Error"));
    EXPECT_EQ(rows[4][1] + " " + rows[4][2], "time_out no end within 3000 ms");
    EXPECT_THAT(rows[5][1] + " " + rows[5][2], HasSubstr("non_finite inlet.temperature is nan at 1 s"));
    for (const std::size_t i : {2U, 3U, 4U, 5U}) EXPECT_EQ(rows[i][6], "");
  }
  EXPECT_THAT(shell(alone(arguments)).output, HasSubstr("7 of 7 done, 0 of them now"));
  EXPECT_THAT(shell(alone(arguments + "--retry-failed")).output, HasSubstr("7 of 7 done, 4 of them now"));
  EXPECT_EQ(table("out/journal.csv").size(), 12U);
  const Outcome other = shell(alone(arguments + "--stop-time 2"));
  EXPECT_EQ(other.code, 2);
  EXPECT_THAT(other.errors, HasSubstr("holds points of another plan or unit; now '\"stop-time\": \"2\"'"));
}

TEST_F(SweepTest, ASignalEndsItBetweenRows) {
  write("plan.csv", "signal\n0\n19\n0\n");  // the second point hangs
  const std::string sweep = alone("plan.csv -o out --unit mock.fmu --keep steps=last");
  std::filesystem::create_directory(path("out"));
  for (const auto& [name, code] : {std::pair("INT", 130), std::pair("TERM", 143)}) {
    write("out/results.csv", "of an earlier job");
    const Outcome outcome =
        shell("set -m; " + sweep + " & until grep -sq ^1, out/journal.csv; do sleep 0.02; done; sleep 0.1; kill -" +
              name + " $!; wait $!");
    EXPECT_EQ(outcome.code, code);
    EXPECT_THAT(outcome.output, HasSubstr("points          1 of 3 done"));
    EXPECT_FALSE(exists("out/results.csv"));
  }
}

TEST_F(SweepTest, ClosedStreamsLeaveNoMessagesInTheResults) {
  write("plan.csv", "signal\n0\n0\n");
  for (const char* closed : {"2>&-", "<&- >&- 2>&-"}) {
    shell(SWEEP_PROGRAM " plan.csv -o out --restart --unit mock.fmu --keep steps=last " + std::string(closed));
    EXPECT_EQ(table("out/results.csv").size(), 3U) << closed;
    EXPECT_EQ(table("out/journal.csv"), table("out/results.csv")) << closed;
  }
}

TEST_F(SweepTest, BadPlansAreToldBeforeAnythingRuns) {
  const std::string grid = "[grid]\nsignal = [0]\n", keep = "[keep]\nsteps = 'last'\n";
  const struct {
    std::string plan, message;
  } cases[] = {
      {"[grid\n", "p.toml: line 1: "},
      {"[gird]\n", "p.toml: line 1: 'gird': a plan has the tables run, grid, sample and keep; did you mean 'grid'"},
      {"", "the plan varies nothing"},
      {"[grid]\nfail = [1]\n", "line 2: 'grid.fail': the unit has no variable 'fail'; did you mean 'fail_at'"},
      {"[grid]\nsteps = [1]\n", "'grid.steps': steps cannot be set, its causality is output"},
      {"[grid]\nsignal = []\n", "'grid.signal': the list is empty"},
      {"[grid]\nsignal = {from = 1, to = 0, step = 1}\n", "the range is empty or endless: no step of 1 leads from 1"},
      {"[grid]\nsignal = {from = 0, to = 1, count = 2, unit = '1'}\n", "signal = 0 1: '1' is no unit of this variable"},
      {"[grid]\ninlet.temperature_set = ['1 bar']\n", "= 1 bar: 'bar' is no unit of this variable; it takes degC"},
      {grid + "[sample]\ncount = 3\nsignal = {from = 0, to = 1}\n", "'sample.signal': signal is named twice"},
      {grid + "[run]\nstart-value = {signal = 1}\n", "signal is varied and has a start value as well"},
      {grid + "[run]\noutput-file = 'a.csv'\n", "line 4: 'output-file'"},
      {grid + "[keep]\nstep = 'last'\n", "line 4: 'keep.step': the unit has no output 'step'; did you mean 'steps'"},
      {grid + "[keep]\nscalars = ['distance']\n", "made of outputs such as vehicle.distance in km"},
      {grid, "nothing is kept; name outputs in [keep]"},
      {"[sample]\ncount = 4000\nsignal = {from = 0, to = 1}\n[grid]\nfail_at = {from = 1, to = 2, count = 4000}\n",
       "the plan has more than 10000000 points"},
      {"[grid]\nsignal = {from = 1, to = 101, step = 1}\nfail_at = {from = 1, to = 100, count = 100}\n" + keep,
       "the plan has 10100 points; more than 10000 need --yes"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.plan);
    write("p.toml", c.plan);
    const Outcome outcome = shell(alone("p.toml -o out --unit mock.fmu"));
    EXPECT_EQ(outcome.code, 2);
    EXPECT_THAT(outcome.errors, ::testing::AllOf(::testing::StartsWith("tessera-sweep: p.toml"), HasSubstr(c.message)));
    EXPECT_FALSE(exists("out"));
  }
  write("p.csv", "signal,fail_at\n1,2\n1\n");
  EXPECT_THAT(shell(alone("p.csv -o out --unit mock.fmu")).errors, HasSubstr("p.csv: line 3: 1 cells under 2 names"));
  EXPECT_EQ(shell(on_two("p.csv -o out --unit mock.fmu")).code, 2);  // all processes end
  EXPECT_EQ(shell(alone("p.toml -o out --unit mock.fmu --yes --dry-run")).code, 0);
  const std::string help = shell(alone("--help")).output;
  const std::size_t plan = help.find("A plan:\n") + 8;
  write("help.toml", help.substr(plan, help.find("A CSV plan") - plan));
  EXPECT_THAT(shell(alone("help.toml -o out --dry-run --unit " TESSERA_FMU)).output,
              HasSubstr("points          750\n"));
  EXPECT_FALSE(exists("out"));
}

}  // namespace
