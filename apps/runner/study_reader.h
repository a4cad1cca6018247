#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace runner {

/// The points of a parameter study, a row each; cells as they stand in the file, without their quotes.
struct StudyTable {
  std::vector<std::string> names;
  std::vector<std::vector<std::string>> columns;  ///< a column a name, a cell a point

  /// Is every cell of the column a number or empty, and at least one a number?
  bool is_numeric(std::size_t column) const;
};

/// Reads a CSV file whose first column is "point". A quoted cell may hold commas, line ends and doubled quotes.
/// @throws Error kFile naming the file, the line and what is wrong
StudyTable read_study_csv(const std::filesystem::path& file);

}  // namespace runner
