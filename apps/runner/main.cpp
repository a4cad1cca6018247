#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <iostream>

#include "apps/runner/command_line.h"
#include "apps/runner/errors.h"
#include "apps/runner/streams.h"

int main(int argc, char** argv) {
  using runner::ExitCode;
  runner::prepare_streams();
  ExitCode code = ExitCode::kFile;
  try {
    code = runner::run_command_line(argc, argv);
  } catch (const runner::Error& error) {
    std::cerr << "tessera: " << error.what() << "\n";
    code = error.code();
  } catch (const std::exception& error) {  // the file system or the memory
    std::cerr << "tessera: " << error.what() << "\n";
  }
  const bool is_told = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
  struct stat output = {};
  const bool is_pipe =
      fstat(STDOUT_FILENO, &output) == 0 && S_ISFIFO(output.st_mode);  // its reader may have had enough
  if (!is_told && !is_pipe && code == ExitCode::kOk) {
    std::cerr << "tessera: cannot write to standard output\n";
    code = ExitCode::kFile;
  }
  return static_cast<int>(code);
}
