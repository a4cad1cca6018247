#include "apps/runner/props_fluids.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <stdexcept>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluidFile.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/IdG.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Liquide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/eau_ifc67_tables.h"
#include "Vk_lib/Vk_fl_prop_lib/fluid_tables.h"
#include "apps/runner/errors.h"
#include "apps/runner/text.h"

namespace runner {
namespace {

using namespace Vk_fl_prop_lib;
namespace fs = std::filesystem;

enum TypeCode { kBrine = 1, kLiquid = 2, kGas = 3, kWater = 4, kMoistAir = 6 };

constexpr double kStandardPressure = 101325;  // Pa

template <class Vector>
constexpr auto values(const Vector& vector) {
  return std::bit_cast<std::array<double, sizeof(Vector) / sizeof(double)>>(vector);
}
constexpr auto kO2 = values(kO2_IDG), kN2 = values(kN2_IDG), kH2 = values(kH2_IDG);
constexpr auto kGlycerol = values(kGlycerol_Water), kGlycol = values(kEthylene_Glycol_Water);
constexpr auto kAir = values(kMoist_Air);

struct BuiltIn {
  std::string_view name;
  int type;
  std::span<const double> vector;
};
constexpr BuiltIn kBuiltIns[] = {{"O2_IDG", kGas, kO2},
                                 {"N2_IDG", kGas, kN2},
                                 {"H2_IDG", kGas, kH2},
                                 {"Moist_Air", kMoistAir, kAir},
                                 {"Glycerol_Water", kBrine, kGlycerol},
                                 {"Ethylene_Glycol_Water", kBrine, kGlycol},
                                 {"Water", kWater, {}}};

struct WaterProperty {
  Quantity quantity;
  double (*value)(const CEau& water, double T, double P, double x);
};
constexpr WaterProperty kWaterProperties[] = {
    {{"v", "specific volume", "m3/kg"}, [](auto& f, double T, double P, double x) { return f.vTP(T, P, x); }},
    {{"h", "specific enthalpy", "J/kg"}, [](auto& f, double T, double P, double x) { return f.hTP(T, P, x); }},
    {{"s", "specific entropy", "J/(kg K)"}, [](auto& f, double T, double P, double x) { return f.sTP(T, P, x); }},
    {{"u", "specific internal energy", "J/kg"}, [](auto& f, double T, double P, double x) { return f.uTP(T, P, x); }},
    {{"cp", "specific heat at constant pressure", "J/(kg K)"},
     [](auto& f, double T, double P, double x) { return f.CpTP(T, P, x); }},
    {{"lambda", "thermal conductivity", "W/(m K)"},
     [](auto& f, double T, double P, double x) { return f.lambdaTP(T, P, x); }},
    {{"mu", "dynamic viscosity", "Pa s"}, [](auto& f, double T, double P, double x) { return f.muTP(T, P, x); }},
    {{"t_sat", "saturation temperature at P", "K"}, [](auto& f, double, double P, double) { return f.tSat(P); }},
    {{"p_sat", "saturation pressure at T", "Pa"}, [](auto& f, double T, double P, double) { return f.pSat(T, P); }},
};

struct CriticalPoint {
  explicit CriticalPoint(const CEau& water) { water.GetCritic(&P, &T, &v); }
  double P = 0, T = 0, v = 0;
};

// Range of the water equations beyond the limits that CEau tells.
constexpr double kLiquidTMax = 623.15, kSteamTMax = 1073.15;  // K
constexpr double kWaterPMax = 1e8;                            // Pa
constexpr double kSaturationPMin = 611.0;                     // Pa, below it tSat has no start
constexpr double kSaturationTolerance = 1e-3;                 // for pressures that are given with few digits

/// The highest pressure of the steam equations: saturation, and above 623.15 K the boundary to the dense fluid.
double steam_limit(const CEau& water, double T) {
  if (T <= kLiquidTMax) return water.pSat(T, 0);
  const CriticalPoint critical(water);
  const double theta = T / critical.T;
  return critical.P * (kIfc67.L[0] + kIfc67.L[1] * theta + kIfc67.L[2] * theta * theta);
}

std::string quoted(const fs::path& path) { return "'" + path.string() + "'"; }

Error unreadable(const fs::path& path, const std::string& reason) {
  return {ExitCode::kFile, quoted(path) + ": " + reason};
}

const FluidType& type_with_code(int code) {
  const auto& types = fluid_types();
  return *std::find_if(types.begin(), types.end(), [&](const FluidType& type) { return type.code == code; });
}

/// The type that is named, or else the one whose table files have the name of this file.
const FluidType& type_of_file(const fs::path& path, const std::string& name) {
  std::string list;
  for (const FluidType& type : fluid_types()) {
    if (type.sections.empty()) continue;
    if (name.empty() ? path.filename() == table_file(type.code) : is_same_name(name, type.name)) return type;
    list += (list.empty() ? "" : ", ") + std::string(type.name);
  }
  throw Error(ExitCode::kUsage, name.empty() ? quoted(path) + ": give the --type of the fluid, one of " + list
                                             : "--type '" + name + "': the types are " + list);
}

bool has_section(const fs::path& path, const FluidType& type) {
  FluidFile file("", path.c_str());
  if (!file.is_open()) throw unreadable(path, "cannot be opened");
  const auto is_key = [&](const char* word) {
    return std::any_of(type.sections.begin(), type.sections.end(),
                       [&](const FluidType::Section& section) { return std::string_view(section.key) == word; });
  };
  const char* word = file.word();
  while (word != nullptr && !is_key(word)) word = file.word();
  return word != nullptr;
}

/// Goes through a source file as the library will, which without a key or a number would wait for it for ever.
void check_source(const fs::path& path, const FluidType& type) {
  FluidFile file("", path.c_str());
  std::string previous;
  for (const auto& [key, count, is_labelled] : type.sections) {
    const char* word = file.word();
    while (word != nullptr && std::string_view(word) != key) word = file.word();
    if (word == nullptr) throw unreadable(path, std::string("lacks the section ") + key + previous);
    for (std::size_t i = 1; i <= count; ++i) {
      double value = 0;
      if (is_labelled ? file.labelled_number(value) : file.number(value)) continue;
      throw unreadable(path, "section " + std::string(key) + ": value " + std::to_string(i) + " of " +
                                 std::to_string(count) + " is no number");
    }
    previous = std::string(" behind the section ") + key;
  }
}

template <class SourceFluid>
std::vector<double> source_vector(SourceFluid fluid, FluidFile& file) {
  fluid.loadFile(file);
  const auto vector = values(fluid.coefficients());
  return {vector.begin(), vector.end()};
}

}  // namespace

bool is_same_name(std::string_view a, std::string_view b) { return edit_distance(a, b) == 0; }

const std::array<Input, kInputCount>& inputs() {
  const auto unit = [](const char* name, double factor = 1, double offset = 0) {
    return Unit{name, BaseUnit{{}, factor, offset}, {}};
  };
  static const std::array<Input, kInputCount> rows = {{
      {"T", "temperature", {unit("K"), unit("degC", 1, 273.15)}},
      {"P",
       "pressure",
       {unit("Pa"), unit("hPa", 1e2), unit("mbar", 1e2), unit("kPa", 1e3), unit("bar", 1e5), unit("MPa", 1e6)}},
      {"w", "humidity ratio, water per dry air", {unit("kg/kg"), unit("g/kg", 1e-3)}},
      {"x", "vapour quality, 0 liquid to 1 vapour", {unit("1")}},
      {"concentration", "concentration of a brine", {unit("percent"), unit("%")}},
  }};
  return rows;
}

std::string input_text(InputIndex input, double value) {
  const auto& [name, text, units] = inputs()[input];
  return std::string(name) + " = " + number_text(value) + (units[0].name == "1" ? "" : " " + units[0].name);
}

const std::vector<FluidType>& fluid_types() {
  static const std::vector<FluidType> rows = {
      {kGas,
       "gas",
       {kT, kP},
       kO2.size(),
       {{"FLUID_CONSTANTS", 7, true}, {"SPEC_HEAT", 6}, {"CONDUCTIVITY", 6}, {"VISCOSITY", 6}}},
      {kMoistAir,
       "moist_air",
       {kT, kP, kW},
       kAir.size(),
       {{"FLUID_CONSTANTS", 6, true}, {"SPEC_HEAT", 2}, {"SATURATION_LINE", 3}}},
      {kBrine,
       "brine",
       {kT, kP, kConcentration},
       kGlycol.size(),
       {{"FLUID_CONSTANTS", 1, true}, {"COEFFICIENTS", 90}, {"REFERENCE", 3}, {"LIMITS_CONCENTRATION", 2}}},
      {kLiquid,
       "liquid",
       {kT, kP},
       sizeof(LiquidVector) / sizeof(double),
       {{"FLUID_CONSTANTS", 7, true}, {"DENSITY", 6}, {"SPEC_HEAT", 6}, {"CONDUCTIVITY", 6}, {"VISCOSITY", 6}}},
      {kWater, "water", {kT, kP, kX}, 0, {}},
  };
  return rows;
}

std::vector<std::string_view> built_in_fluids(const FluidType& type) {
  std::vector<std::string_view> names;
  for (const BuiltIn& fluid : kBuiltIns) {
    if (fluid.type == type.code) names.push_back(fluid.name);
  }
  return names;
}

std::vector<Quantity> properties(const FluidType& type) {
  const auto codes = property_codes(type.code);
  std::vector<Quantity> result(codes.begin(), codes.end());
  if (type.code != kWater) return result;
  for (const WaterProperty& property : kWaterProperties) result.push_back(property.quantity);
  return result;
}

Fluid::Fluid(std::string_view name) {
  const auto* found = std::find_if(std::begin(kBuiltIns), std::end(kBuiltIns),
                                   [&](const BuiltIn& fluid) { return is_same_name(fluid.name, name); });
  if (found == std::end(kBuiltIns)) {
    std::vector<std::string_view> names;
    for (const BuiltIn& fluid : kBuiltIns) names.push_back(fluid.name);
    const std::string hint = did_you_mean(name, names);
    throw Error(ExitCode::kUsage, "'" + std::string(name) + "': there is no such fluid without --file" +
                                      (hint.empty() ? "; 'tessera props --list' has those there are" : hint));
  }
  name_ = found->name;
  type_ = &type_with_code(found->type);
  vector_.assign(found->vector.begin(), found->vector.end());
  if (type_->code == kMoistAir) air_.initCoeffs(vector_.data());
}

Fluid::Fluid(const std::string& name, const fs::path& file, const std::string& type_name) : name_(name) {
  std::error_code error;
  const fs::file_status status = fs::status(file, error);
  if (status.type() == fs::file_type::not_found) throw unreadable(file, "no such file");
  if (!fs::is_regular_file(status)) throw unreadable(file, error ? error.message() : "is no regular file");
  type_ = &type_of_file(file, type_name);
  has_section(file, *type_) ? read_source(file) : read_record(file);
}

void Fluid::read_source(const fs::path& path) {
  check_source(path, *type_);
  FluidFile file("", path.c_str());
  switch (type_->code) {
    case kBrine:
      vector_ = source_vector(CBrine(0.0), file);
      return;
    case kLiquid:
      vector_ = source_vector(CLiquide(), file);
      return;
    case kGas:
      vector_ = source_vector(CIdG(), file);
      return;
    default:  // moist air, whose vector lacks a value of the file
      air_.loadFile(file);
  }
}

void Fluid::read_record(const fs::path& path) {
  vector_.assign(type_->vector_length, std::numeric_limits<double>::quiet_NaN());
  std::vector<char> message(name_.size() + 100);
  if (getCoeffs(type_->code, name_.c_str(), path.c_str(), vector_.data(), message.data()) != 0) {
    throw Error(ExitCode::kUsage, quoted(path) + ": " + message.data() +
                                      " It has no section of a source file of type " + type_->name + " either");
  }
  const auto missing = std::find_if(vector_.begin(), vector_.end(), [](double value) { return std::isnan(value); });
  if (missing != vector_.end()) {
    throw unreadable(path, "record " + name_ + ": value " + std::to_string(missing - vector_.begin() + 1) + " of " +
                               std::to_string(vector_.size()) + " is no number");
  }
  if (type_->code == kMoistAir) air_.initCoeffs(vector_.data());
}

State Fluid::complete(const GivenState& given) const {
  State state{};
  for (std::size_t i = 0; i < kInputCount; ++i) {
    const auto& [name, text, units] = inputs()[i];
    const std::string option = std::string("--") + name;
    const bool is_used = std::find(type_->inputs.begin(), type_->inputs.end(), i) != type_->inputs.end();
    if (given[i] && !is_used) throw Error(ExitCode::kUsage, option + ": means nothing to " + name_);
    if (!given[i] && is_used && i != kP && i != kX) {
      throw Error(ExitCode::kUsage, name_ + " needs " + option + ", the " + text + " [" + units[0].name + "]");
    }
    state[i] = given[i].value_or(0);
  }
  const double T = state[kT];
  if (!given[kP]) state[kP] = given[kX] ? water_.pSat(T, 0) : kStandardPressure;
  if (type_->code == kWater && !given[kX]) {
    const bool is_liquid = T < CriticalPoint(water_).T && state[kP] > water_.pSat(T, 0);
    state[kX] = is_liquid ? 0 : 1;
  }
  return state;
}

double Fluid::value(std::size_t index, const State& state) {
  if (type_->code == kWater) return kWaterProperties[index].value(water_, state[kT], state[kP], state[kX]);
  double result = 0;
  char message[64] = "";
  const int code = static_cast<int>(index) + 1;
  const Fl_data data = {name_.c_str(), type_->code, vector_.data(), state[kConcentration]};
  const bool is_done = type_->code == kMoistAir
                           ? cal_AirHumide(air_, state[kT], state[kP], state[kW], code, &result, message)
                           : !fl_prop_calc(&data, state.data(), code, &result, message);
  if (!is_done) throw std::logic_error(message);
  return result;
}

double Fluid::value(std::string_view symbol, const State& state) {
  const std::vector<Quantity> all = properties(*type_);
  const auto found = std::find_if(all.begin(), all.end(), [&](const Quantity& q) { return symbol == q.symbol; });
  return value(static_cast<std::size_t>(found - all.begin()), state);
}

std::vector<Note> Fluid::notes(const State& state) {
  if (type_->code == kWater) return water_notes(state);
  std::vector<Note> result;
  const auto add = [&](InputIndex input, const std::string& what, double used) {
    result.push_back({input_text(input, state[input]), what + "; the library used " + input_text(input, used)});
  };
  const auto clipped = [&](InputIndex input, double low, double high) {
    if (state[input] < low) add(input, "below the limit of " + name_, low);
    if (state[input] > high) add(input, "above the limit of " + name_, high);
  };

  if (state[kP] <= 0) add(kP, "not above 0", kLowest);
  switch (type_->code) {
    case kMoistAir:
      clipped(kT, kAirTMin, kAirTMax);
      clipped(kP, std::numeric_limits<double>::lowest(), kAirPMax);
      clipped(kW, 0, std::numeric_limits<double>::max());
      break;
    case kBrine: {
      if (state[kT] <= 0) add(kT, "not above 0", kLowest);
      const double low = value("c_min", state), high = value("c_max", state), freezing = value("t_freeze", state);
      if (state[kConcentration] < low || state[kConcentration] > high) {
        result.push_back({input_text(kConcentration, state[kConcentration]),
                          "outside the limits of " + name_ + ", " + number_text(low) + " to " + number_text(high) +
                              " percent; the library used it as it is"});
      }
      if (state[kT] < freezing) {
        result.push_back({input_text(kT, state[kT]) + ", freezing at " + number_text(freezing) + " K",
                          "below freezing; the library used the liquid's laws"});
      }
      break;
    }
    default:
      clipped(kT, value("t_min", state), value("t_max", state));
  }
  return result;
}

std::vector<Note> Fluid::water_notes(const State& state) const {
  std::vector<Note> result;
  const auto note = [&](bool is_outside, InputIndex input, const std::string& remark, const std::string& more = "") {
    if (is_outside) result.push_back({input_text(input, state[input]) + more, remark});
  };
  const double T = state[kT], P = state[kP], x = state[kX];
  const bool has_liquid = x < 1;
  const bool has_steam = x > 0;
  const std::string as_it_is = "; the library used it as it is";
  note(T < water_.GetTmin(), kT, "below the limit of Water, " + number_text(water_.GetTmin()) + " K" + as_it_is);
  note(T > kSteamTMax, kT, "above the limit of steam, " + number_text(kSteamTMax) + " K" + as_it_is);
  note(has_liquid && T > kLiquidTMax, kT,
       "above the limit of the liquid, " + number_text(kLiquidTMax) + " K" + as_it_is);
  note(P <= 0, kP, "not above 0" + as_it_is);
  note(P > kWaterPMax, kP, "above the limit of Water, " + number_text(kWaterPMax) + " Pa" + as_it_is);
  note(x < 0, kX, "below 0; the library used 0, the liquid");
  note(x > 1, kX, "above 1; the library used 1, the vapour");

  const double saturation = water_.pSat(T, 0);
  const std::string at_saturation = ", saturation at " + number_text(saturation) + " Pa";
  const bool is_below = P < saturation * (1 - kSaturationTolerance);
  const bool is_above = P > saturation * (1 + kSaturationTolerance);
  const double limit = steam_limit(water_, T);
  if (has_liquid && has_steam) {
    note(is_below || is_above, kP, "not on the saturation line; the library mixed liquid and vapour at this T and P",
         at_saturation);
  } else {
    note(has_liquid && is_below, kP, "no liquid below saturation; the library continued the liquid's laws",
         at_saturation);
    note(has_steam && P > limit * (1 + kSaturationTolerance), kP,
         "above the limit of steam at this T; the library continued the laws of steam",
         ", limit at " + number_text(limit) + " Pa");
  }
  const double p_max = CriticalPoint(water_).P;
  note(P < kSaturationPMin || P > p_max, kP,
       "outside the saturation line, " + number_text(kSaturationPMin) + " to " + number_text(p_max) +
           " Pa; t_sat does not hold and mu may not");
  return result;
}

}  // namespace runner
