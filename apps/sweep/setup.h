#pragma once

#include <chrono>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

#include "apps/runner/model_description.h"
#include "apps/runner/simulation.h"
#include "apps/sweep/job.h"
#include "apps/sweep/plan.h"
#include "apps/sweep/study.h"

namespace sweep {

/// A plan with its unit, checked so far that its points can be played. Points are counted from 1.
class Setup {
 public:
  /// @throws runner::Error kUsage or kFile naming what is wrong
  explicit Setup(Plan plan);
  Setup(const Setup&) = delete;  // the study refers to the description
  Setup& operator=(const Setup&) = delete;

  std::uint64_t count() const { return study_.count(); }
  const std::vector<Column>& columns() const { return columns_; }
  std::string job_line() const;

  /// Longest wall time of a point.
  std::optional<std::chrono::milliseconds> timeout() const;

  Task task(std::uint64_t point) const;

  /// Lines of the table of results, without line feed.
  std::string header() const;
  std::string row(std::uint64_t point, const Outcome& outcome) const;

  /// A text that is the same for two setups exactly if they give the same rows.
  std::string text() const;

  /// What the setup adds to the record beside the results.
  nlohmann::ordered_json record() const;

 private:
  const std::vector<const runner::Variable*>& inputs() const { return study_.inputs(); }
  runner::Plan settle() const;

  Plan plan_;
  runner::ModelDescription description_;
  Study study_;
  runner::Plan settled_;
  std::vector<Column> columns_;
  Job job_;
};

}  // namespace sweep
