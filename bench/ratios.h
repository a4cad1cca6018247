#pragma once

#include <vector>

/// The cost of one benchmark told as a multiple of another's from the same run.
struct Ratio {
  const char* benchmark;
  const char* reference;
  double limit;  ///< the multiple that the benchmark may cost
};

// Each adds its benchmarks to the run. A benchmark reports its items (SetItemsProcessed), whose time is what counts.
// They answer the ratios to report.
std::vector<Ratio> add_fluid_benchmarks();
std::vector<Ratio> add_step_benchmarks();
