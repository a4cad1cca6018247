#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace runner {

/// Sets rows of cells as a table for a terminal, two blanks between the columns.
/// @param alignment  a letter a column: l to the left, r to the right
/// @return the lines, each with its line end
std::string table_text(const std::vector<std::vector<std::string>>& rows, std::string_view alignment);

}  // namespace runner
