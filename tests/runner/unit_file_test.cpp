// The archive, its description and its binary: what `tessera info` and `tessera validate` say, and which units are
// refused.

#include <sys/resource.h>

#include <nlohmann/json.hpp>

#include "runner/test_support.h"

namespace {

TEST_F(ProgramTest, InfoListsTheVariables) {
  const Outcome table = tessera("info mock.fmu --filter '*_set' --filter steps");
  EXPECT_EQ(table.code, 0);
  EXPECT_THAT(table.output, HasSubstr("  3  inlet.temperature_set  Real  parameter  degC  45     of the inflow, °C\n"));
  EXPECT_THAT(table.output, HasSubstr("  1  steps                  Real  output\n"));
  EXPECT_THAT(table.output, Not(HasSubstr("last_write")));
  pack("both.fmu", {{"binaries/win64/mock.dll", "x"}});
  EXPECT_THAT(tessera("info both.fmu").output, HasSubstr("platforms   linux64, win64\n"));

  const auto json = nlohmann::json::parse(tessera("info mock.fmu --json").output);
  EXPECT_EQ(json["stopTime"], 3.0);
  EXPECT_EQ(json["variables"][4]["name"], "inlet.temperature_set");
  EXPECT_EQ(json["variables"][4]["start"], 45.0);
  EXPECT_EQ(json["variables"][5]["start"], false);
}

TEST_F(ProgramTest, UnusableUnitsAreRefusedAndOldResultsStay) {
  write("results.csv", "old");
  std::string bytes = read("mock.fmu");
  write("text.fmu", "no archive");
  write("cut.fmu", bytes.substr(0, 5000));
  bytes[bytes.find(kBinary) + 200] ^= 1;
  write("damaged.fmu", bytes);
  expect_refusal("run text.fmu", 5, "text.fmu: is no unit: it is not a zip archive");
  expect_refusal("run cut.fmu", 5, "cut.fmu: the archive is damaged or cut short");
  expect_refusal("run damaged.fmu", 5, "entry 'binaries/linux64/mock.so': is damaged");

  const struct {
    Entries changes;
    int code;
    const char* message;
  } cases[] = {
      {{{kDescription, ""}}, 5, "the archive has no modelDescription.xml"},
      {{{kDescription, "<fmiModelDescription>\n<oops"}}, 5, "modelDescription.xml is not well-formed: line 2"},
      {{{kDescription, described("Version=\"2.0\"", "Version=\"3.0\"")}}, 5, "FMI version '3.0'"},
      {{{kDescription, described("\"mock\"", "\"../mock\"")}}, 5, "modelIdentifier=\"../mock\" is no identifier"},
      {{{kDescription, described("{mock}", "{other}")}}, 3, "fmi2Instantiate refused"},
      {{{kBinary, ""}, {"binaries/win64/mock.dll", "x"}}, 5, "it has binaries for: win64"},
      {{{kBinary, "no library"}}, 5, "cannot be loaded"},
      {{{kBinary, mock("mock_incomplete")}}, 5, "does not export fmi2CancelStep"},
      {{{"a/../../b", "x"}}, 5, "entry 'a/../../b' leads out of the archive"},
      {{{"link", "/bin/true"}}, 5, "entry 'link' is a link"},
  };
  for (const auto& c : cases) {
    pack("bad.fmu", c.changes);
    expect_refusal("run bad.fmu", c.code, c.message);
  }
}

TEST_F(ProgramTest, AnAnnouncedSizeTakesNoMemory) {
  std::string bytes = read("mock.fmu");
  constexpr std::size_t kNameOffset = 46, kSizeOffset = 24;  // in an entry of the archive's table of contents
  bytes.replace(bytes.rfind(kDescription) - kNameOffset + kSizeOffset, 4, std::string("\0\0\0\x3f", 4));
  write("large.fmu", bytes);
  expect_refusal("info large.fmu", 5, "entry 'modelDescription.xml': is damaged");
  rusage children = {};
  getrusage(RUSAGE_CHILDREN, &children);
  EXPECT_LT(children.ru_maxrss, 500'000);  // kB; the entry announces 1'032'192
}

TEST_F(ProgramTest, ValidateNamesEveryProblem) {
  const Outcome sound = tessera("validate mock.fmu");
  EXPECT_EQ(sound.code, 0);
  EXPECT_THAT(sound.output, HasSubstr("mock.fmu: no findings (10 variables, 4 of them outputs"));

  const auto findings = [&](const Entries& changes) {
    pack("bad.fmu", changes);
    const Outcome outcome = tessera("validate bad.fmu");
    EXPECT_EQ(outcome.code, 1);
    return outcome.output;
  };
  EXPECT_EQ(findings({{kBinary, mock("mock_incomplete")}}), "bad.fmu: the binary does not export fmi2CancelStep\n");
  EXPECT_EQ(findings({{kBinary, mock("mock_faulty")}}),
            "bad.fmu: fmi2GetTypesPlatform answers '', not 'default'\n"
            "bad.fmu: fmi2Instantiate accepts a GUID that is not the unit's own\n"
            "bad.fmu: variable 'inlet.temperature': is nan at time 0\n");
  const struct {
    const char *part, *replacement, *problem;
  } cases[] = {
      {"fmiVersion=\"2.0\"", "fmiVersion=\"1.0\"", "fmiVersion is '1.0'"},
      {"name=\"last_write\"", "name=\"steps\"", "variable 'steps': the name is used twice"},
      {"Reference=\"2\"", "Reference=\"1\"", "'last_write': Real value reference 1 is already that of 'steps'"},
      {"Reference=\"2\"", "Reference=\"99\"", "fmi2GetReal answered fmi2Error"},
      {"start=\"45\"", "start=\"46\"", "start is 46, but the unit starts with 45"},
      {"unit=\"degC\"", "unit=\"degX\"", "unit 'degX' is not defined"},
      {"index=\"4\"", "index=\"5\"", "lacks variable 'last_write'"},
      {"5 6", "5 77", "the dependencies of index 4"},
  };
  for (const auto& c : cases) {
    EXPECT_THAT(findings({{kDescription, described(c.part, c.replacement)}}), HasSubstr(c.problem));
  }
}

TEST_F(ProgramTest, ShippedUnitIsTheDefaultAndValid) {
  const Outcome validated = tessera("validate");
  EXPECT_EQ(validated.code, 0);
  EXPECT_THAT(validated.output, ::testing::AllOf(HasSubstr(TESSERA_FMU), HasSubstr("146 of them outputs")));
  EXPECT_EQ(tessera("run --stop-time=1.5").code, 0);
  EXPECT_EQ(last_row().size(), 147U);
}

}  // namespace
