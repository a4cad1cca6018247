#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <zip.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

using ::testing::HasSubstr;
using ::testing::Not;

/// A folder of its own for each test with the mock unit in it, and the program run inside it as a child process.
class ProgramTest : public ::testing::Test {
 protected:
  struct Outcome {
    int code;
    std::string output, errors;
  };
  using Entries = std::map<std::string, std::string>;  // of an archive: name to content

  static constexpr const char* kDescription = "modelDescription.xml";
  static constexpr const char* kBinary = "binaries/linux64/mock.so";

  ProgramTest() {
    std::string name = (std::filesystem::temp_directory_path() / "runner-test-XXXXXX").string();
    folder_ = mkdtemp(name.data());
    std::filesystem::create_directory(path("temporary"));
    pack("mock.fmu", {});
  }
  ~ProgramTest() override { std::filesystem::remove_all(folder_); }

  /// Runs the program to its end, after a shell command; it may leave nothing in its folder for temporary files.
  Outcome tessera(const std::string& arguments, const std::string& before = "true") {
    return shell(before + " && exec env TMPDIR=temporary '" TESSERA_PROGRAM "' >stdout 2>stderr " + arguments);
  }

  /// The same for a script that runs the program itself.
  Outcome shell(const std::string& script) {
    const int status = std::system(("cd '" + folder_.string() + "' && " + script).c_str());
    EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
    EXPECT_TRUE(std::filesystem::is_empty(path("temporary"))) << "temporary files are left";
    return {WEXITSTATUS(status), read("stdout"), read("stderr")};
  }

  /// Expects an exit code and one line on standard error, and that no results appear or change.
  void expect_refusal(const std::string& arguments, int code, const std::string& message) {
    SCOPED_TRACE(arguments);
    const auto results = [&] { return std::pair(exists("results.csv"), read("results.csv")); };
    const auto old_results = results();
    const Outcome outcome = tessera(arguments);
    EXPECT_EQ(outcome.code, code);
    EXPECT_THAT(outcome.errors, ::testing::AllOf(::testing::StartsWith("tessera: "), HasSubstr(message)));
    EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
    EXPECT_EQ(results(), old_results);
    EXPECT_FALSE(exists("results.csv.part"));
  }

  std::filesystem::path path(const std::string& name) const { return folder_ / name; }
  bool exists(const std::string& name) const { return std::filesystem::exists(path(name)); }
  std::string read(const std::string& name) const {
    std::ifstream stream(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  void write(const std::string& name, const std::string& content) const {
    std::ofstream(path(name), std::ios::binary) << content;
  }

  /// The numbers in the last row of results.csv.
  std::vector<double> last_row() const {
    const std::string csv = read("results.csv");
    std::istringstream cells(csv.substr(csv.rfind('\n', csv.size() - 2) + 1));
    std::vector<double> row;
    for (std::string cell; std::getline(cells, cell, ',');) row.push_back(std::stod(cell));
    return row;
  }

  /// Packs the mock unit with other or further entries; an empty one is left out, and "link" is a symbolic link.
  void pack(const std::string& name, const Entries& changes) const {
    Entries entries = changes;
    entries.merge(Entries{{kDescription, read(MOCK_DESCRIPTION)}, {kBinary, mock("mock_unit")}});
    zip_t* archive = zip_open(path(name).c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const auto& [entry, content] : entries) {
      if (content.empty()) continue;
      zip_source_t* source = zip_source_buffer(archive, content.data(), content.size(), 0);
      const auto index = static_cast<zip_uint64_t>(zip_file_add(archive, entry.c_str(), source, 0));
      zip_set_file_compression(archive, index, ZIP_CM_STORE, 0);  // so that damage shows in the checksum alone
      if (entry != "link") continue;
      zip_file_set_external_attributes(archive, index, 0, ZIP_OPSYS_UNIX, zip_uint32_t{S_IFLNK} << 16);
    }
    ASSERT_EQ(zip_close(archive), 0);
  }

  /// A library built from mock_unit.cpp.
  std::string mock(const std::string& name) const { return read(MOCK_FOLDER + name + ".so"); }

  /// The mock unit's description with a part replaced.
  std::string described(const std::string& part, const std::string& replacement) const {
    std::string text = read(MOCK_DESCRIPTION);
    const std::size_t position = text.find(part);
    EXPECT_NE(position, std::string::npos) << part;
    return text.replace(position, part.size(), replacement);
  }

 private:
  std::filesystem::path folder_;
};
