// The archive, its description and its binary: what `tessera info` and `tessera validate` say, and which units are
// refused. The last tests use the unit that is shipped.

#include <nlohmann/json.hpp>

#include "test_support.h"

namespace runner_test {
namespace {

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

constexpr const char* kDescription = "modelDescription.xml";
constexpr const char* kBinary = "binaries/linux64/mock.so";

TEST_F(ProgramTest, InfoListsTheVariables) {
  const Outcome table = tessera({"info", "mock.fmu", "--filter", "inlet.pressure*", "--filter", "steps"});
  EXPECT_EQ(table.code, 0);
  EXPECT_TRUE(
      contains(table.output, " 10  inlet.pressure_set   Real     parameter  bar   1.5    pressure of the inlet\n"))
      << table.output;
  EXPECT_TRUE(contains(table.output, "steps"));
  EXPECT_FALSE(contains(table.output, "clock"));

  const auto json = nlohmann::json::parse(tessera({"info", "mock.fmu", "--json"}).output);
  EXPECT_EQ(json["stopTime"], 3.0);
  EXPECT_EQ(json["variables"].size(), 16U);
  EXPECT_EQ(json["variables"][8]["name"], "inlet.pressure_set");
  EXPECT_EQ(json["variables"][8]["start"], 1.5);
  EXPECT_EQ(json["variables"][9]["start"], false);
}

TEST_F(ProgramTest, HelpAndVersionAnswerOnStandardOutput) {
  EXPECT_EQ(tessera({"--version"}).output.substr(0, 8), "tessera ");
  for (const char* command : {"run", "info", "validate"}) {
    const Outcome help = tessera({command, "--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_TRUE(contains(help.output, "Examples:\n  tessera " + std::string(command))) << help.output;
  }
}

TEST_F(ProgramTest, UnusableUnitsAreRefused) {
  const std::string binary = file_content(MOCK_UNIT);
  write("text.fmu", "no archive");
  write("cut.fmu", read("mock.fmu").substr(0, 5000));
  std::string damaged = read("mock.fmu");
  damaged[damaged.find(kBinary) + 200] ^= 1;
  write("damaged.fmu", damaged);
  pack("bare.fmu", {{kBinary, binary}});
  pack("broken.fmu", {{kDescription, "<fmiModelDescription>\n<oops"}, {kBinary, binary}});
  pack("later.fmu", {{kDescription, mock_description("fmiVersion=\"2.0\"", "fmiVersion=\"3.0\"")}, {kBinary, binary}});
  pack("sly.fmu", {{kDescription, mock_description("modelIdentifier=\"mock\"", "modelIdentifier=\"../mock\"")}});
  pack("foreign.fmu", {{kDescription, mock_description()}, {"binaries/win64/mock.dll", "x"}});
  pack("text_binary.fmu", {{kDescription, mock_description()}, {kBinary, "no library"}});
  pack("incomplete.fmu", {{kDescription, mock_description()}, {kBinary, file_content(MOCK_INCOMPLETE)}});
  pack("climbing.fmu", {{kDescription, mock_description()}, {kBinary, binary}, {"a/../../b", "x"}});
  pack("absolute.fmu", {{kDescription, mock_description()}, {kBinary, binary}, {"/etc/b", "x"}});
  pack("link.fmu", {{kDescription, mock_description()}, {kBinary, "/bin/true"}}, kBinary);
  const struct {
    const char *unit, *message;
  } cases[] = {
      {".", "is a folder"},
      {"text.fmu", "is no unit: it is not a zip archive"},
      {"cut.fmu", "the archive is damaged or cut short"},
      {"damaged.fmu", "entry 'binaries/linux64/mock.so': is damaged"},
      {"bare.fmu", "the archive has no modelDescription.xml"},
      {"broken.fmu", "modelDescription.xml is not well-formed: line 2"},
      {"later.fmu", "FMI version '3.0'"},
      {"sly.fmu", "modelIdentifier=\"../mock\" is no identifier"},
      {"foreign.fmu", "it has binaries for: win64"},
      {"text_binary.fmu", "cannot be loaded"},
      {"incomplete.fmu", "does not export fmi2CancelStep"},
      {"climbing.fmu", "entry 'a/../../b' leads out of the archive"},
      {"absolute.fmu", "entry '/etc/b' leads out of the archive"},
      {"link.fmu", "is a link"},
  };
  for (const auto& c : cases) {
    const Outcome outcome = tessera({"run", c.unit});
    EXPECT_EQ(outcome.code, 5) << c.unit;
    EXPECT_EQ(outcome.errors.substr(0, 9), "tessera: ");
    EXPECT_TRUE(contains(outcome.errors, c.message)) << outcome.errors;
    EXPECT_FALSE(exists("results.csv") || exists("results.csv.part")) << c.unit;
  }
}

TEST_F(ProgramTest, ValidateNamesEveryProblem) {
  const Outcome sound = tessera({"validate", "mock.fmu"});
  EXPECT_EQ(sound.code, 0) << sound.output;
  EXPECT_TRUE(contains(sound.output, "mock.fmu: no findings (16 variables, 8 of them outputs"));

  const auto findings = [&](const std::string& description, const char* binary) {
    pack("bad.fmu", {{kDescription, description}, {kBinary, file_content(binary)}});
    const Outcome outcome = tessera({"validate", "bad.fmu"});
    EXPECT_EQ(outcome.code, 1);
    return outcome.output;
  };
  const std::string faulty = findings(mock_description(), MOCK_FAULTY);
  for (const char* problem :
       {"fmi2GetTypesPlatform answers ''", "accepts a GUID that is not", "start is 1.5, but the unit starts with 1.6",
        "'inlet.pressure_gate': start is false", "'inlet.pressure': is nan at time 0"}) {
    EXPECT_TRUE(contains(faulty, problem)) << problem << "\n" << faulty;
  }
  EXPECT_EQ(findings(mock_description(), MOCK_INCOMPLETE), "bad.fmu: the binary does not export fmi2CancelStep\n");

  const struct {
    const char *part, *replacement, *problem;
  } cases[] = {
      {"guid=\"{mock}\"", "guid=\"{other}\"", "fmi2Instantiate refused: wrong GUID"},
      {"fmiVersion=\"2.0\"", "fmiVersion=\"1.0\"", "fmiVersion is '1.0'"},
      {"name=\"steps\"", "name=\"clock\"", "variable 'clock': the name is used twice"},
      {"valueReference=\"2\"", "valueReference=\"0\"", "'steps': Real value reference 0 is already that of 'clock'"},
      {"valueReference=\"2\"", "valueReference=\"two\"", "'steps': valueReference=\"two\""},
      {"valueReference=\"2\"", "valueReference=\"99\"", "fmi2GetReal answered fmi2Error"},
      {"index=\"8\"", "index=\"80\"", "no position of a variable (80)"},
      {"index=\"8\"", "index=\"9\"", "lacks variable 'inlet.temperature'"},
      {"9 10", "9 77", "the dependencies of index 4"},
      {"unit=\"degC\"", "unit=\"degX\"", "unit 'degX' is not defined"},
  };
  for (const auto& c : cases) {
    const std::string output = findings(mock_description(c.part, c.replacement), MOCK_UNIT);
    EXPECT_TRUE(contains(output, c.problem)) << c.problem << "\n" << output;
  }
}

TEST_F(ProgramTest, ShippedUnitIsValid) {
  const Outcome outcome = tessera({"validate", TESSERA_FMU});
  EXPECT_EQ(outcome.code, 0) << outcome.output << outcome.errors;
  EXPECT_TRUE(contains(outcome.output, "146 of them outputs")) << outcome.output;
}

TEST_F(ProgramTest, ShippedUnitIsTheDefaultAndRunsAlikeWhateverTheInterval) {
  const Outcome first = tessera({"run", "--stop-time=1.5", "--output-interval=0.5", "--quiet"});
  ASSERT_EQ(first.code, 0) << first.errors;
  EXPECT_EQ(first.errors, "");
  const Table coarse = results();
  ASSERT_EQ(coarse.names.size(), 147U);
  ASSERT_EQ(tessera({"run", TESSERA_FMU, "--stop-time=1.5", "--output-interval=0.1", "--quiet"}).code, 0);
  const Table fine = results();
  ASSERT_EQ(coarse.rows.size(), 4U);
  ASSERT_EQ(fine.rows.size(), 16U);
  for (std::size_t i = 0; i < coarse.rows.size(); ++i) EXPECT_EQ(coarse.rows[i], fine.rows[5 * i]);
}

}  // namespace
}  // namespace runner_test
