#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace runner {

/// A file of lines, or of bytes in one piece, that takes its name only when it is complete: lines go to NAME.part,
/// publish() renames that to NAME. A former NAME stays untouched until then. If NAME is a device or a pipe, or leads
/// through /dev or /proc to a file that is open already, it is written directly.
class ResultFile {
 public:
  /// Opens NAME.part for writing, so that an impossible name shows before the run.
  /// @throws Error kFile if it cannot be opened or another process is writing it
  explicit ResultFile(const std::filesystem::path& name);
  ~ResultFile();  ///< removes a NAME.part in which there is nothing
  ResultFile(const ResultFile&) = delete;
  ResultFile& operator=(const ResultFile&) = delete;

  /// Appends whole lines, or all bytes at once. If not all of it can be written, NAME.part keeps the whole lines that
  /// fitted.
  /// @throws Error kFile naming the reason
  void append(std::string_view lines);

  /// Closes the file and gives it its name. @throws Error kFile if that fails; NAME.part then stays.
  void publish();

  /// Closes the file and removes it.
  void discard();

  std::uint64_t lines() const { return lines_; }  ///< in the file so far
  bool has_failed() const { return has_failed_; }
  bool is_direct() const { return is_direct_; }  ///< Is NAME written directly?

  /// Does NAME lead to where the program's standard output goes?
  bool is_standard_output() const { return is_standard_output_; }

  /// Where the lines are now: NAME.part, and NAME after publish().
  const std::filesystem::path& location() const { return location_; }

 private:
  [[noreturn]] void fail(const std::string& action, int reason);

  std::filesystem::path name_;
  std::filesystem::path location_;
  bool is_direct_;
  bool is_standard_output_ = false;
  int descriptor_;
  std::uint64_t size_ = 0;
  std::uint64_t lines_ = 0;
  bool has_failed_ = false;
};

}  // namespace runner
