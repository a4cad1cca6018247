// modelDescription.xml against the FMI standard and the library, and the page that goes with it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <pugixml.hpp>
#include <string>

#include "fmi/fmi2.h"

namespace {

void ignore(fmi2ComponentEnvironment, fmi2String, fmi2Status, fmi2String, fmi2String, ...) {}

class Description : public ::testing::Test {
 protected:
  Description() { EXPECT_TRUE(document.load_file(TESSERA_DESCRIBED_DIR "/modelDescription.xml")); }

  pugi::xml_document document;
};

TEST_F(Description, ListsEachCellOnceWithTheStartThatTheLibraryHolds) {
  const fmi2CallbackFunctions callbacks = {ignore, nullptr, nullptr, nullptr, nullptr};
  const char* guid = document.child("fmiModelDescription").attribute("guid").value();
  fmi2Component c = fmi2Instantiate("test", fmi2CoSimulation, guid, nullptr, &callbacks, fmi2False, fmi2False);
  ASSERT_NE(c, nullptr) << "the library refuses the GUID of its description";

  std::map<std::string, std::map<fmi2ValueReference, std::string>> cells;
  unsigned position = 0;
  for (const pugi::xml_node& variable : document.select_node("//ModelVariables").node()) {
    const std::string name = variable.attribute("name").value(), type = variable.first_child().name();
    const fmi2ValueReference reference = variable.attribute("valueReference").as_uint();
    SCOPED_TRACE(name);
    EXPECT_TRUE(cells[type].emplace(reference, name).second) << "has the reference of another variable";
    EXPECT_THAT(name, ::testing::MatchesRegex("[a-zA-Z_][a-zA-Z_0-9]*(\\.[a-zA-Z_][a-zA-Z_0-9]*)*"));

    const std::string role = std::string(variable.attribute("causality").value()) + " " +
                             variable.attribute("variability").value() + " " + variable.attribute("initial").value();
    const bool is_output = type == "Real" && reference < 146, is_time = type == "Real" && reference == 169;
    EXPECT_TRUE(++position == reference + 1 || !is_output) << "the structure names outputs by their position";
    EXPECT_EQ(role, is_output ? "output continuous " : is_time ? "independent continuous " : "parameter tunable exact");
    const pugi::xml_node typed = variable.first_child();
    const pugi::xml_attribute start = typed.attribute("start");
    EXPECT_EQ(start.empty(), is_output || is_time);
    if (type == "Boolean") {
      fmi2Boolean value = -1;
      EXPECT_EQ(fmi2GetBoolean(c, &reference, 1, &value), fmi2OK);
      EXPECT_EQ(value != fmi2False, start.as_bool(true));
    } else if (!start.empty()) {
      double value = NAN;
      EXPECT_EQ(fmi2GetReal(c, &reference, 1, &value), fmi2OK);
      EXPECT_EQ(value, start.as_double(NAN));
      EXPECT_LE(typed.attribute("min").as_double(NAN), value);
      EXPECT_GE(typed.attribute("max").as_double(NAN), value);
    }
  }
  ASSERT_EQ(cells["Real"].size(), 170U);
  ASSERT_EQ(cells["Boolean"].size(), 23U);
  EXPECT_EQ(cells["Real"].rbegin()->first, 169U);
  for (unsigned k = 0; k < 23; ++k) {  // Boolean k is the gate of Real 146 + k
    const std::string& parameter = cells["Real"][146 + k];
    EXPECT_EQ(cells["Boolean"][k], parameter.substr(0, parameter.rfind("_set")) + "_gate");
  }
  fmi2FreeInstance(c);
}

TEST_F(Description, UnitsConvertAsPhysicsHasIt) {
  const pugi::xml_node units = document.select_node("//UnitDefinitions").node();
  const auto in_base_units = [](pugi::xml_node unit, double value) {
    const pugi::xml_node base = unit.child("BaseUnit");
    return base.attribute("factor").as_double(1.0) * value + base.attribute("offset").as_double();
  };
  const struct {
    const char* unit;
    double value, in_base_units;
    const char* exponents;
  } cases[] = {{"bar", 1.01325, 101325.0, "kg1 m-1 s-2 "},  // normal atmosphere
               {"degC", 100.0, 373.15, "K1 "},
               {"l/min", 60.0, 0.001, "m3 s-1 "},
               {"kW.h", 1.0, 3.6e6, "kg1 m2 s-2 "},
               {"rpm", 30.0, M_PI, "s-1 rad1 "},
               {"km/h", 36.0, 10.0, "m1 s-1 "}};
  for (const auto& c : cases) {
    const pugi::xml_node unit = units.find_child_by_attribute("name", c.unit);
    EXPECT_NEAR(in_base_units(unit, c.value), c.in_base_units, 1e-12 * c.in_base_units) << c.unit;
    std::string exponents;
    for (const pugi::xml_attribute& attribute : unit.child("BaseUnit").attributes()) {
      const std::string name = attribute.name();
      if (name != "factor" && name != "offset") exponents += name + attribute.value() + " ";
    }
    EXPECT_EQ(exponents, c.exponents) << c.unit;
  }

  // Where a unit can be shown in another one of the list, both roads lead to the same value in base units.
  for (const pugi::xpath_node& node : units.select_nodes("Unit/DisplayUnit[@name = //Unit/@name]")) {
    const pugi::xml_node shown = node.node(), unit = shown.parent();
    const pugi::xml_node target = units.find_child_by_attribute("name", shown.attribute("name").value());
    const double value = shown.attribute("factor").as_double(1.0) * 20.0 + shown.attribute("offset").as_double();
    EXPECT_NEAR(in_base_units(target, value), in_base_units(unit, 20.0), 1e-12 * in_base_units(unit, 20.0))
        << unit.attribute("name").value() << " shown in " << target.attribute("name").value();
  }
}

TEST_F(Description, PageIsSoundAndNamesEveryVariable) {
  pugi::xml_document page;
  const pugi::xml_parse_result result = page.load_file(TESSERA_DESCRIBED_DIR "/index.html");
  ASSERT_TRUE(result) << result.description() << " at byte " << result.offset;
  for (const pugi::xpath_node& link : page.select_nodes("//@href")) {
    const std::string target = link.attribute().value();
    EXPECT_TRUE(page.select_node(("//*[@id='" + target.substr(1) + "']").c_str())) << target << " leads nowhere";
  }
  for (const pugi::xpath_node& name : document.select_nodes("//ScalarVariable[@causality != 'independent']/@name")) {
    const std::string text = name.attribute().value();
    EXPECT_TRUE(page.select_node(("//td/code[text()='" + text + "']").c_str())) << text << " is missing";
  }
}

}  // namespace
