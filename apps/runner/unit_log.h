#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fmi/fmi2.h"

namespace runner {

/// How much of what the unit says is told. kDebug also asks the unit to say more.
enum class LogLevel { kNothing, kError, kWarning, kInfo, kDebug };

/// Receives the messages of a unit. Without a file they go to standard error; with one they go there, and only warnings
/// and errors to standard error as well.
class UnitLog {
 public:
  /// @param level      messages beyond it are dropped before they are formatted
  /// @param file_name  log file, or empty for none
  /// @param before     called before each line on standard error
  /// @throws Error kFile if the file cannot be written
  UnitLog(LogLevel level, const std::string& file_name, std::function<void()> before);

  LogLevel level() const { return level_; }
  std::size_t error_count() const { return error_count_; }
  std::size_t warning_count() const { return warning_count_; }  ///< also of those that the level drops
  const std::string& last_error() const { return last_error_; }

  /// Closes the log file.
  /// @throws Error kFile if not all of it could be written
  void close();

  /// The callback to hand to the unit, with the UnitLog as the environment.
  static void callback(fmi2ComponentEnvironment environment, fmi2String instance_name, fmi2Status status,
                       fmi2String category, fmi2String message, ...);

 private:
  void take(LogLevel severity, const std::string& message);

  LogLevel level_;
  std::string file_name_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
  std::function<void()> before_;
  std::size_t error_count_ = 0;
  std::size_t warning_count_ = 0;
  std::string last_error_;
  std::string text_;  ///< message being formatted; grows as needed
};

}  // namespace runner
