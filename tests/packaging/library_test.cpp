// The shared library out of the archive, as a file and as two copies in one process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "packaging/package.h"

namespace {

using ::testing::HasSubstr;
using ::testing::IsSubsetOf;
using ::testing::Not;

std::string inspect(const std::string& command) {
  const Outcome outcome = run(command + " '" + library_file().string() + "'");
  EXPECT_EQ(outcome.status, 0) << outcome.text;
  return outcome.text;
}

TEST(LibraryFile, ExportsTheFunctionsOfTheStandardAndNothingElse) {
  std::set<std::string> expected;
#define FMI2_FUNCTION(name, result, parameters) expected.insert(#name);
#include "fmi/fmi2_functions.def"
  ASSERT_EQ(expected.size(), 44U);

  std::set<std::string> exported;
  std::istringstream lines(inspect("nm --dynamic --defined-only --format=just-symbols"));
  for (std::string line; std::getline(lines, line);) exported.insert(line);
  EXPECT_EQ(exported, expected);
}

TEST(LibraryFile, NeedsTheSystemOnlyAndLooksInNoFolderOfItsOwn) {
  const std::string dynamic = inspect("readelf --dynamic --wide");
  EXPECT_THAT(dynamic, Not(HasSubstr("(RPATH)")));
  EXPECT_THAT(dynamic, Not(HasSubstr("(RUNPATH)")));
#ifndef TESSERA_SANITIZED  // which needs the sanitizers' libraries
  std::vector<std::string> needed;
  std::istringstream lines(dynamic);
  for (std::string line; std::getline(lines, line);) {
    if (line.find("(NEEDED)") == std::string::npos) continue;
    const std::size_t open = line.find('['), close = line.find(']');
    needed.push_back(line.substr(open + 1, close - open - 1));
  }
  EXPECT_THAT(needed, IsSubsetOf({"libc.so.6", "libm.so.6", "libstdc++.so.6", "libgcc_s.so.1"}));
  EXPECT_THAT(needed, ::testing::Contains("libc.so.6"));
#endif
}

TEST(LibraryFile, TwoCopiesInOneProcessShareNothing) {
  const ScratchFolder folder;
  std::filesystem::copy_file(library_file(), folder.path / "copy.so");
  const std::string guid = "{3b1e7a52-6c0d-4f19-a8e4-2d90c7f1b663}";
  const UnitLibrary one(library_file(), guid), other(folder.path / "copy.so", guid);
  const fmi2ValueReference parameter = 146, gate = 0;
  const double written = 1234.5;
  const fmi2Boolean open = fmi2True;
  ASSERT_EQ(one.fmi2SetReal(one.instance, &parameter, 1, &written), fmi2OK);
  ASSERT_EQ(one.fmi2SetBoolean(one.instance, &gate, 1, &open), fmi2OK);
  EXPECT_EQ(one.real(parameter), written);
  EXPECT_EQ(other.real(parameter), 5000.0);
  EXPECT_EQ(other.boolean(gate), fmi2False);
}

}  // namespace
