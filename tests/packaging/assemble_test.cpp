// The archive and the program that packs it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "packaging/package.h"

namespace {

using ::testing::Each;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;

std::vector<std::string> names(const std::vector<Entry>& entries) {
  std::vector<std::string> result;
  std::ranges::transform(entries, std::back_inserter(result), &Entry::name);
  return result;
}

TEST(Archive, HoldsTheUnitInSortedEntriesOfOneTime) {
  const std::vector<Entry> entries = read_archive(TESSERA_FMU_FILE);
  EXPECT_THAT(names(entries), IsSupersetOf({"modelDescription.xml", "binaries/linux64/Tessera.so", "model.png",
                                            "documentation/index.html", "documentation/licenses/license.txt"}));
  EXPECT_TRUE(std::ranges::is_sorted(names(entries)));
  EXPECT_THAT(entries, Each(Field(&Entry::date, "1980-01-01 00:00:00")));
}

TEST(Archive, CarriesTheLicenseAndAPictureOf256Pixels) {
  EXPECT_EQ(read_file(unpacked_unit() / "documentation/licenses/license.txt"),
            read_file(TESSERA_SOURCE_DIR "/LICENSE"));
  using namespace std::string_literals;
  EXPECT_EQ(read_file(unpacked_unit() / "model.png").substr(0, 24),  // signature, header chunk, width, height
            "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\1\0\0\0\1\0"s);
}

class Assemble : public ::testing::Test {
 protected:
  Assemble() {
    std::ofstream(folder.path / "one") << "first";
    std::ofstream(folder.path / "two") << "second";
  }
  Outcome assemble(const std::string& pairs) const {
    return run("cd '" + folder.path.string() + "' && '" TESSERA_ASSEMBLE "' out.fmu " + pairs);
  }
  ScratchFolder folder;
};

TEST_F(Assemble, OrderOfTheArgumentsDoesNotMatter) {
  EXPECT_EQ(assemble("b/x=one a=two").status, 0);
  const std::string archive = read_file(folder.path / "out.fmu");
  EXPECT_EQ(assemble("a=two b/x=one").status, 0);
  EXPECT_EQ(read_file(folder.path / "out.fmu"), archive);
  const std::vector<Entry> entries = read_archive(folder.path / "out.fmu");
  ASSERT_EQ(names(entries), (std::vector<std::string>{"a", "b/x"}));
  EXPECT_EQ(entries[1].content, "first");
}

TEST_F(Assemble, RefusesWhatItCannotPackAndKeepsTheOldArchive) {
  ASSERT_EQ(assemble("a=one").status, 0);
  const std::string archive = read_file(folder.path / "out.fmu");
  const std::pair<const char*, const char*> bad[] = {{"a=one b=missing", "no file \"missing\" for \"b\""},
                                                     {"a=.", "no file \".\" for \"a\""},
                                                     {"a=one a=two", "\"a\" is given twice"},
                                                     {"../a=one", "\"../a\" must be a plain path"},
                                                     {"/a=one", "\"/a\" must be a plain path"},
                                                     {"one", "\"one\" is no PATH=FILE"}};
  for (const auto& [pairs, complaint] : bad) {
    const Outcome outcome = assemble(pairs);
    EXPECT_EQ(outcome.status, 1) << pairs;
    EXPECT_THAT(outcome.text, HasSubstr(complaint));
  }
  EXPECT_EQ(read_file(folder.path / "out.fmu"), archive);
  EXPECT_FALSE(std::filesystem::exists(folder.path / "out.fmu.unfinished"));
}

}  // namespace
