#include "apps/sweep/player.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "apps/runner/errors.h"

namespace sweep {

using runner::Error;
using runner::ExitCode;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

/// How a process ended that should not have.
std::string end_text(int status) {
  if (!WIFSIGNALED(status)) return "the process ended with exit code " + std::to_string(WEXITSTATUS(status));
  const int signal = WTERMSIG(status);
  return "the process was ended by signal " + std::to_string(signal) + " (" + strsignal(signal) + ")";
}

std::string failure(const char* status, const std::string& reason) { return to_line(Outcome{status, reason, {}}); }

}  // namespace

Player::Player(std::string job, std::optional<milliseconds> timeout) : job_(std::move(job)), timeout_(timeout) {}

void Player::start() {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    throw Error(ExitCode::kFile, std::string("cannot make a socket: ") + std::strerror(errno));
  }
  // A new program and not a mere fork: message passing libraries do not allow their process to be copied.
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDIN_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  std::string program = "/proc/self/exe", name = "tessera-sweep", option = kPlayOption;
  std::array<char*, 3> arguments = {name.data(), option.data(), nullptr};
  const int problem = posix_spawn(&process_, program.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  socket_ = ends[0];
  if (problem != 0) {
    process_ = -1;
    stop();
    throw Error(ExitCode::kFile, std::string("cannot start a process: ") + std::strerror(problem));
  }
  send(job_);
}

/// @return how the process ended, as waitpid() has it
int Player::stop() {
  if (socket_ >= 0) close(std::exchange(socket_, -1));
  if (process_ < 0) return 0;
  int status = 0;
  kill(process_, SIGKILL);  // does nothing to one that has ended already
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
  return status;
}

bool Player::send(const std::string& line) {
  const std::string text = line + "\n";
  for (std::size_t sent = 0; sent < text.size();) {
    const ssize_t count = ::send(socket_, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
    if (count < 0 && errno != EINTR) return false;
    if (count > 0) sent += static_cast<std::size_t>(count);
  }
  return true;
}

std::optional<std::string> Player::play(const std::string& task, const std::function<bool()>& goes_on) {
  constexpr milliseconds kLook{20};
  const auto begin = steady_clock::now();
  if (process_ < 0) start();
  if (!send(task)) {  // the process died while it had nothing to do: that is not this point's fault
    stop();
    start();
    send(task);
  }

  std::string answer;
  while (!answer.ends_with('\n')) {
    if (!goes_on()) {
      stop();
      return std::nullopt;
    }
    milliseconds wait = kLook;
    if (timeout_) {
      const auto left = std::chrono::ceil<milliseconds>(begin + *timeout_ - steady_clock::now());
      if (left.count() <= 0) {
        stop();
        return failure(kTimeOut, "no end within " + std::to_string(timeout_->count()) + " ms");
      }
      wait = std::min(wait, left);
    }
    pollfd readable = {socket_, POLLIN, 0};
    if (poll(&readable, 1, static_cast<int>(wait.count())) <= 0) continue;
    std::array<char, 4096> part;
    const ssize_t count = recv(socket_, part.data(), part.size(), 0);
    if (count > 0) answer.append(part.data(), static_cast<std::size_t>(count));
    if (count > 0 || (count < 0 && errno == EINTR)) continue;
    const int status = stop();
    if (!goes_on()) return std::nullopt;  // what ends this program may have reached the child first
    return failure(kCrashed, end_text(status));
  }
  answer.pop_back();
  try {
    if (outcome_of(answer).status == kOk) return answer;
  } catch (const std::exception&) {
    answer = failure(kCrashed, "the process gave an answer that is none");
  }
  stop();  // a unit that failed may have left its process in any state
  return answer;
}

}  // namespace sweep
