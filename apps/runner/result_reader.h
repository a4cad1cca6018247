#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace runner {

/// Signals over time, a column each. Units are not part of it: a CSV file does not tell them.
struct ResultTable {
  std::vector<std::string> names;            ///< of the columns, without the time
  std::vector<double> time;                  ///< s; finite, never decreasing
  std::vector<std::vector<double>> columns;  ///< a column a name, a value a time
};

/// The bytes of a file.
/// @throws Error kFile naming the file and the reason
std::string read_file(const std::filesystem::path& file);

/// Reads a CSV file with signals over time, by this program or by others: the first line names the columns, the first
/// of them is "time". Cells are separated by commas and may be quoted; blanks around them, line ends of either kind, a
/// byte order mark and blank lines at the end do not count. Not-a-number and infinity may be spelt as usual; an empty
/// cell is not-a-number.
/// @throws Error kFile naming the file, the line and what is wrong
ResultTable read_result_csv(const std::filesystem::path& file);

}  // namespace runner
