#include "apps/runner/npz_writer.h"

#include <zip.h>

#include <bit>
#include <set>
#include <utility>

#include "apps/runner/errors.h"

namespace runner {
namespace {

static_assert(std::endian::native == std::endian::little, "the arrays are written as they are in memory");

/// Head of an array in version 1.0 of the .npy format: magic, version, length of the rest, a dictionary that is filled
/// up with blanks so that the numbers begin at a multiple of 64 bytes.
std::string npy_head(std::size_t count) {
  std::string dictionary = "{'descr': '<f8', 'fortran_order': False, 'shape': (" + std::to_string(count) + ",), }";
  constexpr std::size_t kPreamble = 10;
  constexpr std::size_t kAlignment = 64;
  const std::size_t used = (kPreamble + dictionary.size() + 1) % kAlignment;
  dictionary.append(used == 0 ? 0 : kAlignment - used, ' ');
  dictionary += '\n';
  const std::size_t length = dictionary.size();
  return std::string("\x93NUMPY\x01\x00", 8) + static_cast<char>(length & 0xFF) + static_cast<char>(length >> 8) +
         dictionary;
}

std::string npy(const std::vector<double>& values) {
  std::string array = npy_head(values.size());
  array.append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(double));
  return array;
}

[[noreturn]] void fail(const std::string& reason) {
  throw Error(ExitCode::kFile, "cannot pack the results: " + reason);
}

/// A zip archive in memory.
class MemoryArchive {
 public:
  MemoryArchive() {
    zip_error_t error;
    zip_error_init(&error);
    source_.reset(zip_source_buffer_create(nullptr, 0, 0, &error));
    if (source_) archive_.reset(zip_open_from_source(source_.get(), ZIP_TRUNCATE, &error));
    if (!archive_) fail(zip_error_strerror(&error));
    zip_source_keep(source_.get());  // closing the archive gives up its own hold only
  }

  /// @param content  must stay until close()
  void add(const std::string& name, const std::string& content) {
    zip_source_t* entry = zip_source_buffer(archive_.get(), content.data(), content.size(), 0);
    const zip_int64_t index =
        entry == nullptr ? -1 : zip_file_add(archive_.get(), name.c_str(), entry, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
      const std::string reason = zip_strerror(archive_.get());
      zip_source_free(entry);
      fail(name + ": " + reason);
    }
    constexpr zip_uint16_t kFirstDay = 0x21;  // of 1980: the same results are the same bytes
    zip_file_set_dostime(archive_.get(), static_cast<zip_uint64_t>(index), 0, kFirstDay, 0);
  }

  /// The bytes of the finished archive.
  std::string close() {
    if (zip_close(archive_.get()) != 0) fail(zip_strerror(archive_.get()));
    static_cast<void>(archive_.release());
    if (zip_source_open(source_.get()) != 0) fail("the archive cannot be read back");
    std::string bytes;
    zip_stat_t about;
    zip_stat_init(&about);
    if (zip_source_stat(source_.get(), &about) == 0) bytes.resize(about.size);
    const zip_int64_t count = zip_source_read(source_.get(), bytes.data(), bytes.size());
    zip_source_close(source_.get());
    if (bytes.empty() || count != static_cast<zip_int64_t>(bytes.size())) fail("the archive cannot be read back");
    return bytes;
  }

 private:
  struct Release {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
    void operator()(zip_t* archive) const { zip_discard(archive); }
  };
  std::unique_ptr<zip_source_t, Release> source_;
  std::unique_ptr<zip_t, Release> archive_;
};

}  // namespace

NpzWriter::NpzWriter(ResultFile& file, const std::vector<std::string_view>& names)
    : file_(file), names_{"time"}, columns_(names.size() + 1) {
  names_.insert(names_.end(), names.begin(), names.end());
  std::set<std::string_view> seen;
  for (const std::string& name : names_) {
    if (!seen.insert(name).second)
      throw Error(ExitCode::kFile, "two arrays of a .npz file would be named '" + name + "'");
  }
}

void NpzWriter::row(Milliseconds time, std::span<const double> values) {
  for (std::size_t i = 0; i < values.size(); ++i) columns_[i + 1].push_back(values[i]);
  columns_[0].push_back(seconds(time));  // the memory has sufficed for the whole row
}

void NpzWriter::finish() {
  const std::size_t rows = columns_.front().size();
  if (rows == 0) return;
  std::vector<std::string> arrays;
  for (std::vector<double>& column : columns_) {
    column.resize(rows);
    arrays.push_back(npy(std::exchange(column, {})));  // not twice in memory
  }
  MemoryArchive archive;
  for (std::size_t i = 0; i < arrays.size(); ++i) archive.add(names_[i] + ".npy", arrays[i]);
  file_.append(archive.close());
  rows_ = rows;
}

}  // namespace runner
