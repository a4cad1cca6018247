#include <signal.h>

#include <cstdio>
#include <exception>
#include <iostream>
#include <string_view>

#include "apps/runner/errors.h"
#include "apps/runner/streams.h"
#include "apps/sweep/command_line.h"
#include "apps/sweep/mpi_crew.h"
#include "apps/sweep/player.h"

namespace {

int lead(int argc, char** argv, sweep::Crew& crew) {
  using runner::ExitCode;
  ExitCode code = ExitCode::kFile;
  try {
    code = sweep::run_command_line(argc, argv, crew);
  } catch (const runner::Error& error) {
    std::cerr << "tessera-sweep: " << error.what() << "\n";
    code = error.code();
  } catch (const std::exception& error) {  // the file system or the memory
    std::cerr << "tessera-sweep: " << error.what() << "\n";
  }
  std::fflush(stdout);
  return static_cast<int>(code);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == sweep::kPlayOption) return sweep::play_points();

  runner::prepare_streams();
  if (!sweep::is_started_by_mpi()) {
    sweep::Alone alone;
    return lead(argc, argv, alone);
  }
  sweep::MpiCrew crew(&argc, &argv);
  if (!crew.leads()) {
    for (const int number : {SIGINT, SIGTERM}) signal(number, SIG_IGN);  // the leader gets them too and tells the end
    return crew.follow();
  }
  const int code = lead(argc, argv, crew);
  crew.dismiss(code);
  return code;
}
