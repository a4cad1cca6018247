#include "apps/runner/unit_log.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <utility>

#include "apps/runner/errors.h"

namespace runner {
namespace {

LogLevel severity_of(fmi2Status status) {
  switch (status) {
    case fmi2OK:
    case fmi2Pending:
      return LogLevel::kInfo;
    case fmi2Warning:
    case fmi2Discard:
      return LogLevel::kWarning;
    default:
      return LogLevel::kError;
  }
}

constexpr const char* kLevelNames[] = {"nothing", "error", "warning", "info", "debug"};

}  // namespace

UnitLog::UnitLog(LogLevel level, const std::string& file_name, std::function<void()> before)
    : level_(level), file_name_(file_name), file_(nullptr, &std::fclose), before_(std::move(before)) {
  if (file_name.empty()) return;
  file_.reset(std::fopen(file_name.c_str(), "w"));
  if (!file_) throw Error(ExitCode::kFile, "cannot write the log file '" + file_name + "': " + std::strerror(errno));
}

void UnitLog::close() {
  if (!file_) return;
  const bool bad = std::ferror(file_.get()) != 0;
  if (std::fclose(file_.release()) != 0 || bad) {
    throw Error(ExitCode::kFile, "the log file '" + file_name_ + "' could not be written to its end");
  }
}

void UnitLog::callback(fmi2ComponentEnvironment environment, fmi2String, fmi2Status status, fmi2String,
                       fmi2String message, ...) {
  UnitLog& log = *static_cast<UnitLog*>(environment);
  const LogLevel severity = severity_of(status);
  if (severity == LogLevel::kWarning) ++log.warning_count_;
  // Every communication step brings two lines of information: they must cost nothing when nobody wants them.
  if ((severity > log.level_ && severity != LogLevel::kError) || message == nullptr) return;

  va_list arguments, again;
  va_start(arguments, message);
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, message, arguments);
  log.text_.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
  std::vsnprintf(log.text_.data(), log.text_.size() + 1, message, again);
  va_end(again);
  va_end(arguments);
  while (!log.text_.empty() && log.text_.back() == '\n') log.text_.pop_back();
  log.take(severity, log.text_);
}

void UnitLog::take(LogLevel severity, const std::string& message) {
  if (severity == LogLevel::kError) {
    ++error_count_;
    last_error_ = message;
  }
  if (severity > level_) return;
  const char* name = kLevelNames[static_cast<std::size_t>(severity)];
  if (file_) std::fprintf(file_.get(), "[%s] %s\n", name, message.c_str());
  if (!file_ || severity <= LogLevel::kWarning) {
    if (before_) before_();
    std::fprintf(stderr, "[%s] %s\n", name, message.c_str());
  }
}

}  // namespace runner
