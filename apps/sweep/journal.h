#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace sweep {

/// The rows of the points that are done, on disk: one line a point in the order of their end, behind a line of column
/// names. It is locked as long as it is open. The file beside it that ends in .plan tells what the rows belong to.
class Journal {
 public:
  /// Opens or begins the journal and reads what it holds. A last line that was cut off is dropped.
  /// @param plan     text that names everything on which rows depend
  /// @param restart  drop the rows that there are
  /// @throws Error kFile if another job has it open, if it cannot be written, or if a line is damaged; kUsage if it
  ///         belongs to another plan
  Journal(const std::filesystem::path& file, const std::string& header, const std::string& plan, bool restart);
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  /// The line of each point that is done, without the line feed. Of a point that was played again, the last.
  const std::map<std::uint64_t, std::string>& rows() const { return rows_; }

  /// Appends the line of a point. It is on disk within a second, and when the process is killed at once.
  /// @throws Error kFile
  void append(std::uint64_t point, const std::string& line);

  /// Waits until all lines are on disk. @throws Error kFile
  void sync();

 private:
  void read(const std::string& header);
  void write(std::string_view text);
  void cut(std::size_t size);
  [[noreturn]] void fail(const std::string& what, int reason) const;

  struct Descriptor {
    int value;
    ~Descriptor();
  };

  std::filesystem::path file_;
  Descriptor descriptor_;
  std::map<std::uint64_t, std::string> rows_;
  std::chrono::steady_clock::time_point last_sync_;
};

}  // namespace sweep
