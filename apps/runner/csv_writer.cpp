#include "apps/runner/csv_writer.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "apps/runner/text.h"

namespace runner {
namespace {

constexpr std::size_t kPortion = std::size_t{1} << 20;

std::string quoted(std::string_view name) {
  std::string result(1, '"');
  for (const char c : name) result.append(c == '"' ? 2 : 1, c);
  result += '"';
  return result;
}

}  // namespace

CsvWriter::CsvWriter(ResultFile& file, const std::vector<std::string_view>& names)
    : file_(file), row_bytes_((names.size() + 1) * (kNumberWidth + 1)) {
  std::string header = quoted("time");
  for (const std::string_view name : names) header.append(1, ',').append(quoted(name));
  header += '\n';
  used_ = header.size();
  buffer_ = std::move(header);
  buffer_.resize(std::max(kPortion, used_) + row_bytes_);
}

void CsvWriter::row(Milliseconds time, std::span<const double> values) {
  char* const start = buffer_.data() + used_;
  char* end = std::to_chars(start, start + kNumberWidth, seconds(time), std::chars_format::fixed).ptr;
  for (const double value : values) {
    *end++ = ',';
    end = write_number(end, value);
  }
  *end++ = '\n';
  used_ += static_cast<std::size_t>(end - start);
  if (used_ + row_bytes_ > buffer_.size()) flush();
}

void CsvWriter::flush() { file_.append(std::string_view(buffer_.data(), std::exchange(used_, 0))); }

}  // namespace runner
