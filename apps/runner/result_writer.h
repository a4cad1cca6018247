#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "apps/runner/result_file.h"
#include "apps/runner/times.h"

namespace runner {

/// Writes rows of results in some format.
class ResultWriter {
 public:
  ResultWriter() = default;
  virtual ~ResultWriter() = default;
  ResultWriter(const ResultWriter&) = delete;
  ResultWriter& operator=(const ResultWriter&) = delete;

  /// Appends a row; `values` has one value a name.
  virtual void row(Milliseconds time, std::span<const double> values) = 0;

  /// Hands to the file what is still kept back.
  virtual void finish() = 0;

  /// Rows that are in the file by now.
  virtual std::uint64_t rows() const = 0;
};

/// The writer for the format that the ending of a file's name asks for: .npz, and CSV for any other.
/// @param file   receives the results; must outlive the writer
/// @param names  of the columns after the time
std::unique_ptr<ResultWriter> make_result_writer(const std::filesystem::path& name, ResultFile& file,
                                                 const std::vector<std::string_view>& names);

}  // namespace runner
