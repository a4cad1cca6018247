#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "apps/runner/result_file.h"
#include "apps/runner/times.h"

namespace runner {

/// Writes results as the cross-check rules of FMI have it: separated by commas, the quoted names in the first line,
/// "time" in front, one line a communication point, numbers with the shortest digits that read back exactly.
class CsvWriter {
 public:
  /// @param file   receives the lines in large portions; must outlive the writer
  /// @param names  of the columns after the time
  CsvWriter(ResultFile& file, const std::vector<std::string_view>& names);

  /// Appends a line; `values` has one value a name.
  void row(Milliseconds time, std::span<const double> values);

  /// Hands to the file what is still kept back.
  void flush();

 private:
  ResultFile& file_;
  std::string buffer_;
  std::size_t used_ = 0;
  std::size_t row_bytes_;  ///< more than any row takes
};

}  // namespace runner
