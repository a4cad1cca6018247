#include "apps/sweep/journal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <thread>

#include "apps/runner/errors.h"
#include "apps/runner/result_file.h"
#include "apps/runner/text.h"
#include "apps/sweep/table.h"

namespace sweep {

using runner::Error;
using runner::ExitCode;
using std::chrono::steady_clock;

namespace {

/// A job that was killed may take a moment to go, with its lock.
bool lock(int descriptor) {
  for (int tries = 0; flock(descriptor, LOCK_EX | LOCK_NB) != 0; ++tries) {
    if ((errno != EWOULDBLOCK && errno != EINTR) || tries == 30) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return true;
}

/// The first line in which two texts differ: what the second one has there.
std::string first_difference(const std::string& before, const std::string& now) {
  const auto at = std::mismatch(before.begin(), before.end(), now.begin(), now.end()).second;
  const auto place = static_cast<std::size_t>(at - now.begin());
  const std::size_t start = place == 0 ? 0 : now.rfind('\n', place - 1) + 1;
  return std::string(runner::trimmed(std::string_view(now).substr(start, now.find('\n', place) - start)));
}

}  // namespace

Journal::Journal(const std::filesystem::path& file, const std::string& header, const std::string& plan, bool restart)
    : file_(file), descriptor_{open(file.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0666)} {
  if (descriptor_.value < 0) fail("write", errno);
  if (!lock(descriptor_.value)) {
    throw Error(ExitCode::kFile, "'" + file.string() + "' is in use: another sweep writes to this folder");
  }
  std::filesystem::path plan_file = file;
  plan_file.replace_extension(".plan");
  std::error_code ignored;
  if (restart) cut(0);
  if (std::filesystem::file_size(file, ignored) > 0) {
    const std::string before = read_file(plan_file.string());
    if (before != plan) {
      throw Error(ExitCode::kUsage, "'" + file.string() + "' holds points of another plan or unit; now '" +
                                        first_difference(before, plan) +
                                        "'. Give another folder, or --restart to drop them");
    }
  } else {
    runner::ResultFile stream(plan_file);  // on disk before the first row is
    stream.append(plan);
    stream.publish();
  }
  read(header + "\n");
  sync();
}

Journal::Descriptor::~Descriptor() {
  if (value >= 0) close(value);
}

void Journal::read(const std::string& header) {
  const std::string text = read_file(file_.string());
  const std::size_t whole = text.rfind('\n') + 1;
  if (whole != text.size()) cut(whole);
  if (whole == 0) return write(header);

  std::size_t number = 1;
  const auto damaged = [&](const std::string& how) {
    return Error(ExitCode::kFile, file_.string() + ":" + std::to_string(number) + ": " + how +
                                      "; remove the line, or give --restart to play all points again");
  };
  if (!text.starts_with(header)) throw damaged("these are not the columns of the plan");
  const std::size_t cells = csv_cells(header).size();
  for (std::size_t start = header.size(), end = 0; start < whole; start = end + 1) {
    ++number;
    end = text.find('\n', start);
    const std::string line = text.substr(start, end - start);
    const std::optional<unsigned> point = runner::parse_unsigned(std::string_view(line).substr(0, line.find(',')));
    if (!point || csv_cells(line).size() != cells) throw damaged("the line is damaged");
    rows_[*point] = line;
  }
}

void Journal::append(std::uint64_t point, const std::string& line) {
  write(line + "\n");
  rows_[point] = line;
  if (steady_clock::now() - last_sync_ > std::chrono::seconds(1)) sync();
}

void Journal::sync() {
  if (fdatasync(descriptor_.value) != 0) fail("write", errno);
  last_sync_ = steady_clock::now();
}

void Journal::write(std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(descriptor_.value, text.data(), text.size());
    if (count < 0 && errno != EINTR) fail("write", errno);
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  }
}

void Journal::cut(std::size_t size) {
  if (ftruncate(descriptor_.value, static_cast<off_t>(size)) != 0) fail("shorten", errno);
}

void Journal::fail(const std::string& what, int reason) const {
  throw Error(ExitCode::kFile, "cannot " + what + " '" + file_.string() + "': " + std::strerror(reason));
}

}  // namespace sweep
