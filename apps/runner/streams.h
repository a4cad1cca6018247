#pragma once

namespace runner {

/// What a program begins with, so that its streams can harm no results. A closed pipe and a file at its size limit
/// become errors of write(), which are told, instead of a sudden end. Closed standard streams keep their numbers, which
/// the results would take otherwise, with the messages in them: they read as ended, and writing to them fails.
void prepare_streams();

}  // namespace runner
