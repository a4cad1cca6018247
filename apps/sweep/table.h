#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sweep {

/// A cell of a CSV line; quoted where its text needs it.
std::string csv_cell(std::string_view text);

/// A cell in quotes, as the column names are.
std::string csv_quoted(std::string_view text);

/// The cells of a CSV line, without quotes and the blanks around them.
std::vector<std::string> csv_cells(std::string_view line);

/// The whole content of a file. @throws Error kFile
std::string read_file(const std::string& name);

}  // namespace sweep
