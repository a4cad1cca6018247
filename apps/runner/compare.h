#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/runner/exit_codes.h"
#include "apps/runner/result_reader.h"

namespace runner {

/// What deviation of a result from its reference is allowed, as the command line says it.
struct Tolerances {
  double rtol = 1e-6;  ///< relative to the absolute value of the reference
  double atol = 1e-9;  ///< in the signal's unit
  /// PATTERN=rtol:R,atol:A or one of the two alone; the last that matches a signal counts, and leaves the other one as
  /// it is above.
  std::vector<std::string> per_signal;
};

/// A tolerance as text; nullopt if it is no number of at least 0.
std::optional<double> parse_tolerance(std::string_view text);
inline constexpr const char* kToleranceNeeds = "needed is a number of at least 0";

/// A result and the reference that it must agree with.
///
/// A value deviates by |value - reference|; allowed is the larger one of atol and rtol |reference|. Of each signal the
/// sample counts whose ratio of the two is the largest. Values that are not finite agree with their own kind only.
/// Times are the same when they are within 1e-9 s, or 1e-9 of their value beyond one second. A signal or a time that
/// one of the two lacks is a finding.
class Comparison {
 public:
  /// @param signals  patterns of the signals to compare; empty: all
  /// @throws Error kUsage if an entry of `tolerances` cannot be read or matches no signal of the reference
  Comparison(ResultTable reference, const Tolerances& tolerances, const std::vector<std::string>& signals);

  /// Leaves the rows of the reference before `time` [s] out.
  void start_at(double time);

  /// Compares and prints what deviates, the worst signal first, and what is missing.
  /// @return kOk or kFindings
  ExitCode print(const ResultTable& result) const;

 private:
  struct Limit {
    double rtol, atol;
  };
  struct Deviation {
    std::string name;
    double ratio = 0.0;  ///< of deviation and allowed
    double value = 0.0, reference = 0.0, time = 0.0;
    double allowed = 0.0;
  };
  /// Reads the part of an entry behind the equals sign, which is at position `equals`.
  static Limit read_limit(const std::string& text, std::size_t equals, const Tolerances& tolerances);
  bool is_compared(const std::string& name) const;

  ResultTable reference_;
  std::vector<Limit> limits_;  ///< one a signal of the reference
  std::vector<std::string> signals_;
};

struct CompareOptions {
  std::filesystem::path result, reference;
  Tolerances tolerances;
  std::vector<std::string> signals;
};

/// Reads two CSV files with results, compares and prints.
/// @return kOk or kFindings
/// @throws Error kFile if a file cannot be read, kUsage as Comparison does
ExitCode compare(const CompareOptions& options);

}  // namespace runner
