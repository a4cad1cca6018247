// The page in the archive and the generated files in docs/.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "packaging/package.h"

namespace {

TEST(Documents, GeneratedFilesInTheSourcesAreCurrent) {
  for (const std::string name : {"variables.md", "states.md"}) {
    EXPECT_TRUE(read_file(TESSERA_SOURCE_DIR "/docs/" + name) == read_file(TESSERA_DESCRIBED_DIR "/" + name))
        << "docs/" << name << " is out of date; build the target docs and commit the file";
  }
}

TEST(Documents, PageIsSoundSelfContainedAndNamesEveryVariable) {
  const std::string text = read_file(unpacked_unit() / "documentation/index.html");
  pugi::xml_document page, description;
  const pugi::xml_parse_result result = page.load_string(text.c_str());
  ASSERT_TRUE(result) << result.description() << " at " << text.substr(static_cast<std::size_t>(result.offset), 60);
  ASSERT_TRUE(description.load_file((unpacked_unit() / "modelDescription.xml").c_str()));

  EXPECT_TRUE(page.select_nodes("//link | //script | //img | //iframe").empty());
  EXPECT_THAT(text,
              ::testing::Not(::testing::AnyOf(::testing::HasSubstr("url(http"), ::testing::HasSubstr("@import"))));
  for (const pugi::xpath_node& link : page.select_nodes("//@href")) {
    const std::string target = link.attribute().value();
    EXPECT_TRUE(page.select_node(("//*[@id='" + target.substr(1) + "']").c_str())) << target << " leads nowhere";
  }
  for (const pugi::xml_node& variable : description.select_node("//ModelVariables").node()) {
    const std::string name = variable.attribute("name").value();
    if (name == "time") continue;
    EXPECT_TRUE(page.select_node(("//td/code[text()='" + name + "']").c_str())) << name << " is missing";
  }
}

}  // namespace
