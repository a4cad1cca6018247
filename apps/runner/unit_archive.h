#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

struct zip;

namespace runner {

/// A unit as a file: the zip archive (.fmu), open for reading.
class UnitArchive {
 public:
  /// Opens the archive and looks at its table of contents only.
  /// @throws Error kFile if the file is missing, is no archive, or if an entry could do harm when unpacked (a path that
  ///         leads out of the archive, a link, a name that comes twice or as a file and a folder, more than 1 GiB in
  ///         all) or is encrypted
  explicit UnitArchive(const std::filesystem::path& file);

  const std::filesystem::path& file() const { return file_; }
  const std::vector<std::string>& entries() const { return entries_; }
  bool contains(const std::string& entry) const;

  /// The platforms that the archive has a binary for, as a list for the reader: "linux64, win64"; empty if none.
  std::string platforms() const;

  /// The unpacked content of an entry.
  /// @throws Error kFile if there is no such entry or its content is damaged
  std::string read(const std::string& entry) const;

 private:
  struct Close {
    void operator()(zip* archive) const;
  };
  std::filesystem::path file_;
  std::unique_ptr<zip, Close> archive_;
  std::vector<std::string> entries_;
};

}  // namespace runner
