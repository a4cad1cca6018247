// What `tessera run` writes beside CSV, and the comparison of results, as a child process.

#include <cstring>
#include <nlohmann/json.hpp>

#include "apps/runner/errors.h"
#include "apps/runner/result_reader.h"
#include "runner/test_support.h"

namespace {

using Json = nlohmann::json;

/// Room for the mock unit's library, and little more.
constexpr const char* kSmallDisk = "ulimit -f 400";  // of 512 bytes: room for the mock unit, with sanitizers too

TEST_F(ProgramTest, TheRecordTellsHowTheResultsCameAbout) {
  pack("told.fmu", {{kDescription, described("guid=", "version=\"1.2\" generationTool=\"a tool\" guid=")}});
  ASSERT_EQ(tessera("run told.fmu --quiet --output-variable inlet.temperature --start-value 3=300K --record-from 0.5 "
                    "--set-at 1.5:gate0=0 --output-file first.run.csv --start-value fail_at=2.2")
                .code,
            3);
  const Json record = Json::parse(read("first.run.meta.json")).flatten();
  const Json told = R"({
    "unit": {"file": "told.fmu", "modelName": "Mock", "guid": "{mock}", "version": "1.2", "generationTool": "a tool"},
    "settings": {"stopTime": 3.0, "recordFrom": 0.5,
                 "changes": [{"time": 1.5, "name": "inlet.temperature_gate", "value": false}],
                 "startValues": [{"name": "inlet.temperature_set"}, {"name": "inlet.temperature_gate"}]},
    "inputs": [{"name": "inlet.temperature_set", "default": 45.0, "gate": true}, {"name": "fail_at", "gate": null}],
    "outputs": [{"unit": "degC"}],
    "result": {"file": "first.run.csv", "rows": 4, "variables": 1},
    "run": {"simulatedTime": 2.0, "exitCode": 3, "state": "stopped by an error of the unit at 2 s of 3 s", "errors": 1}
  })"_json.flatten();
  for (const auto& [place, value] : told.items()) EXPECT_EQ(record.value(place, Json("missing")), value) << place;
  EXPECT_FALSE(record.contains("/inputs/2/name"));
  EXPECT_NEAR(record.at("/inputs/0/value").get<double>(), 26.85, 1e-9);
  EXPECT_THAT(record.at("/run/failures/0"), HasSubstr("the pump is blocked"));
  EXPECT_THAT(record.at("/run/startedAt").get<std::string>(), ::testing::MatchesRegex("20..-..-..T..:..:..Z"));
}

TEST_F(ProgramTest, ARecordStandsWithItsResultsOnly) {
  EXPECT_EQ(tessera("run mock.fmu --quiet --output-file pipe", "mkfifo pipe && (cat pipe >copy &)").code, 0);
  EXPECT_FALSE(exists("pipe.meta.json"));

  write("results.meta.json", "old");
  EXPECT_EQ(tessera("run mock.fmu --quiet --start-value nan_at=0 --record-from 1").code, 4);  // before the first row
  EXPECT_EQ(read("results.meta.json"), "old");
  EXPECT_FALSE(exists("results.csv") || exists("results.csv.part") || exists("results.meta.json.part"));

  std::string long_record = "run mock.fmu --quiet";
  for (int i = 0; i < 4000; ++i) long_record += " --start-value 3=5";
  EXPECT_EQ(tessera(long_record, kSmallDisk).code, 5);
  EXPECT_TRUE(exists("results.csv"));
  EXPECT_FALSE(exists("results.meta.json") || exists("results.meta.json.part"));

  std::filesystem::remove(path("results.csv"));
  std::filesystem::create_directory(path("results.meta.json"));
  expect_refusal("run mock.fmu", 5, "cannot write 'results.meta.json': it is a folder");
}

/// An array of 3001 numbers in a .npz file, by the layout that numpy publishes for version 1.0 of .npy.
std::vector<double> read_array(zip_t* archive, const std::string& name) {
  constexpr std::size_t kStart = 128;  // the next multiple of 64 behind the head
  std::vector<double> values(3001);
  std::string bytes(kStart + values.size() * sizeof(double) + 1, '\0');
  zip_file_t* file = zip_fopen(archive, (name + ".npy").c_str(), 0);
  EXPECT_EQ(zip_fread(file, bytes.data(), bytes.size()), static_cast<zip_int64_t>(bytes.size() - 1)) << name;
  zip_fclose(file);
  EXPECT_EQ(bytes.substr(0, 10), std::string("\x93NUMPY\x01\x00\x76\x00", 10));
  std::string dictionary = "{'descr': '<f8', 'fortran_order': False, 'shape': (3001,), }";
  dictionary.resize(kStart - 11, ' ');
  EXPECT_EQ(bytes.substr(10, kStart - 10), dictionary + "\n");
  std::memcpy(values.data(), bytes.data() + kStart, values.size() * sizeof(double));
  return values;
}

TEST_F(ProgramTest, AnNpzFileHoldsWhatTheCsvFileHolds) {
  const std::string command = "run mock.fmu --quiet --output-interval 0.001 --start-value 3=0.1 --output-file ";
  ASSERT_EQ(tessera(command + "r.csv").code, 0);
  ASSERT_THAT(tessera(command + "r.npz").output, HasSubstr("rows            3001\n"));
  EXPECT_EQ(Json::parse(read("r.meta.json"))["result"]["file"], "r.npz");
  const runner::ResultTable csv = runner::read_result_csv(path("r.csv"));
  zip_t* archive = zip_open(path("r.npz").c_str(), ZIP_RDONLY, nullptr);
  ASSERT_NE(archive, nullptr);
  EXPECT_EQ(zip_get_num_entries(archive, 0), 5);
  EXPECT_STREQ(zip_get_name(archive, 0, 0), "time.npy");
  EXPECT_EQ(read_array(archive, "time"), csv.time);
  for (std::size_t i = 0; i < csv.names.size(); ++i) EXPECT_EQ(read_array(archive, csv.names[i]), csv.columns[i]);
  zip_discard(archive);

  write("r.npz", "old");
  const Outcome full = tessera(command + "r.npz --stop-time 100", kSmallDisk);
  EXPECT_EQ(full.code, 5);
  EXPECT_EQ(full.errors, "tessera: cannot write 'r.npz.part': File too large\n");
  EXPECT_EQ(read("r.npz"), "old");
  EXPECT_FALSE(exists("r.npz.part"));
}

TEST_F(ProgramTest, ComparisonFindsTheWorstOfEachSignal) {
  write("reference.csv", "\"time\",\"a.x\",\"a.y\",\"b\"\n0,100,0,1\n0.5,200,0,nan\n1,300,0,-inf\n");
  const std::string agreement = "agreement: 3 signals at 3 times compared, ";
  const struct {
    const char *result, *arguments;
    int code;
    std::string expected;  ///< blanks in a row count as one
  } cases[] = {
      {"\xEF\xBB\xBF Time , \"b\",a.y , a.x\r\n0, 1 "
       ",0,1e2\r\n.5,\"NaN\",0,200\r\n1.0000000001,-Infinity,-0,+300\r\n\r\n",
       "", 0, agreement + "3 without"},
      {"time,a.x,a.y,b\n0,100.00009,0,1\n0.5,200,1e-9,\n1,300.00029,0,-inf\n", "",
       0,  // 1e-6 of the reference, and 1e-9
       "a.y 1e-09 1e-09 1 0.5 ok\na.x 0.00029 0.0003 0.9667 1 ok\n\n" + agreement + "1 without"},
      {"time,a.x,a.y,b\n0,100.2,0,1\n0.5,199,2e-9,nan\n1,301,0,-inf\n", "", 1,
       "a.x 1 0.0002 5000 0.5 beyond\na.y 2e-09 1e-09 2 0.5 beyond\n\nno agreement: "},
      {"time,a.x,a.y,b\n0,100.5,0,1\n0.5,199,2e-9,nan\n1,301,0,-inf\n",
       "--tolerance '*=rtol:0' --tolerance 'a.*=rtol:5e-3,atol:1e-8' --rtol 1 --atol 1", 0,
       "a.x 0.5 0.5 1 0 ok\na.y 2e-09 1e-08 0.2 0.5 ok\n\n" + agreement},
      {"time,a.x,a.y,b\n0,100,0,nan\n0.5,200,0,nan\n1,300,0,-inf\n", "--rtol inf", 1,
       "b nan against 1 none inf 0 beyond"},
      {"time,a.x,a.y,b\n0,100,0,1\n0.5,200,0,nan\n1,300,0,inf\n", "", 1, "b inf against -inf none inf 1 beyond"},
      {"time,a.x,c\n0,100,1\n1,300,2\n2,400,3\n", "", 1,
       "missing in the result: 2 signals (a.y, b)\nmissing in the result: 1 time, the first at 0.5 s\n"
       "missing in the reference: 1 signal (c)\nmissing in the reference: 1 time, the first at 2 s\n"
       "no agreement: 1 signal at 2 times compared, 1 without any deviation, 0 beyond"},
      {"time,a.x\n0,100\n0.5,200\n1,300\n", "--signal a.x", 0, "agreement: 1 signal at 3 times compared"},
      {"time,a.x,a.y,b\n0.1,100,0,1\n", "", 1, "no agreement: 3 signals at 0 times"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.result) + c.arguments);
    write("result.csv", c.result);
    Outcome outcome = tessera("compare result.csv reference.csv " + std::string(c.arguments));
    EXPECT_EQ(outcome.code, c.code) << outcome.errors;
    const auto both_blanks = [](char a, char b) { return a == ' ' && b == ' '; };
    outcome.output.erase(std::unique(outcome.output.begin(), outcome.output.end(), both_blanks), outcome.output.end());
    EXPECT_THAT(outcome.output, HasSubstr(c.expected));
  }
  for (const auto& [arguments, message] : std::map<std::string, std::string>{
           {"--signal c", "--signal 'c': matches no signal"},
           {"--tolerance 'a.z=atol:1'", "matches no signal of the reference; did you mean 'a.x'"},
           {"--tolerance b", "write it as PATTERN=rtol:R,atol:A"},
           {"--tolerance b=1e-3", "'1e-3' is neither rtol:R nor atol:A"},
           {"--tolerance b=rtol:-1", "'rtol:-1': needed is a number of at least 0"},
           {"--rtol few", "--rtol: 'few': needed is a number of at least 0"}}) {
    expect_refusal("compare result.csv reference.csv " + arguments, 2, message);
  }
}

TEST_F(ProgramTest, AFileThatIsNoTableIsRefusedWithItsLine) {
  for (const auto& [text, message] : std::map<std::string, std::string>{
           {"", "the file is empty"},
           {"time,a\n\n", "there are no rows"},
           {"time;a\n0;1\n", "line 1: the first column is 'time;a', needed is \"time\", and commas"},
           {"time,a,a\n", "line 1: two columns are named 'a'"},
           {"time,\"a\n0,1\n", "line 1: a quote is not closed"},
           {"time,a\n0,1\n1,1,2\n", "line 3: the row has more cells than the header (2)"},
           {"time,a,b\n0,1\n", "line 2: the row has fewer cells"},
           {"time,a\n0,1\n\n1,2\n", "line 3: "},
           {"PK\3\4", "this is a zip archive"},
           {"time,a\n0,1.5 V\n", "line 2: a: '1.5 V' is no number"},
           {"time,a\n1,0\n0.5,0\n", "line 3: the time goes back, from 1 s to 0.5 s"},
           {"time,a\nnan,0\n", "line 2: the time is no finite number"}}) {
    write("bad.csv", text);
    expect_refusal("compare bad.csv bad.csv", 5, "bad.csv: " + message);
  }
  expect_refusal("compare none.csv none.csv", 5, "cannot read 'none.csv': No such file");
}

TEST_F(ProgramTest, ARunComparesItselfWithAReference) {
  const std::string run = "run mock.fmu --quiet --start-value 3=5 ";
  ASSERT_EQ(tessera(run + "--output-file reference.csv").code, 0);
  const struct {
    const char* arguments;
    int code;
    const char* expected;
  } cases[] = {{"", 0, "\nagreement: 4 signals at 7 times"},
               {"--output-file r.npz", 0, "\nagreement: 4 signals at 7 times"},
               {"--output-variable 'inlet.*' --record-from 1", 0, "\nagreement: 2 signals at 5 times"},
               {"--start-value 3=6", 1, " beyond\n"},
               {"--start-value 3=6 --tolerance 'inlet.t*=atol:1'", 0, " ok\n"},
               {"--start-value fail_at=1.7", 3, "missing in the result: 3 times, the first at 2 s"}};
  for (const auto& c : cases) {
    const Outcome outcome = tessera(run + "--reference-file reference.csv " + c.arguments);
    EXPECT_EQ(outcome.code, c.code) << c.arguments << outcome.errors;
    EXPECT_THAT(outcome.output, HasSubstr(c.expected)) << c.arguments;
  }
  expect_refusal(run + "--reference-file none.csv", 5, "cannot read 'none.csv'");
  expect_refusal(run + "--reference-file results.csv", 2, "'results.csv' is the reference");
}

}  // namespace
