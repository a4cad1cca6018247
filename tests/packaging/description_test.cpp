// modelDescription.xml out of the archive, against the FMI standard and against the library beside it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <pugixml.hpp>
#include <set>

#include "packaging/package.h"

namespace {

/// Identifiers joined by dots: the part of the structured naming convention that is in use here.
bool is_structured(const std::string& name) {
  bool begins = true;  // an identifier begins here, so that a letter must follow
  for (const char c : name) {
    const bool is_letter = std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '_';
    if (!is_letter && (begins || (c != '.' && std::isdigit(static_cast<unsigned char>(c)) == 0))) return false;
    begins = c == '.';
  }
  return !begins;
}

class Description : public ::testing::Test {
 protected:
  Description() {
    EXPECT_TRUE(document.load_file(file.c_str()));
    root = document.child("fmiModelDescription");
  }

  static std::map<std::string, std::string> attributes(pugi::xml_node node) {
    std::map<std::string, std::string> result;
    for (const pugi::xml_attribute& attribute : node.attributes()) result[attribute.name()] = attribute.value();
    return result;
  }

  const std::filesystem::path file = unpacked_unit() / "modelDescription.xml";
  pugi::xml_document document;
  pugi::xml_node root;
};

TEST_F(Description, FollowsTheSchema) {
  const char* schema = std::getenv("TESSERA_FMI2_SCHEMA");
  if (schema == nullptr) GTEST_SKIP() << "TESSERA_FMI2_SCHEMA does not name the folder of the FMI 2.0 schema";
  const Outcome outcome =
      run("xmllint --noout --schema '" + std::string(schema) + "/fmi2ModelDescription.xsd' '" + file.string() + "'");
  EXPECT_EQ(outcome.status, 0) << outcome.text;
}

TEST_F(Description, SaysWhatTheUnitCanDo) {
  EXPECT_EQ(attributes(root.child("CoSimulation")),
            (std::map<std::string, std::string>{{"modelIdentifier", "Tessera"},
                                                {"needsExecutionTool", "false"},
                                                {"canHandleVariableCommunicationStepSize", "true"},
                                                {"canInterpolateInputs", "false"},
                                                {"maxOutputDerivativeOrder", "0"},
                                                {"canRunAsynchronuously", "false"},
                                                {"canBeInstantiatedOnlyOncePerProcess", "true"},
                                                {"canNotUseMemoryManagementFunctions", "true"},
                                                {"canGetAndSetFMUstate", "false"},
                                                {"canSerializeFMUstate", "false"},
                                                {"providesDirectionalDerivative", "false"}}));
  EXPECT_TRUE(root.child("ModelExchange").empty());
  EXPECT_TRUE(root.attribute("generationDateAndTime").empty());  // the same sources give the same description
  EXPECT_EQ(attributes(root.child("DefaultExperiment")),
            (std::map<std::string, std::string>{
                {"startTime", "0"}, {"stopTime", "1998"}, {"tolerance", "0.0001"}, {"stepSize", "1"}}));
}

TEST_F(Description, ListsEveryCellOnceUnderALegalNameWithItsText) {
  std::set<std::string> names, types;
  for (const pugi::xml_node& type : root.child("TypeDefinitions")) types.insert(type.attribute("name").value());
  std::map<std::string, std::map<unsigned, std::string>> cells;
  unsigned position = 0;
  for (const pugi::xml_node& variable : root.child("ModelVariables")) {
    ++position;
    const std::string name = variable.attribute("name").value();
    const unsigned reference = variable.attribute("valueReference").as_uint();
    const std::string type = variable.first_child().name();
    EXPECT_TRUE(names.insert(name).second) << name << " appears twice";
    EXPECT_TRUE(cells[type].emplace(reference, name).second) << name << " has the reference of another variable";
    EXPECT_FALSE(types.contains(name)) << name << " is also a type";
    EXPECT_TRUE(is_structured(name)) << name;
    EXPECT_STRNE(variable.attribute("description").value(), "") << name;

    const std::string role = std::string(variable.attribute("causality").value()) + " " +
                             variable.attribute("variability").value() + " " + variable.attribute("initial").value();
    if (type == "Real" && reference < 146) {
      EXPECT_EQ(position, reference + 1) << name;
      EXPECT_EQ(role, "output continuous ") << name;
    } else {
      EXPECT_EQ(role, name == "time" ? "independent continuous " : "parameter tunable exact") << name;
      EXPECT_EQ(name == "time", type == "Real" && reference == 169) << name;
    }
  }
  ASSERT_EQ(cells.size(), 2U);
  ASSERT_EQ(cells["Real"].size(), 170U);
  ASSERT_EQ(cells["Boolean"].size(), 23U);
  EXPECT_EQ(cells["Real"].rbegin()->first, 169U);
  for (unsigned k = 0; k < 23; ++k) {  // Boolean k is the gate of Real 146 + k
    const std::string& gate = cells["Boolean"][k];
    ASSERT_TRUE(gate.ends_with("_gate")) << gate;
    EXPECT_EQ(cells["Real"][146 + k], gate.substr(0, gate.size() - 5) + "_set");
  }
}

TEST_F(Description, StartsAreWhatTheLibraryHolds) {
  const UnitLibrary unit(library_file(), root.attribute("guid").value());
  ASSERT_NE(unit.instance, nullptr) << "the library refuses the GUID of its description";
  for (const pugi::xml_node& variable : root.child("ModelVariables")) {
    const char* name = variable.attribute("name").value();
    const unsigned reference = variable.attribute("valueReference").as_uint();
    if (const pugi::xml_node boolean = variable.child("Boolean")) {
      EXPECT_EQ(unit.boolean(reference) != fmi2False, boolean.attribute("start").as_bool(true)) << name;
      continue;
    }
    const pugi::xml_node real = variable.child("Real");
    const bool is_parameter = std::string_view(variable.attribute("causality").value()) == "parameter";
    EXPECT_EQ(!real.attribute("start").empty(), is_parameter) << name;
    if (!is_parameter) continue;
    const double start = real.attribute("start").as_double(NAN);
    EXPECT_EQ(unit.real(reference), start) << name;
    EXPECT_LE(real.attribute("min").as_double(NAN), start) << name;
    EXPECT_GE(real.attribute("max").as_double(NAN), start) << name;
    EXPECT_GT(real.attribute("nominal").as_double(NAN), 0.0) << name;
  }
}

TEST_F(Description, StructureHoldsEveryOutputWithoutDependencies) {
  const pugi::xml_node structure = root.child("ModelStructure");
  for (const char* list : {"Outputs", "InitialUnknowns"}) {
    unsigned position = 0;
    for (const pugi::xml_node& unknown : structure.child(list)) {
      EXPECT_EQ(unknown.attribute("index").as_uint(), ++position);
      const pugi::xml_attribute dependencies = unknown.attribute("dependencies");
      EXPECT_EQ(!dependencies.empty(), std::string_view(list) == "Outputs");
      EXPECT_STREQ(dependencies.value(), "");
    }
    EXPECT_EQ(position, 146U) << list;
  }
}

TEST_F(Description, RealsShareTheUnitOfTheirTypeAndUnitsAreDefined) {
  const pugi::xml_node units = root.child("UnitDefinitions"), types = root.child("TypeDefinitions");
  const auto is_shown_in = [&](pugi::xml_node real) {
    const pugi::xml_node unit = units.find_child_by_attribute("name", real.attribute("unit").value());
    if (!unit || real.attribute("displayUnit").empty()) return !unit.empty();
    return !unit.find_child_by_attribute("DisplayUnit", "name", real.attribute("displayUnit").value()).empty();
  };
  for (const pugi::xml_node& type : types)
    EXPECT_TRUE(is_shown_in(type.child("Real"))) << type.attribute("name").value();
  for (const pugi::xml_node& variable : root.child("ModelVariables")) {
    const pugi::xml_node real = variable.child("Real");
    if (!real) continue;
    const pugi::xml_node type = types.find_child_by_attribute("name", real.attribute("declaredType").value());
    EXPECT_STREQ(real.attribute("unit").value(), type.child("Real").attribute("unit").value())
        << variable.attribute("name").value();
    EXPECT_TRUE(is_shown_in(real)) << variable.attribute("name").value();
  }
}

TEST_F(Description, UnitsConvertAsPhysicsHasIt) {
  struct Case {
    const char* unit;
    double value, in_base_units;
    std::map<std::string, std::string> exponents;
  };
  const Case cases[] = {{"bar", 1.01325, 101325.0, {{"kg", "1"}, {"m", "-1"}, {"s", "-2"}}},  // normal atmosphere
                        {"degC", 100.0, 373.15, {{"K", "1"}}},
                        {"%", 25.0, 0.25, {}},
                        {"kg/h", 7.2, 0.002, {{"kg", "1"}, {"s", "-1"}}},
                        {"l/min", 60.0, 0.001, {{"m", "3"}, {"s", "-1"}}},
                        {"V", 1.0, 1.0, {{"kg", "1"}, {"m", "2"}, {"s", "-3"}, {"A", "-1"}}},  // W/A
                        {"kW.h", 1.0, 3.6e6, {{"kg", "1"}, {"m", "2"}, {"s", "-2"}}},
                        {"rpm", 30.0, M_PI, {{"s", "-1"}, {"rad", "1"}}},
                        {"km/h", 36.0, 10.0, {{"m", "1"}, {"s", "-1"}}}};
  const pugi::xml_node units = root.child("UnitDefinitions");
  for (const Case& unit : cases) {
    auto base = attributes(units.find_child_by_attribute("name", unit.unit).child("BaseUnit"));
    EXPECT_NEAR(std::stod(base["factor"]) * unit.value + std::stod(base["offset"]), unit.in_base_units,
                1e-12 * unit.in_base_units)
        << unit.unit;
    base.erase("factor");
    base.erase("offset");
    EXPECT_EQ(base, unit.exponents) << unit.unit;
  }

  // Where a unit can be shown in another one of the list, both roads lead to the same value in base units.
  const auto in_base = [](pugi::xml_node unit, double value) {
    const pugi::xml_node base = unit.child("BaseUnit");
    return base.attribute("factor").as_double(1.0) * value + base.attribute("offset").as_double();
  };
  unsigned pairs = 0;
  for (const pugi::xml_node& unit : units) {
    for (const pugi::xml_node& shown : unit.children("DisplayUnit")) {
      const pugi::xml_node target = units.find_child_by_attribute("name", shown.attribute("name").value());
      if (!target) continue;
      ++pairs;
      const double value = shown.attribute("factor").as_double(1.0) * 20.0 + shown.attribute("offset").as_double();
      EXPECT_NEAR(in_base(target, value), in_base(unit, 20.0), 1e-12 * in_base(unit, 20.0))
          << unit.attribute("name").value() << " shown in " << target.attribute("name").value();
    }
  }
  EXPECT_GE(pairs, 8U);
}

}  // namespace
