#include "test_support.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace runner_test {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> split(const std::string& line) {
  std::vector<std::string> cells;
  std::istringstream stream(line);
  for (std::string cell; std::getline(stream, cell, ',');) cells.push_back(cell);
  return cells;
}

}  // namespace

const std::string& Table::at(std::size_t row, const std::string& name) const {
  const auto column = std::find(names.begin(), names.end(), '"' + name + '"') - names.begin();
  return rows.at(row).at(static_cast<std::size_t>(column));
}

std::string file_content(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

ProgramTest::ProgramTest() {
  std::string name = (fs::temp_directory_path() / "runner-test-XXXXXX").string();
  folder_ = mkdtemp(name.data());
  fs::create_directory(path("temporary"));
  pack("mock.fmu",
       {{"modelDescription.xml", mock_description()}, {"binaries/linux64/mock.so", file_content(MOCK_UNIT)}});
}

ProgramTest::~ProgramTest() { fs::remove_all(folder_); }

ProgramTest::Outcome ProgramTest::tessera(const std::vector<std::string>& arguments) { return start(arguments, 0, 0); }

ProgramTest::Outcome ProgramTest::tessera_with_signal(int signal, const std::vector<std::string>& arguments) {
  return start(arguments, signal, 0);
}

ProgramTest::Outcome ProgramTest::tessera_with_file_limit(unsigned bytes, const std::vector<std::string>& arguments) {
  return start(arguments, 0, bytes);
}

ProgramTest::Outcome ProgramTest::start(const std::vector<std::string>& arguments, int signal, unsigned file_limit) {
  std::vector<std::string> words = {TESSERA_PROGRAM};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  write("stderr", "");
  const pid_t child = fork();
  if (child == 0) {
    const rlimit limit = {file_limit, file_limit};
    if (chdir(folder_.c_str()) != 0 || (file_limit != 0 && setrlimit(RLIMIT_FSIZE, &limit) != 0)) _exit(99);
    dup2(open("stdout", O_WRONLY | O_CREAT | O_TRUNC, 0666), STDOUT_FILENO);
    dup2(open("stderr", O_WRONLY | O_TRUNC), STDERR_FILENO);
    setenv("TMPDIR", "temporary", 1);
    execv(argv[0], argv.data());
    _exit(98);
  }
  for (int tries = 0; signal != 0 && tries < 500 && fs::file_size(path("stderr")) == 0; ++tries) usleep(10'000);
  if (signal != 0) kill(child, signal);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(fs::is_empty(path("temporary"))) << "temporary files are left";
  EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
  return {WEXITSTATUS(status), read("stdout"), read("stderr")};
}

std::string ProgramTest::read(const std::string& name) const { return file_content(path(name)); }

void ProgramTest::write(const std::string& name, const std::string& content) const {
  std::ofstream(path(name), std::ios::binary) << content;
}

Table ProgramTest::results(const std::string& name) const {
  std::ifstream stream(path(name));
  std::string line;
  std::getline(stream, line);
  Table table = {split(line), {}};
  while (std::getline(stream, line)) {
    table.rows.push_back(split(line));
    EXPECT_EQ(table.rows.back().size(), table.names.size()) << line;
  }
  return table;
}

void ProgramTest::pack(const std::string& name, const std::map<std::string, std::string>& entries,
                       const std::string& link) const {
  zip_t* archive = zip_open(path(name).c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  for (const auto& [entry, content] : entries) {
    const auto index =
        zip_file_add(archive, entry.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), 0);
    if (entry == link) {
      zip_file_set_external_attributes(archive, static_cast<zip_uint64_t>(index), 0, ZIP_OPSYS_UNIX,
                                       zip_uint32_t{S_IFLNK} << 16);
    }
  }
  ASSERT_EQ(zip_close(archive), 0);
}

std::string mock_description() {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<fmiModelDescription fmiVersion="2.0" modelName="Mock" guid="{mock}">
  <CoSimulation modelIdentifier="mock"/>
  <UnitDefinitions>
    <Unit name="bar"><BaseUnit kg="1" m="-1" s="-2" factor="1e5"/><DisplayUnit name="mbar" factor="1000"/></Unit>
    <Unit name="kPa"><BaseUnit kg="1" m="-1" s="-2" factor="1000"/></Unit>
    <Unit name="K"><BaseUnit K="1"/></Unit>
    <Unit name="degC"><BaseUnit K="1" offset="273.15"/></Unit>
    <Unit name="s"><BaseUnit s="1"/></Unit>
  </UnitDefinitions>
  <TypeDefinitions>
    <SimpleType name="Pressure"><Real unit="bar" min="0"/></SimpleType>
  </TypeDefinitions>
  <DefaultExperiment startTime="0" stopTime="3" stepSize="0.5"/>
  <ModelVariables>
    <ScalarVariable name="clock" valueReference="0" causality="output"><Real unit="s"/></ScalarVariable>
    <ScalarVariable name="inlet.pressure" valueReference="1" causality="output"><Real unit="bar"/></ScalarVariable>
    <ScalarVariable name="steps" valueReference="2" causality="output"><Real/></ScalarVariable>
    <ScalarVariable name="longest_step" valueReference="3" causality="output"><Real unit="s"/></ScalarVariable>
    <ScalarVariable name="inlet.is_open" valueReference="2" causality="output"><Boolean/></ScalarVariable>
    <ScalarVariable name="shortest_step" valueReference="4" causality="output"><Real unit="s"/></ScalarVariable>
    <ScalarVariable name="last_write" valueReference="5" causality="output"><Real unit="s"/></ScalarVariable>
    <ScalarVariable name="inlet.temperature" valueReference="16" causality="output"><Real unit="degC"/></ScalarVariable>
    <ScalarVariable name="inlet.pressure_set" valueReference="10" causality="parameter" variability="tunable"
      description="pressure of the inlet"><Real declaredType="Pressure" start="1.5"/></ScalarVariable>
    <ScalarVariable name="inlet.pressure_gate" valueReference="0" causality="parameter" variability="tunable">
      <Boolean start="false"/></ScalarVariable>
    <ScalarVariable name="inlet.temperature_set" valueReference="11" causality="parameter" variability="tunable">
      <Real unit="degC" start="45"/></ScalarVariable>
    <ScalarVariable name="inlet.temperature_gate" valueReference="1" causality="parameter" variability="tunable">
      <Boolean start="false"/></ScalarVariable>
    <ScalarVariable name="error_time" valueReference="12" causality="parameter" variability="fixed">
      <Real unit="s" start="1e9"/></ScalarVariable>
    <ScalarVariable name="nan_time" valueReference="13" causality="parameter" variability="fixed">
      <Real unit="s" start="1e9"/></ScalarVariable>
    <ScalarVariable name="delay" valueReference="14" causality="parameter" variability="fixed">
      <Real unit="s" start="0"/></ScalarVariable>
    <ScalarVariable name="is_broken_at_release" valueReference="15" causality="parameter" variability="fixed">
      <Real start="0"/></ScalarVariable>
  </ModelVariables>
  <ModelStructure>
    <Outputs>
      <Unknown index="1"/><Unknown index="2"/><Unknown index="3"/><Unknown index="4" dependencies="9 10"/>
      <Unknown index="5"/><Unknown index="6"/><Unknown index="7"/><Unknown index="8"/>
    </Outputs>
  </ModelStructure>
</fmiModelDescription>
)";
}

std::string mock_description(const std::string& part, const std::string& replacement) {
  std::string text = mock_description();
  const std::size_t position = text.find(part);
  EXPECT_NE(position, std::string::npos) << part;
  return text.replace(position, part.size(), replacement);
}

}  // namespace runner_test
