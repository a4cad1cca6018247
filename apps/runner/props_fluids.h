#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/AirHumide.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_class/Eau.h"
#include "Vk_lib/Vk_fl_prop_lib/fl_prop_calc.h"
#include "apps/runner/units.h"

namespace runner {

/// Whether two names are the same but for upper and lower case.
bool is_same_name(std::string_view a, std::string_view b);

/// What a state may consist of; the first three are the inputs of the property library, in its order.
enum InputIndex : std::size_t { kT, kP, kW, kX, kConcentration, kInputCount };

struct Input {
  const char* name;  ///< of the option, without the dashes
  const char* text;
  std::vector<Unit> units;  ///< SI first
};

/// In the order of InputIndex.
const std::array<Input, kInputCount>& inputs();

/// Inputs in SI units, as far as they are given.
using GivenState = std::array<std::optional<double>, kInputCount>;
using State = std::array<double, kInputCount>;

/// "T = 300 K"
std::string input_text(InputIndex input, double value);

/// A kind of fluid, as the property library counts them.
struct FluidType {
  struct Section {  ///< of a source file
    const char* key;
    std::size_t values;
    bool is_labelled = false;  ///< each number is behind a word
  };

  int code;
  const char* name;  ///< on the command line
  std::vector<InputIndex> inputs;
  std::size_t vector_length;      ///< of a record in a table file
  std::vector<Section> sections;  ///< of a source file; empty: the type has no files
};
const std::vector<FluidType>& fluid_types();

/// Names of the fluids of a type that need no file.
std::vector<std::string_view> built_in_fluids(const FluidType& type);

/// The properties of a type.
std::vector<Vk_fl_prop_lib::Quantity> properties(const FluidType& type);

/// What a state has outside the range of its fluid, and what the library makes of that.
struct Note {
  std::string state;  ///< "T = 200 K"
  std::string remark;
};

/// A fluid of the property library.
class Fluid {
 public:
  /// A fluid that needs no file; case does not count.
  /// @throws Error kUsage if there is none
  explicit Fluid(std::string_view name);

  /// A fluid from a source file, or the record `name` of a table file.
  /// @param type_name  of the FluidType; may be empty for a table file under the library's own name for it
  /// @throws Error kUsage if the type or the name is not known, kFile if the file cannot be read to its end
  Fluid(const std::string& name, const std::filesystem::path& file, const std::string& type_name);

  const std::string& name() const { return name_; }
  const FluidType& type() const { return *type_; }

  /// Fills in what may be left out: P, and for water also x.
  /// @throws Error kUsage if an input is missing or means nothing to this fluid
  State complete(const GivenState& given) const;

  /// Property number `index` of properties(type()).
  double value(std::size_t index, const State& state);
  double value(std::string_view symbol, const State& state);

  std::vector<Note> notes(const State& state);

 private:
  void read_source(const std::filesystem::path& path);
  void read_record(const std::filesystem::path& path);
  std::vector<Note> water_notes(const State& state) const;

  std::string name_;
  const FluidType* type_ = nullptr;
  std::vector<double> vector_;      // of brines, liquids and gases
  Vk_fl_prop_lib::CAirHumide air_;  // of moist air
  Vk_fl_prop_lib::CEau water_;
};

}  // namespace runner
