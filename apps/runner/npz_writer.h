#pragma once

#include <string>
#include <vector>

#include "apps/runner/result_writer.h"

namespace runner {

/// Writes results as numpy's .npz, a zip archive with an array a column: NAME.npy, of 64 bit floating point numbers,
/// and time.npy in front. The rows are kept in memory until the end, since an array stands in one piece.
class NpzWriter : public ResultWriter {
 public:
  /// @param file   receives the archive; must outlive the writer
  /// @param names  of the columns after the time
  /// @throws Error kFile if two columns would have the same name
  NpzWriter(ResultFile& file, const std::vector<std::string_view>& names);

  void row(Milliseconds time, std::span<const double> values) override;

  /// @throws Error kFile if the file cannot be written
  void finish() override;
  std::uint64_t rows() const override { return rows_; }

 private:
  ResultFile& file_;
  std::vector<std::string> names_;  ///< with the time in front
  std::vector<std::vector<double>> columns_;
  std::uint64_t rows_ = 0;  ///< written
};

}  // namespace runner
