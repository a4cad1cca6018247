#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "apps/sweep/crew.h"

namespace sweep {

/// Was this process started by mpirun or another starter of MPI processes?
bool is_started_by_mpi();

/// The processes of an MPI job: process 0 leads and hands points to whoever is free, the others play them. Whoever
/// waits sleeps between looks: a message passing library by itself would keep a core busy with waiting.
class MpiCrew : public Crew {
 public:
  MpiCrew(int* argc, char*** argv);
  ~MpiCrew() override;
  MpiCrew(const MpiCrew&) = delete;
  MpiCrew& operator=(const MpiCrew&) = delete;

  bool leads() const { return rank_ == 0; }

  /// For the leader. Without followers the points are played one after the other.
  void play(const std::string& job, std::optional<std::chrono::milliseconds> timeout, Work& work) override;
  int players() const override { return size_ > 1 ? size_ - 1 : 1; }

  /// For the leader: ends the followers, who give up what they play.
  void dismiss(int exit_code);

  /// For the others: plays what the leader hands out until dismissed.
  /// @return exit code that the leader told
  int follow();

 private:
  void recall(const std::function<void(std::uint64_t point, const std::string& outcome)>& take);

  int rank_ = 0;
  int size_ = 1;
  std::vector<int> free_;              ///< followers without a point
  std::map<int, std::uint64_t> busy_;  ///< followers with theirs
};

}  // namespace sweep
