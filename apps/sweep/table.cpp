#include "apps/sweep/table.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "apps/runner/errors.h"
#include "apps/runner/text.h"

namespace sweep {

std::string csv_cell(std::string_view text) {
  return text.find_first_of("\",\r\n") == std::string_view::npos ? std::string(text) : csv_quoted(text);
}

std::string csv_quoted(std::string_view text) {
  std::string result(1, '"');
  for (const char c : text) result.append(c == '"' ? 2 : 1, c == '\n' || c == '\r' ? ' ' : c);  // a row is one line
  return result += '"';
}

std::vector<std::string> csv_cells(std::string_view line) {
  std::vector<std::string> cells(1);
  bool is_quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const bool is_quote = line[i] == '"';
    if (is_quote && is_quoted && line.substr(i + 1).starts_with('"')) {
      cells.back() += line[++i];
    } else if (is_quote) {
      is_quoted = !is_quoted;
    } else if (line[i] == ',' && !is_quoted) {
      cells.emplace_back();
    } else {
      cells.back() += line[i];
    }
  }
  for (std::string& cell : cells) cell = runner::trimmed(cell);
  return cells;
}

std::string read_file(const std::string& name) {
  std::ifstream stream(name, std::ios::binary);
  if (!stream) throw runner::Error(runner::ExitCode::kFile, name + ": " + std::strerror(errno));
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace sweep
