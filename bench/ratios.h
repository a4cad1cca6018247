#pragma once

#include <vector>

/// The cost of one benchmark told as a multiple of another's from the same run.
struct Ratio {
  const char* benchmark;
  const char* reference;
  double limit;        ///< the multiple that the benchmark may cost; 0: told only
  double times = 1.0;  ///< how often the benchmark's work is part of the reference's
};

/// A cost that is told as a time.
struct Cost {
  const char* benchmark;
  const char* less;  ///< a benchmark whose time does not count; null: none
  double limit_us;
};

struct Figures {
  std::vector<Ratio> ratios;
  std::vector<Cost> costs;
};

// Each adds its benchmarks to the run. A benchmark reports its items (SetItemsProcessed), whose time is what counts.
// They answer what to report.
Figures add_fluid_benchmarks();
Figures add_step_benchmarks();
Figures add_shell_benchmarks();
