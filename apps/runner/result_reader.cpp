#include "apps/runner/result_reader.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <optional>
#include <set>
#include <string_view>

#include "apps/runner/errors.h"
#include "apps/runner/text.h"

namespace runner {

std::string read_file(const std::filesystem::path& file) {
  const auto refuse = [&](const std::string& reason) {
    throw Error(ExitCode::kFile, "cannot read '" + file.string() + "': " + reason);
  };
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) refuse("it is a folder");
  std::ifstream stream(file, std::ios::binary);
  if (!stream) refuse(std::strerror(errno));
  std::string text;
  constexpr std::size_t kPortion = std::size_t{1} << 20;
  while (stream) {
    const std::size_t size = text.size();
    text.resize(size + kPortion);
    stream.read(text.data() + size, kPortion);
    text.resize(size + static_cast<std::size_t>(stream.gcount()));
  }
  if (stream.bad()) refuse("the file cannot be read to its end");
  return text;
}

namespace {

/// Takes the lines of a CSV file apart, and knows where it is.
class Lines {
 public:
  Lines(const std::filesystem::path& file, std::string_view text) : file_(file) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    left_ = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
  }

  bool at_end() const { return left_.empty(); }

  void next() {
    const std::size_t end = std::min(left_.find('\n'), left_.size());
    line_ = left_.substr(0, end);
    left_.remove_prefix(std::min(end + 1, left_.size()));
    ++number_;
    has_cell_ = true;
  }

  /// Is there another cell in this line?
  bool has_cell() const { return has_cell_; }

  /// Takes the next cell, without blanks and quotes around it. Valid until the next call.
  std::string_view cell() {
    const std::string_view text = trimmed(line_);
    if (text.starts_with('"')) return quoted_cell(text.substr(1));
    const std::size_t comma = line_.find(',');
    const std::string_view content = trimmed(line_.substr(0, comma));
    drop(comma);
    return content;
  }

  [[noreturn]] void fail(const std::string& reason) const {
    throw Error(ExitCode::kFile, file_.string() + ": line " + std::to_string(number_) + ": " + reason);
  }

 private:
  std::string_view quoted_cell(std::string_view text) {
    unquoted_.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '"') {
        if (i + 1 == text.size() || text[i + 1] != '"') return close_quote(text.substr(i + 1));
        ++i;  // a doubled quote is one of the cell's own
      }
      unquoted_ += text[i];
    }
    fail("a quote is not closed");
  }

  std::string_view close_quote(std::string_view rest) {
    const std::size_t comma = rest.find(',');
    if (!trimmed(rest.substr(0, comma)).empty()) fail("a comma must follow the quoted '" + unquoted_ + "'");
    line_ = rest;
    drop(comma);
    return trimmed(unquoted_);
  }

  void drop(std::size_t comma) {
    has_cell_ = comma != std::string_view::npos;
    if (has_cell_) line_.remove_prefix(comma + 1);
  }

  const std::filesystem::path& file_;
  std::string_view left_, line_;
  std::string unquoted_;
  std::size_t number_ = 0;
  bool has_cell_ = false;
};

std::vector<std::string> read_header(Lines& lines) {
  std::vector<std::string> names;
  std::set<std::string_view> seen;
  lines.next();
  while (lines.has_cell()) names.emplace_back(lines.cell());
  std::string first = names.front();
  for (char& c : first) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  if (first != "time") {
    lines.fail("the first column is '" + names.front() + "', needed is \"time\", and commas between the columns");
  }
  for (const std::string& name : names) {
    if (name.empty()) lines.fail("a column has no name");
    if (!seen.insert(name).second) lines.fail("two columns are named '" + name + "'");
  }
  names.erase(names.begin());
  return names;
}

}  // namespace

ResultTable read_result_csv(const std::filesystem::path& file) {
  const std::string text = read_file(file);
  if (text.starts_with("PK")) {
    throw Error(ExitCode::kFile, file.string() + ": this is a zip archive, as .npz files are; needed is CSV");
  }
  Lines lines(file, text);
  if (lines.at_end()) throw Error(ExitCode::kFile, file.string() + ": the file is empty");

  ResultTable table;
  table.names = read_header(lines);
  table.columns.resize(table.names.size());
  if (lines.at_end()) throw Error(ExitCode::kFile, file.string() + ": there are no rows below the header");

  const auto value = [&](const std::string& column) {
    const std::string_view cell = lines.cell();
    const std::optional<double> number = cell.empty() ? std::numeric_limits<double>::quiet_NaN() : parse_number(cell);
    if (!number) lines.fail(column + ": '" + std::string(cell) + "' is no number");
    return *number;
  };
  while (!lines.at_end()) {
    lines.next();
    const double time = value("time");
    if (!std::isfinite(time)) lines.fail("the time is no finite number");
    if (!table.time.empty() && time < table.time.back()) {
      lines.fail("the time goes back, from " + number_text(table.time.back()) + " s to " + number_text(time) + " s");
    }
    table.time.push_back(time);
    std::size_t cells = 0;
    while (lines.has_cell() && cells < table.columns.size()) {
      table.columns[cells].push_back(value(table.names[cells]));
      ++cells;
    }
    if (lines.has_cell() || cells < table.columns.size()) {
      lines.fail("the row has " + std::string(lines.has_cell() ? "more" : "fewer") + " cells than the header (" +
                 std::to_string(table.columns.size() + 1) + ")");
    }
  }
  return table;
}

}  // namespace runner
