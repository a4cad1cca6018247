#include "apps/runner/streams.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace runner {

void prepare_streams() {
  signal(SIGPIPE, SIG_IGN);
  signal(SIGXFSZ, SIG_IGN);
  int descriptor = STDIN_FILENO;
  while (descriptor >= STDIN_FILENO && descriptor <= STDERR_FILENO) descriptor = open("/dev/null", O_RDONLY);
  close(descriptor);
}

}  // namespace runner
