#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace runner_test {

/// Results as read back from a CSV file; the column names are still quoted.
struct Table {
  std::vector<std::string> names;
  std::vector<std::vector<std::string>> rows;

  const std::string& at(std::size_t row, const std::string& name) const;
  const std::string& last(const std::string& name) const { return at(rows.size() - 1, name); }
};

/// A folder of its own for each test with the mock unit in it, and the program run inside it as a child process.
class ProgramTest : public ::testing::Test {
 protected:
  struct Outcome {
    int code;
    std::string output, errors;
  };

  ProgramTest();
  ~ProgramTest() override;

  /// Runs the program to its end; fails the test if it leaves anything in its folder for temporary files.
  Outcome tessera(const std::vector<std::string>& arguments);

  /// Runs it in the same way, but sends `signal` once standard error is not empty any more.
  Outcome tessera_with_signal(int signal, const std::vector<std::string>& arguments);

  /// Runs it with a limit on the size of the files it writes.
  Outcome tessera_with_file_limit(unsigned bytes, const std::vector<std::string>& arguments);

  std::filesystem::path path(const std::string& name) const { return folder_ / name; }
  bool exists(const std::string& name) const { return std::filesystem::exists(path(name)); }
  std::string read(const std::string& name) const;
  void write(const std::string& name, const std::string& content) const;
  Table results(const std::string& name = "results.csv") const;

  /// Packs an archive; `link`, if given, becomes a symbolic link among the entries.
  void pack(const std::string& name, const std::map<std::string, std::string>& entries,
            const std::string& link = "") const;

 private:
  Outcome start(const std::vector<std::string>& arguments, int signal, unsigned file_limit);

  std::filesystem::path folder_;
};

/// Model description of the mock unit, and the same with a part replaced.
std::string mock_description();
std::string mock_description(const std::string& part, const std::string& replacement);

std::string file_content(const std::filesystem::path& file);

}  // namespace runner_test
