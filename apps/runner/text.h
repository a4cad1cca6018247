#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace runner {

/// The text without the blanks around it.
std::string_view trimmed(std::string_view text);

/// The number at the start of `text`; `rest` receives what follows it, without blanks. Independent of the locale.
/// @return nullopt if the text does not start with a number
std::optional<double> leading_number(std::string_view text, std::string_view& rest);

/// The number that the whole text spells; nullopt if it is none.
std::optional<double> parse_number(std::string_view text);

/// The non-negative integer that the whole text spells in decimal digits; nullopt if it is none or beyond 32 bits.
std::optional<unsigned> parse_unsigned(std::string_view text);

/// The most characters that write_number() needs.
inline constexpr std::size_t kNumberWidth = 32;

/// Writes the shortest digits that read back as exactly `value` ("nan", "inf" and "-inf" if it is not finite).
/// @param first  start of at least kNumberWidth writable characters
/// @return the end of what was written
char* write_number(char* first, double value);
std::string number_text(double value);

/// Fewest insertions, deletions and replacements that turn `a` into `b`; upper and lower case count as equal.
std::size_t edit_distance(std::string_view a, std::string_view b);

/// Hint for a misspelt name: "; did you mean 'x', 'y' or 'z'?" with up to three candidates that are close, the closest
/// first. Empty if none is close.
std::string did_you_mean(std::string_view name, const std::vector<std::string_view>& candidates);

/// Does the name equal the pattern, or match it as a shell pattern with *, ? and [...]?
bool matches_pattern(const std::string& name, const std::string& pattern);

}  // namespace runner
