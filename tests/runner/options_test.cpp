// Options of `tessera run` from a file, what they do, and the completion of the command line.

#include <nlohmann/json.hpp>

#include "runner/test_support.h"

namespace {

TEST_F(ProgramTest, AConfigurationFileGivesOptionsAndTheCommandLineComesFirst) {
  const std::string head =
      "unit = 'mock.fmu'\nstop-time = 2\noutput-interval = 0.25\nquiet = true\noutput-variable = ['inlet.*']\n";
  const struct {
    const char *config, *arguments, *rows;
  } cases[] = {
      {"start-value = {inlet.temperature_set = '5degC'}\n", "--output-interval 1", "0,5,1\n1,5,1\n2,5,1\n"},
      {"[start-value]\n'3' = 5\n[[set-at]]\ntime = 0.1\nname = 'inlet.temperature_gate'\nvalue = false\n", "",
       "0,5,1\n0.25,20,0\n"},
      {"[start-value]\ninlet.temperature_set = 5\ninlet.temperature_gate = false\n", "", "0,20,0\n"},  // in this order
      {"[start-value]\ninlet.temperature_gate = false\ninlet.temperature_set = 5\n", "", "0,5,1\n"},
      {"keep-gates = true\nstart-value = {3 = 5}\n", "", "0,20,0\n"},
      {"start-value = {3 = 5}\n", "--start-value gate0=0", "0,20,0\n"},
      {"start-value = {3 = 5}\n", "--output-variable steps", "0,0\n0.25,1\n"},
  };
  for (const auto& c : cases) {
    write("run.toml", head + c.config);
    const Outcome outcome = tessera("run --config run.toml " + std::string(c.arguments));
    EXPECT_EQ(outcome.code, 0) << c.config << outcome.errors;
    EXPECT_THAT(read("results.csv"), HasSubstr(std::string("\n") + c.rows)) << c.config;
  }
}

TEST_F(ProgramTest, AMistakeInAConfigurationFileIsToldWithItsLine) {
  std::string long_key = "b", deep = "1";  // tables in tables, beyond what recursion bears
  for (int i = 0; i < 1000; ++i) long_key += ".b";
  for (int i = 0; i < 250; ++i) deep = "{" + long_key + " = " + deep + "}";
  for (const auto& [config, message] : std::map<std::string, std::string>{
           {"stop-time = 1\nstop_tme = 2\n", "line 2: 'stop_tme': unknown key; did you mean 'stop-time'"},
           {"stop-time = 'soon'", "line 1: 'stop-time': needed is a number of seconds, not a string"},
           {"\nquiet = 1", "line 2: 'quiet': needed is true or false, not a whole number"},
           {"output-variable = ['a', 2]", "line 1: 'output-variable': needed is an array of strings alone"},
           {"log-level = 'loud'", "line 1: 'log-level': 'loud' is not one of error, warning, info, debug"},
           {"rtol = -1.0", "line 1: 'rtol': needed is a number of at least 0"},
           {"[start-value]\n3 = 2020-01-01", "line 2: '3': needed is a number, a boolean, or a string such as"},
           {"start-value = 3", "line 1: 'start-value': needed is a table of NAME = VALUE, not a whole number"},
           {"[set-at]\ntime = 1", "line 1: 'set-at': needed is a list of tables"},
           {"[[set-at]]\ntime = 1\nvariable = 'a'", "line 3: 'variable': unknown key"},
           {"[[set-at]]\ntime = 1\nname = 'a'", "line 1: 'set-at': needed are time, name and value"},
           {"a = 1\nb = = 2", "line 2: "},
           {"a = 1\nb = " + deep, "line 2: a key of more than 20 dots"},
           {"# ä\na = \"\"\"ü'\n\"\\\".\"\"\"\nb = 'é' # '\nä = 2",
            "line 5: a letter that only a string or a comment may have"}}) {
    write("run.toml", config);
    expect_refusal("run mock.fmu --config run.toml", 2, "run.toml: " + message);
  }
  expect_refusal("run mock.fmu --config none.toml", 5, "cannot read 'none.toml': No such file");
}

TEST_F(ProgramTest, RowsAndStatisticsBeginWhereRecordingDoes) {
  const std::string command = "run mock.fmu --quiet --show-stats --output-variable inlet.temperature --set-at 1:3=5 ";
  // Between the rows the value is a line: 20 for 1 s, half a second to 5, and 5 for 1.5 s.
  EXPECT_THAT(tessera(command).output, ::testing::ContainsRegex("\ninlet.temperature +5 +20 +11\\.25 +5  degC\n$"));
  EXPECT_THAT(tessera(command + "--record-from 1.2").output, ::testing::ContainsRegex("ature +5 +5 +5 +5  degC\n$"));
  EXPECT_EQ(read("results.csv"), "\"time\",\"inlet.temperature\"\n1.5,5\n2,5\n2.5,5\n3,5\n");
  EXPECT_THAT(tessera(command + "--record-from 3").output, ::testing::ContainsRegex("rows +1\n"));
  expect_refusal(command + "--record-from 4", 2, "--record-from: 4 s would leave no row, the run ends at 3 s");
  expect_refusal(command + "--timeout 0", 2, "--timeout: '0' is no positive number of seconds");
}

TEST_F(ProgramTest, ProgressIsToldAsJson) {
  const Outcome outcome = tessera("run mock.fmu --stop-time 2000 --progress=json");
  std::istringstream lines(outcome.errors);
  double last = 0.0;
  for (std::string line; std::getline(lines, line);) {
    const auto update = nlohmann::json::parse(line);
    EXPECT_GT(update["time"], last);
    last = update["time"];
    EXPECT_DOUBLE_EQ(update["fraction"], last / 2000);
  }
  EXPECT_EQ(last, 2000);
  EXPECT_EQ(tessera("run mock.fmu --progress=none").errors, "");
}

TEST_F(ProgramTest, BashCompletesTheCommandLine) {
  const struct {
    const char *words, *expected;  ///< the last word is being completed
  } cases[] = {{"tessera va", "validate "},
               {"tessera run --output-", "--output-interval --output-variable --output-file "},
               {"tessera run --log-level ''", "error warning info debug "},
               {"tessera run --progress = j", "json "},
               {"tessera run --stop-time ''", ""},
               {"tessera run m", "mock.fmu "},
               {"tessera run --quiet --config com", "completion.bash "},
               {"tessera run mock.fmu --start-value inlet.", "inlet.temperature_set= inlet.temperature_gate= "},
               {"tessera run mock.fmu --output-variable s", "steps "},
               {"tessera completion z", "zsh "}};
  const std::string script = tessera("completion bash").output;
  for (const auto& c : cases) {
    write("completion.bash", script + "tessera() { '" TESSERA_PROGRAM "' \"$@\"; }\nCOMP_WORDS=(" + c.words +
                                 ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_tessera\n"
                                 "[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s ' \"${COMPREPLY[@]}\"\n");
    ASSERT_EQ(std::system(("cd '" + path("").string() + "' && bash completion.bash >proposals").c_str()), 0);
    EXPECT_EQ(read("proposals"), c.expected) << c.words;
  }
}

TEST_F(ProgramTest, EachCommandShowsExamplesOfItself) {
  std::istringstream lines(tessera("completion fish").output);
  int commands = 0;
  for (std::string line, start = "complete -c tessera -n __fish_use_subcommand -a "; std::getline(lines, line);) {
    if (!line.starts_with(start)) continue;
    const std::string command = line.substr(start.size(), line.find(' ', start.size()) - start.size());
    EXPECT_THAT(tessera(command + " --help").output, ::testing::ContainsRegex("\nExamples:\n.*tessera " + command));
    ++commands;
  }
  EXPECT_GE(commands, 7);
}

}  // namespace
