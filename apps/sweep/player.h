#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "apps/sweep/job.h"

namespace sweep {

/// Option of the program that makes it a player; for its own use.
inline constexpr const char* kPlayOption = "--play-points";

/// A child process that plays one point after another, so that a unit that crashes or does not return harms nobody. A
/// new one is started when the old one is gone.
class Player {
 public:
  /// @param job      line of the Job
  /// @param timeout  wall time for a point; nullopt: any
  Player(std::string job, std::optional<std::chrono::milliseconds> timeout);
  ~Player() { stop(); }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  /// Plays a point.
  /// @param task     its line
  /// @param goes_on  asked every few milliseconds; if it answers false, the point is given up
  /// @return line of the outcome; nullopt if given up
  /// @throws runner::Error kFile if no process can be started
  std::optional<std::string> play(const std::string& task, const std::function<bool()>& goes_on);

 private:
  void start();
  int stop();
  bool send(const std::string& line);

  std::string job_;
  std::optional<std::chrono::milliseconds> timeout_;
  pid_t process_ = -1;
  int socket_ = -1;
};

/// The child's side: reads the job and tasks from standard input, a socket, and answers there, to its end.
/// @return exit code
int play_points();

}  // namespace sweep
