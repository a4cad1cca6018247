// Runs the benchmarks as many short repetitions in random order, and prints the least time of each per item, and the
// ratios of these beside what they should not exceed.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "ratios.h"

namespace {

class LeastTimes : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const double time = 1e9 / run.counters.at("items_per_second").value;
      const auto [least, is_new] = times_.emplace(run.run_name.function_name, time);
      if (!is_new) least->second = std::min(least->second, time);
    }
  }

  void print_times() const {
    std::printf("%-58s %8s\n", "least time", "ns");
    for (const auto& [name, ns] : times_) std::printf("%-58s %8.1f\n", name.c_str(), ns);
  }

  void print(const std::vector<Ratio>& ratios) const {
    std::printf("%-58s %8s %8s\n", "ratio", "", "limit");
    for (const auto& [name, reference, limit] : ratios) {
      const auto time = times_.find(name), reference_time = times_.find(reference);
      if (time == times_.end() || reference_time == times_.end()) continue;  // filtered out
      const double ratio = time->second / reference_time->second;
      const std::string both = std::string(name) + " / " + reference;
      std::printf("%-58s %8.2f %8.2f%s\n", both.c_str(), ratio, limit, ratio <= limit ? "" : "  above");
    }
  }

 private:
  std::map<std::string, double> times_;  // ns per item
};

}  // namespace

int main(int argc, char** argv) {
  std::vector<Ratio> ratios = add_fluid_benchmarks();
  std::ranges::copy(add_step_benchmarks(), std::back_inserter(ratios));
  char interleaved[] = "--benchmark_enable_random_interleaving=true";
  char repetitions[] = "--benchmark_repetitions=25";
  char min_time[] = "--benchmark_min_time=0.02";
  std::vector<char*> arguments(argv, argv + argc);
  arguments.insert(arguments.begin() + 1, {interleaved, repetitions, min_time});  // the caller's come later and win
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;

  LeastTimes least;
  benchmark::RunSpecifiedBenchmarks(&least);
  least.print_times();
  std::printf("\n");
  least.print(ratios);
  return 0;
}
