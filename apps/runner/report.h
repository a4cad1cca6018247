#pragma once

#include <filesystem>
#include <vector>

namespace runner {

struct ReportOptions {
  std::vector<std::filesystem::path> results;  ///< runs to lay over each other, or the table of one study
  std::filesystem::path page = "report.html";
};

/// Writes a page that shows results: charts of runs, or the points of a study. It holds all that it needs. What
/// X.meta.json beside X.csv tells stands on it too.
/// @throws Error kFile if a result cannot be read or the page cannot be written, kUsage if results do not go together
void report(const ReportOptions& options);

}  // namespace runner
