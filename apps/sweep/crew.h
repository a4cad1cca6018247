#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace sweep {

/// Points to be played and a place for their outcomes.
class Work {
 public:
  struct Item {
    std::uint64_t point;
    std::string task;  ///< line of a Task
  };
  virtual ~Work() = default;

  /// The next point; nullopt after the last.
  virtual std::optional<Item> next() = 0;

  /// Takes the line of an Outcome.
  virtual void done(std::uint64_t point, const std::string& outcome) = 0;

  /// Called every few milliseconds, at least every 50. If it answers false, points in play are given up.
  virtual bool goes_on() = 0;
};

/// Those who play points.
class Crew {
 public:
  virtual ~Crew() = default;

  /// Plays all points, each in a Player with this job and timeout.
  virtual void play(const std::string& job, std::optional<std::chrono::milliseconds> timeout, Work& work) = 0;

  /// How many points are in play at a time.
  virtual int players() const = 0;
};

/// One point after the other in this process' Player.
class Alone : public Crew {
 public:
  void play(const std::string& job, std::optional<std::chrono::milliseconds> timeout, Work& work) override;
  int players() const override { return 1; }
};

}  // namespace sweep
