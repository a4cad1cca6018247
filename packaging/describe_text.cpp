// Texts of single rows.

#include <array>
#include <charconv>
#include <cmath>

#include "packaging/describe.h"

std::string join(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return text;
}

std::string number(double value) {
  const double size = std::fabs(value);
  const bool plain = size == 0.0 || (size >= 1e-4 && size < 1e9);
  std::array<char, 32> digits;
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                          plain ? std::chars_format::fixed : std::chars_format::scientific);
  return std::string(digits.data(), end);
}

std::string_view title(OutputGroup group) {
  switch (group) {
    case OutputGroup::hydrogen:
      return "Hydrogen side";
    case OutputGroup::air:
      return "Air side";
    case OutputGroup::cooling:
      return "Stack and coolant";
    case OutputGroup::electrical:
      return "Electrical network";
    case OutputGroup::displays:
      return "Inputs in force, monitors and fixed figures";
  }
  return "";
}

std::string parameter_text(std::size_t k) {
  const InputRow& row = kInputs[k];
  return join({row.text, "; in force while ", row.gate, " is true"});
}

std::string gate_text(std::size_t k) {
  return join({"true: takes ", kInputs[k].parameter, " instead of the built-in source"});
}
