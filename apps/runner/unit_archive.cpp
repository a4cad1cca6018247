#include "apps/runner/unit_archive.h"

#include <sys/stat.h>
#include <zip.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <set>

#include "apps/runner/errors.h"

namespace runner {
namespace {

constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 30;

/// Does the name stay inside the folder that the archive is unpacked to?
bool is_safe(const std::string& name) {
  if (name.empty() || name.find('\\') != std::string::npos || name.find(':') != std::string::npos) return false;
  const std::filesystem::path path = name;
  return path.is_relative() && std::find(path.begin(), path.end(), "..") == path.end();
}

bool is_link(zip_t* archive, zip_uint64_t index) {
  zip_uint8_t system = 0;
  zip_uint32_t attributes = 0;
  if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0) return false;
  return system == ZIP_OPSYS_UNIX && S_ISLNK(attributes >> 16);
}

bool starts_like_archive(const std::filesystem::path& file) {
  char head[2] = {};
  std::ifstream(file, std::ios::binary).read(head, sizeof head);
  return head[0] == 'P' && head[1] == 'K';
}

}  // namespace

void UnitArchive::Close::operator()(zip* archive) const { zip_discard(archive); }

UnitArchive::UnitArchive(const std::filesystem::path& file) : file_(file) {
  const auto refuse = [&](const std::string& reason) { throw Error(ExitCode::kFile, file.string() + ": " + reason); };
  if (!std::filesystem::exists(file)) refuse("no such file");
  if (std::filesystem::is_directory(file)) refuse("is a folder, not a unit");

  int code = 0;
  archive_.reset(zip_open(file.c_str(), ZIP_RDONLY, &code));
  if (!archive_) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    const std::string text = zip_error_strerror(&error);
    zip_error_fini(&error);
    refuse(code != ZIP_ER_NOZIP        ? text
           : starts_like_archive(file) ? "the archive is damaged or cut short"
                                       : "is no unit: it is not a zip archive");
  }

  std::uint64_t total = 0;
  std::set<std::string> names;
  const zip_int64_t count = zip_get_num_entries(archive_.get(), 0);
  for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(count); ++i) {
    zip_stat_t entry;
    if (zip_stat_index(archive_.get(), i, 0, &entry) != 0) refuse(zip_strerror(archive_.get()));
    if (!is_safe(entry.name)) refuse("entry '" + std::string(entry.name) + "' leads out of the archive");
    if (is_link(archive_.get(), i)) refuse("entry '" + std::string(entry.name) + "' is a link");
    if (entry.encryption_method != ZIP_EM_NONE) refuse("entry '" + std::string(entry.name) + "' is encrypted");
    if (!names.emplace(entry.name).second) refuse("entry '" + std::string(entry.name) + "' comes twice");
    if (entry.size > kMostBytes - total) {
      refuse("unpacks to more than 1 GiB, with entry '" + std::string(entry.name) + "'");
    }
    total += entry.size;
    entries_.emplace_back(entry.name);
  }
  for (const std::string& name : entries_) {
    for (std::size_t slash = name.find('/'); slash != std::string::npos; slash = name.find('/', slash + 1)) {
      if (names.contains(name.substr(0, slash))) refuse("entry '" + name + "' has a file for its folder");
    }
  }
}

bool UnitArchive::contains(const std::string& entry) const {
  return std::find(entries_.begin(), entries_.end(), entry) != entries_.end();
}

std::string UnitArchive::platforms() const {
  std::set<std::string> names;
  for (const std::string& entry : entries_) {
    const std::filesystem::path path = entry;
    auto part = path.begin();
    if (*part == "binaries" && ++part != path.end() && !part->empty()) names.insert(part->string());
  }
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + name;
  return list;
}

std::string UnitArchive::read(const std::string& entry) const {
  const auto refuse = [&](const std::string& reason) {
    throw Error(ExitCode::kFile, file_.string() + ": entry '" + entry + "': " + reason);
  };
  zip_stat_t about;
  if (zip_stat(archive_.get(), entry.c_str(), 0, &about) != 0) refuse(zip_strerror(archive_.get()));
  const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> source(zip_fopen(archive_.get(), entry.c_str(), 0),
                                                                 &zip_fclose);
  if (!source) refuse(zip_strerror(archive_.get()));

  // In portions, for the announced size may be a lie, and up to one byte beyond it: at the end the checksum is
  // compared.
  constexpr std::uint64_t kPortion = std::uint64_t{1} << 20;
  std::string content;
  zip_int64_t count = 1;
  while (count > 0) {
    const std::size_t size = content.size();
    content.resize(std::min(about.size + 1, size + kPortion));
    count = zip_fread(source.get(), content.data() + size, content.size() - size);
    if (count < 0) refuse(std::string("is damaged: ") + zip_file_strerror(source.get()));
    content.resize(size + static_cast<std::size_t>(count));
  }
  if (content.size() != about.size) refuse("is damaged: its size is not the announced one");
  return content;
}

}  // namespace runner
