// The files of the package, looked at from outside: the archive, the library and what is generated.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <zip.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

std::string read_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

struct Outcome {
  int status;        ///< exit code, or -1 when the command did not exit by itself
  std::string text;  ///< what it wrote to both of its streams
};

/// Runs a shell command.
Outcome run(const std::string& command) {
  Outcome outcome{-1, ""};
  FILE* pipe = popen(("{ " + command + "; } 2>&1").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) outcome.text += static_cast<char>(c);
  if (const int status = pclose(pipe); WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
  return outcome;
}

struct Entry {
  std::string name, content, time;
  bool operator==(const Entry&) const = default;
};

std::vector<Entry> read_archive(const char* file) {
  zip_t* archive = zip_open(file, ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
  if (archive == nullptr) throw std::runtime_error(std::string(file) + " is no sound archive");
  std::vector<Entry> entries;
  for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(zip_get_num_entries(archive, 0)); ++i) {
    zip_stat_t stat;
    EXPECT_EQ(zip_stat_index(archive, i, 0, &stat), 0);
    std::string content(stat.size, '\0');
    zip_file_t* stream = zip_fopen_index(archive, i, 0);
    EXPECT_EQ(zip_fread(stream, content.data(), stat.size), static_cast<zip_int64_t>(stat.size)) << stat.name;
    zip_fclose(stream);
    entries.push_back({stat.name, content, std::asctime(std::localtime(&stat.mtime))});  // an archive's times are local
  }
  zip_discard(archive);
  return entries;
}

TEST(Archive, HoldsTheBuiltFilesInSortedEntriesOfOneTime) {
  const std::vector<Entry> entries = read_archive(TESSERA_FMU);
  const std::pair<const char*, const char*> built[] = {
      {"binaries/linux64/Tessera.so", TESSERA_LIBRARY},
#ifdef TESSERA_REFERENCE
      {"documentation/Tessera_ref.csv", TESSERA_REFERENCE},
#endif
      {"documentation/index.html", TESSERA_DESCRIBED_DIR "/index.html"},
      {"documentation/licenses/license.txt", TESSERA_SOURCE_DIR "/LICENSE"},
      {"model.png", TESSERA_SOURCE_DIR "/packaging/model.png"},
      {"modelDescription.xml", TESSERA_DESCRIBED_DIR "/modelDescription.xml"}};
  for (const auto& [name, file] : built) {
    EXPECT_THAT(entries, Contains(Entry{name, read_file(file), "Tue Jan  1 00:00:00 1980\n"})) << name;
  }
  EXPECT_TRUE(std::ranges::is_sorted(entries, {}, &Entry::name));
}

#ifdef TESSERA_REFERENCE
TEST(Archive, ReferenceResultHasEachOutputEveryTenSeconds) {
  std::istringstream lines(read_file(TESSERA_REFERENCE));
  std::string line;
  std::vector<double> times;
  ASSERT_TRUE(std::getline(lines, line));
  EXPECT_EQ(std::ranges::count(line, ','), 146);
  while (std::getline(lines, line)) {
    EXPECT_EQ(std::ranges::count(line, ','), 146) << line;
    times.push_back(std::stod(line));
  }
  ASSERT_EQ(times.size(), 201u);
  for (std::size_t i = 0; i < 200; ++i) EXPECT_EQ(times[i], 10.0 * static_cast<double>(i));
  EXPECT_EQ(times.back(), 1998.0);
}
#endif

TEST(Assemble, RefusesWhatItCannotPackAndKeepsTheOldArchive) {
  const std::string archive = TEST_FOLDER "/refused.fmu";
  std::ofstream(archive) << "old";
  const std::pair<const char*, const char*> cases[] = {{"a=README.md b=missing", "no file \"missing\" for \"b\""},
                                                       {"a=README.md a=LICENSE", "\"a\" is given twice"},
                                                       {"../a=README.md", "\"../a\" must be a plain path"},
                                                       {"README.md", "\"README.md\" is no PATH=FILE"}};
  for (const auto& [pairs, complaint] : cases) {
    const Outcome outcome = run("cd '" TESSERA_SOURCE_DIR "' && '" TESSERA_ASSEMBLE "' '" + archive + "' " + pairs);
    EXPECT_EQ(outcome.status, 1) << pairs;
    EXPECT_THAT(outcome.text, HasSubstr(complaint));
    EXPECT_EQ(read_file(archive), "old");
    EXPECT_FALSE(std::filesystem::exists(archive + ".unfinished"));
  }
}

TEST(DescriptionFile, FollowsTheSchema) {
  if (std::getenv("TESSERA_FMI2_SCHEMA") == nullptr)
    GTEST_SKIP() << "TESSERA_FMI2_SCHEMA does not name the folder of the FMI 2.0 schema";
  const Outcome outcome =
      run("xmllint --noout --schema \"$TESSERA_FMI2_SCHEMA/fmi2ModelDescription.xsd\" "
          "'" TESSERA_DESCRIBED_DIR "/modelDescription.xml'");
  EXPECT_EQ(outcome.status, 0) << outcome.text;
}

TEST(Documents, InTheSourcesAreCurrent) {
  for (const std::string name : {"variables.md", "states.md"}) {
    EXPECT_TRUE(read_file(TESSERA_SOURCE_DIR "/docs/" + name) == read_file(TESSERA_DESCRIBED_DIR "/" + name))
        << "docs/" << name << " is out of date; build the target docs and commit the file";
  }
  const std::string changelog = read_file(TESSERA_SOURCE_DIR "/CHANGELOG.md");
  const std::size_t newest = changelog.find("\n## ") + 4;
  const std::string version = changelog.substr(newest, changelog.find_first_of(",\n", newest) - newest);
  EXPECT_THAT(read_file(TESSERA_DESCRIBED_DIR "/modelDescription.xml"), HasSubstr("\" version=\"" + version + "\""))
      << "the newest version in CHANGELOG.md is not that of the project";
}

}  // namespace
