#include "apps/sweep/mpi_crew.h"

#include <mpi.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

#include "apps/runner/errors.h"
#include "apps/sweep/player.h"

namespace sweep {
namespace {

constexpr int kLeader = 0;
constexpr std::chrono::milliseconds kNap{1};

/// What a message is.
enum Tag { kJob, kTask, kOutcome, kGiveUp, kEnd };

struct Message {
  int source, tag;
  std::string text;
};

void send(int to, Tag tag, const std::string& text) {
  MPI_Send(text.data(), static_cast<int>(text.size()), MPI_CHAR, to, tag, MPI_COMM_WORLD);
}

std::optional<Message> look(int source, int tag) {
  int is_there = 0;
  MPI_Status status;
  MPI_Iprobe(source, tag, MPI_COMM_WORLD, &is_there, &status);
  if (is_there == 0) return std::nullopt;
  int length = 0;
  MPI_Get_count(&status, MPI_CHAR, &length);
  Message message = {status.MPI_SOURCE, status.MPI_TAG, std::string(static_cast<std::size_t>(length), '\0')};
  MPI_Recv(message.text.data(), length, MPI_CHAR, message.source, message.tag, MPI_COMM_WORLD, MPI_STATUS_IGNORE);
  return message;
}

Message wait(int source, int tag) {
  for (;;) {
    if (std::optional<Message> message = look(source, tag)) return *std::move(message);
    std::this_thread::sleep_for(kNap);
  }
}

}  // namespace

bool is_started_by_mpi() {
  constexpr const char* kMarks[] = {"OMPI_COMM_WORLD_SIZE", "PMIX_RANK", "PMI_RANK"};
  return std::any_of(std::begin(kMarks), std::end(kMarks),
                     [](const char* mark) { return std::getenv(mark) != nullptr; });
}

MpiCrew::MpiCrew(int* argc, char*** argv) {
  MPI_Init(argc, argv);
  MPI_Comm_rank(MPI_COMM_WORLD, &rank_);
  MPI_Comm_size(MPI_COMM_WORLD, &size_);
  for (int rank = size_ - 1; rank > kLeader; --rank) free_.push_back(rank);
}

MpiCrew::~MpiCrew() { MPI_Finalize(); }

void MpiCrew::play(const std::string& job, std::optional<std::chrono::milliseconds> timeout, Work& work) {
  if (size_ == 1) return Alone().play(job, timeout, work);

  std::string setup = timeout ? std::to_string(timeout->count()) : "";
  setup.append(1, '\n').append(job);
  for (const int rank : free_) send(rank, kJob, setup);
  const auto take = [&](std::uint64_t point, const std::string& outcome) { work.done(point, outcome); };
  for (;;) {
    if (!work.goes_on()) return recall(take);
    while (!free_.empty()) {
      const std::optional<Work::Item> item = work.next();
      if (!item) break;
      busy_[free_.back()] = item->point;
      send(free_.back(), kTask, item->task);
      free_.pop_back();
    }
    if (busy_.empty()) return;
    if (const std::optional<Message> message = look(MPI_ANY_SOURCE, kOutcome)) {
      const std::uint64_t point = busy_.extract(message->source).mapped();
      free_.push_back(message->source);
      take(point, message->text);
    } else {
      std::this_thread::sleep_for(kNap);
    }
  }
}

/// Followers answer a point that they give up with an empty outcome.
void MpiCrew::recall(const std::function<void(std::uint64_t point, const std::string& outcome)>& take) {
  for (const auto& [rank, point] : busy_) send(rank, kGiveUp, "");
  while (!busy_.empty()) {
    const Message message = wait(MPI_ANY_SOURCE, kOutcome);
    const std::uint64_t point = busy_.extract(message.source).mapped();
    if (!message.text.empty()) take(point, message.text);
  }
}

void MpiCrew::dismiss(int exit_code) {
  recall([](std::uint64_t, const std::string&) {});
  for (int rank = kLeader + 1; rank < size_; ++rank) send(rank, kEnd, std::to_string(exit_code));
}

int MpiCrew::follow() {
  std::unique_ptr<Player> player;
  for (;;) {
    const Message message = wait(kLeader, MPI_ANY_TAG);
    if (message.tag == kEnd) return std::stoi(message.text);
    if (message.tag == kJob) {
      const std::size_t line = message.text.find('\n');
      std::optional<std::chrono::milliseconds> timeout;
      if (line > 0) timeout = std::chrono::milliseconds(std::stoll(message.text));
      player = std::make_unique<Player>(message.text.substr(line + 1), timeout);
    } else if (message.tag == kTask) {
      std::string outcome;
      try {
        outcome = player->play(message.text, [] { return !look(kLeader, kGiveUp); }).value_or("");
      } catch (const runner::Error& error) {
        outcome = to_line(Outcome{kUnplayable, error.what(), {}});
      }
      send(kLeader, kOutcome, outcome);
    }  // else to give up a point whose outcome is already on its way
  }
}

}  // namespace sweep
