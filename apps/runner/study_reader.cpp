#include "apps/runner/study_reader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>

#include "apps/runner/errors.h"
#include "apps/runner/text.h"

namespace runner {
namespace {

/// Takes the next row of cells off a stream; false at its end. `line` counts the lines that were read.
bool next_row(std::istream& stream, std::vector<std::string>& cells, std::size_t& line) {
  cells.assign(1, "");
  bool is_quoted = false;
  char c = 0;
  while (stream.get(c)) {
    if (c == '\n') ++line;
    if (c == '"') {
      const bool is_doubled = is_quoted && stream.peek() == '"';
      if (is_doubled) cells.back() += static_cast<char>(stream.get());
      if (!is_doubled) is_quoted = !is_quoted;
    } else if (is_quoted || (c != ',' && c != '\n' && c != '\r')) {
      cells.back() += c;
    } else if (c == ',') {
      cells.emplace_back();
    } else if (c == '\n' && (cells.size() > 1 || !cells.front().empty())) {
      return true;
    }
  }
  return cells.size() > 1 || !cells.front().empty();
}

}  // namespace

bool StudyTable::is_numeric(std::size_t column) const {
  const std::vector<std::string>& cells = columns[column];
  const auto is_empty = [](const std::string& cell) { return cell.empty(); };
  const auto fits = [&](const std::string& cell) { return is_empty(cell) || parse_number(cell); };
  return std::all_of(cells.begin(), cells.end(), fits) && !std::all_of(cells.begin(), cells.end(), is_empty);
}

StudyTable read_study_csv(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw Error(ExitCode::kFile, "cannot read '" + file.string() + "': " + std::strerror(errno));
  StudyTable table;
  std::size_t line = 1;
  next_row(stream, table.names, line);
  if (table.names.front() != "point") {
    throw Error(ExitCode::kFile,
                file.string() + ": the first column is '" + table.names.front() + "', needed is \"point\"");
  }
  table.columns.resize(table.names.size());
  std::vector<std::string> cells;
  for (std::size_t first = line; next_row(stream, cells, line); first = line) {
    if (cells.size() != table.names.size()) {
      throw Error(ExitCode::kFile, file.string() + ": line " + std::to_string(first) + ": the row has " +
                                       std::to_string(cells.size()) + " cells, the header " +
                                       std::to_string(table.names.size()));
    }
    for (std::size_t i = 0; i < cells.size(); ++i) table.columns[i].push_back(std::move(cells[i]));
  }
  if (table.columns.front().empty()) {
    throw Error(ExitCode::kFile, file.string() + ": there are no rows below the header");
  }
  return table;
}

}  // namespace runner
