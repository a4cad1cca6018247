// Many runs in one process, and two units in one.

#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "reliability/loaded_unit.h"

namespace {

struct Memory {
  long resident;     ///< kB
  std::size_t heap;  ///< bytes in use; the sanitizers' own heap, which looks for leaks itself, answers 0
};

Memory memory_now() {
  long total = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return {resident * (sysconf(_SC_PAGESIZE) / 1024), mallinfo2().uordblks};
}

TEST(Soak, ThousandsOfRunsTakeNoMemoryAndStayTheSame) {
  LoadedUnit unit(TESSERA_BINARY);
  const Rows first = unit.run(100, 1);
  unit.reset();
  Memory early{};
  for (int cycle = 1; cycle <= 2000; ++cycle) {
    ASSERT_EQ(unit.run(100, 1), first) << cycle;
    if (cycle % 2 == 0) {
      unit.reset();
    } else {
      unit.free();
      unit.instantiate();
    }
    if (cycle == 100) early = memory_now();
  }
  const Memory late = memory_now();
  std::printf("heap in use %zu -> %zu bytes, resident %ld -> %ld kB\n", early.heap, late.heap, early.resident,
              late.resident);
  EXPECT_EQ(late.heap, early.heap);
  EXPECT_NE(first.front(), first.back());
}

/// Plays from 0 again and again and expects the same outputs each second.
void expect_same_runs(int count, int duration_ms) {
  LoadedUnit unit(TESSERA_BINARY);
  const Rows first = unit.run(duration_ms, 1000);
  for (int i = 1; i < count; ++i) {
    unit.reset();
    EXPECT_EQ(unit.run(duration_ms, 1000), first) << i;
  }
}

TEST(Soak, ALongerRunStaysTheSame) { expect_same_runs(2, 60'000); }
TEST(Soak, DISABLED_TheScenarioStaysTheSame) { expect_same_runs(5, 1'998'000); }

// What quiet_step_test.sh looks at: the system calls between the two words are the unit's.
TEST(QuietStep, SaysWhenTheStepsBeginAndEnd) {
  LoadedUnit unit(TESSERA_BINARY);
  unit.initialize();
  ASSERT_EQ(write(STDOUT_FILENO, "first\n", 6), 6);
  for (int ms = 0; ms < 100'000; ++ms) unit.step(1);
  ASSERT_EQ(write(STDOUT_FILENO, "last\n", 5), 5);
}

TEST(TwoUnits, FromTwoFilesAreIndependent) {
  const auto copied = [](const std::string& name) {
    const auto file = std::filesystem::temp_directory_path() / (name + std::to_string(getpid()) + ".so");
    std::filesystem::copy_file(TESSERA_BINARY, file);
    return file.string();
  };
  const std::string files[] = {copied("hill"), copied("cold")};
  LoadedUnit hill(files[0]), cold(files[1]);
  for (const std::string& file : files) std::filesystem::remove(file);

  hill.open(input::road_slope, 2.5);
  const Rows hill_alone = hill.run(20'000, 100);
  hill.reset();
  cold.open(input::ambient_temperature, -15.0);
  const Rows cold_alone = cold.run(20'000, 100);
  cold.reset();
  ASSERT_NE(hill_alone, cold_alone);

  hill.initialize();
  cold.initialize();
  for (std::size_t i = 0; i < hill_alone.size(); ++i) {
    ASSERT_EQ(hill.step(100), hill_alone[i]) << i;
    ASSERT_EQ(cold.step(100), cold_alone[i]) << i;
  }
}

}  // namespace
