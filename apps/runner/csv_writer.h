#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "apps/runner/result_writer.h"

namespace runner {

/// Writes results as the cross-check rules of FMI have it: separated by commas, the quoted names in the first line,
/// "time" in front, one line a communication point, numbers with the shortest digits that read back exactly.
class CsvWriter : public ResultWriter {
 public:
  /// @param file   receives the lines in large portions; must outlive the writer
  /// @param names  of the columns after the time
  CsvWriter(ResultFile& file, const std::vector<std::string_view>& names);

  void row(Milliseconds time, std::span<const double> values) override;
  void finish() override { flush(); }
  std::uint64_t rows() const override { return file_.lines() > 0 ? file_.lines() - 1 : 0; }

 private:
  void flush();

  ResultFile& file_;
  std::string buffer_;
  std::size_t used_ = 0;
  std::size_t row_bytes_;  ///< more than any row takes
};

}  // namespace runner
