#include "apps/runner/result_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "apps/runner/errors.h"

namespace runner {

namespace fs = std::filesystem;

ResultFile::ResultFile(const fs::path& name) : name_(name), descriptor_(-1) {
  std::error_code ignored;
  const fs::file_status status = fs::status(name, ignored);
  // What stands in these folders is another name of an open file, which cannot be replaced even if it is a regular one.
  const bool is_open_elsewhere = name.string().starts_with("/dev/") || name.string().starts_with("/proc/");
  is_direct_ = fs::exists(status) && (!fs::is_regular_file(status) || is_open_elsewhere);
  if (fs::is_directory(status)) throw Error(ExitCode::kFile, "cannot write '" + name.string() + "': it is a folder");
  if (!name.has_filename()) throw Error(ExitCode::kFile, "cannot write '" + name.string() + "': no name of a file");
  if (!is_direct_ && fs::is_symlink(name, ignored)) {
    name_ = fs::weakly_canonical(name);  // replace what the link leads to, not the link
  }
  location_ = name_;
  if (!is_direct_) location_ += ".part";

  descriptor_ = open(location_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  if (descriptor_ < 0) {
    const std::string reason =
        errno == ENOENT ? "there is no folder '" + name_.parent_path().string() + "'" : std::strerror(errno);
    throw Error(ExitCode::kFile, "cannot write '" + name.string() + "': " + reason);
  }
  if (is_direct_) {
    struct stat mine = {}, standard = {};
    is_standard_output_ = fstat(descriptor_, &mine) == 0 && fstat(STDOUT_FILENO, &standard) == 0 &&
                          mine.st_dev == standard.st_dev && mine.st_ino == standard.st_ino;
    return;
  }
  if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    close(descriptor_);
    throw Error(ExitCode::kFile, "cannot write '" + location_.string() + "': another run is writing it");
  }
  if (ftruncate(descriptor_, 0) != 0) fail("write", errno);
}

ResultFile::~ResultFile() {
  if (descriptor_ < 0) return;
  if (size_ == 0) {
    discard();
  } else {
    close(descriptor_);
  }
}

void ResultFile::append(std::string_view lines) {
  std::string_view left = lines;
  int reason = 0;
  while (!left.empty() && reason == 0) {
    const ssize_t count = write(descriptor_, left.data(), left.size());
    if (count >= 0) {
      left.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      reason = errno;
    }
  }
  std::string_view whole = lines.substr(0, lines.size() - left.size());
  if (reason != 0) whole = whole.substr(0, whole.rfind('\n') + 1);
  size_ += whole.size();
  lines_ += static_cast<std::uint64_t>(std::count(whole.begin(), whole.end(), '\n'));
  if (reason == 0) return;
  if (!is_direct_ && ftruncate(descriptor_, static_cast<off_t>(size_)) != 0) {
    fail("write", errno);
  }
  fail("write", reason);
}

void ResultFile::publish() {
  if (!is_direct_ && fsync(descriptor_) != 0) fail("write", errno);  // a full disk may show only here
  if (close(std::exchange(descriptor_, -1)) != 0) fail("write", errno);
  if (is_direct_) return;
  if (std::rename(location_.c_str(), name_.c_str()) != 0) fail("rename", errno);
  location_ = name_;
}

void ResultFile::discard() {
  close(std::exchange(descriptor_, -1));
  if (!is_direct_) unlink(location_.c_str());
}

void ResultFile::fail(const std::string& action, int reason) {
  has_failed_ = true;
  throw Error(ExitCode::kFile, "cannot " + action + " '" + location_.string() + "': " + std::strerror(reason));
}

}  // namespace runner
