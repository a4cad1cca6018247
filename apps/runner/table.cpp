#include "apps/runner/table.h"

#include <algorithm>
#include <cstddef>

namespace runner {
namespace {

/// Columns that a text takes on a terminal, counting each UTF-8 character as one.
std::size_t width(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

}  // namespace

std::string table_text(const std::vector<std::vector<std::string>>& rows, std::string_view alignment) {
  std::vector<std::size_t> widths(alignment.size());
  for (const auto& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], width(row[i]));
  }
  std::string text;
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string padding(widths[i] - width(row[i]), ' ');
      if (i > 0) line += "  ";
      line += alignment[i] == 'r' ? padding + row[i] : row[i] + padding;
    }
    text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}

}  // namespace runner
