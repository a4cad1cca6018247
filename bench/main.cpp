// Runs the benchmarks as many short repetitions in random order, and prints the least time of each per item, ratios and
// costs of these beside what they should not exceed.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "limit.h"
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
    for (const auto& [name, reference, limit, times] : ratios) {
      if (!has(name) || !has(reference)) continue;
      const std::string count = times == 1.0 ? "" : std::to_string(static_cast<int>(times)) + " x ";
      print_line(count + name + " / " + reference, times * time(name) / time(reference), limit);
    }
  }

  void print(const std::vector<Cost>& costs) const {
    std::printf("%-58s %8s %8s\n", "cost", "us", "limit");
    for (const auto& [name, less, limit_us] : costs) {
      if (!has(name) || (less != nullptr && !has(less))) continue;
      const double ns = less != nullptr ? time(name) - time(less) : time(name);
      print_line(less != nullptr ? std::string(name) + " - " + less : name, 1e-3 * ns, limit_us);
    }
  }

 private:
  bool has(const char* name) const { return times_.contains(name); }  // else it was filtered out
  double time(const char* name) const { return times_.at(name); }

  static void print_line(const std::string& what, double value, double limit) {
    if (limit == 0.0) {
      std::printf("%-58s %8.3f\n", what.c_str(), value);
    } else {
      std::printf("%-58s %8.3f %8.2f%s\n", what.c_str(), value, limit, value <= limit ? "" : "  above");
    }
  }

  std::map<std::string, double> times_;  // ns per item
};

double checksum_of_limit() {
  LimitState state = limit_start();
  for (int i = 0; i < 3000; ++i) limit_evaluation(state);
  return checksum(state);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<Figures> all = {add_fluid_benchmarks(), add_step_benchmarks(), add_shell_benchmarks()};
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
  for (const auto& [ratios, costs] : all) {
    std::printf("\n");
    least.print(ratios);
    if (!costs.empty()) least.print(costs);
  }
  std::printf("\nchecksum of the arithmetic alone: %.17g\n", checksum_of_limit());
  return 0;
}
