#include "apps/sweep/crew.h"

#include "apps/sweep/player.h"

namespace sweep {

void Alone::play(const std::string& job, std::optional<std::chrono::milliseconds> timeout, Work& work) {
  Player player(job, timeout);
  while (work.goes_on()) {
    const std::optional<Work::Item> item = work.next();
    if (!item) return;
    const std::optional<std::string> outcome = player.play(item->task, [&] { return work.goes_on(); });
    if (outcome) work.done(item->point, *outcome);
  }
}

}  // namespace sweep
