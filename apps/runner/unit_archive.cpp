#include "apps/runner/unit_archive.h"

#include <sys/stat.h>
#include <zip.h>

#include <algorithm>
#include <cstdint>
#include <fstream>

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
  const zip_int64_t count = zip_get_num_entries(archive_.get(), 0);
  for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(count); ++i) {
    zip_stat_t entry;
    if (zip_stat_index(archive_.get(), i, 0, &entry) != 0) refuse(zip_strerror(archive_.get()));
    if (!is_safe(entry.name)) refuse("entry '" + std::string(entry.name) + "' leads out of the archive");
    if (is_link(archive_.get(), i)) refuse("entry '" + std::string(entry.name) + "' is a link");
    if (entry.size > kMostBytes - total) refuse("unpacks to more than 1 GiB");
    total += entry.size;
    entries_.emplace_back(entry.name);
  }
}

bool UnitArchive::contains(const std::string& entry) const {
  return std::find(entries_.begin(), entries_.end(), entry) != entries_.end();
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

  // One byte more than announced: the end must be seen, for that is where the checksum is compared.
  std::string content(about.size + 1, '\0');
  std::uint64_t size = 0;
  zip_int64_t count = 0;
  while (size < content.size() && (count = zip_fread(source.get(), content.data() + size, content.size() - size)) > 0) {
    size += static_cast<std::uint64_t>(count);
  }
  if (count < 0) refuse(std::string("is damaged: ") + zip_file_strerror(source.get()));
  if (size != about.size) refuse("is damaged: its size is not the announced one");
  content.resize(about.size);
  return content;
}

}  // namespace runner
