#pragma once

namespace runner {

/// From now on SIGINT and SIGTERM are noted instead of ending the program. A second one of the same kind ends it.
void note_ending_signals();

/// The signal that came first, or 0.
int noted_signal();

}  // namespace runner
