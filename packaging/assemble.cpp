// assemble ARCHIVE PATH=FILE...
//
// Packs the files under their paths into a zip archive whose bytes depend on nothing but paths and contents: entries
// sorted by path, one fixed time, one set of attributes. The archive appears whole or not at all.

#include <zip.h>

#include <exception>
#include <filesystem>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using Contents = std::map<std::string, std::string>;  // archive path to file, sorted

/// @throws std::runtime_error naming the argument that is no PATH=FILE with a usable path and a readable file
void add_pair(Contents& contents, std::string_view argument) {
  const std::size_t equals = argument.find('=');
  if (equals == std::string_view::npos || equals == 0 || equals + 1 == argument.size()) {
    throw std::runtime_error("\"" + std::string(argument) + "\" is no PATH=FILE");
  }
  const std::filesystem::path path = argument.substr(0, equals);
  const std::string file(argument.substr(equals + 1));
  if (path.is_absolute() || !path.has_filename() || path != path.lexically_normal() || *path.begin() == "..") {
    throw std::runtime_error("\"" + path.string() + "\" must be a plain path relative to the archive's root");
  }
  if (!std::filesystem::is_regular_file(file)) {
    throw std::runtime_error("no file \"" + file + "\" for \"" + path.string() + "\"");
  }
  if (!contents.emplace(path.generic_string(), file).second) {
    throw std::runtime_error("\"" + path.string() + "\" is given twice");
  }
}

void check(zip_t* archive, bool good) {
  if (!good) throw std::runtime_error(zip_strerror(archive));
}

void add_entry(zip_t* archive, const std::string& path, const std::string& file) {
  constexpr zip_uint16_t kMidnight = 0, kFirstOf1980 = 1 << 5 | 1;  // the first day that a zip archive can name
  constexpr zip_uint32_t kPlainFile = 0100644u << 16;

  zip_source_t* source = zip_source_file(archive, file.c_str(), 0, -1);
  check(archive, source != nullptr);
  const zip_int64_t added = zip_file_add(archive, path.c_str(), source, ZIP_FL_ENC_UTF_8);
  if (added < 0) zip_source_free(source);
  check(archive, added >= 0);
  const auto index = static_cast<zip_uint64_t>(added);
  check(archive, zip_set_file_compression(archive, index, ZIP_CM_DEFLATE, 9) == 0);
  check(archive, zip_file_set_dostime(archive, index, kMidnight, kFirstOf1980, 0) == 0);
  check(archive, zip_file_set_external_attributes(archive, index, 0, ZIP_OPSYS_UNIX, kPlainFile) == 0);
}

void pack(const Contents& contents, const std::string& file) {
  int code = 0;
  zip_t* archive = zip_open(file.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code);
  if (archive == nullptr) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    const std::string text = zip_error_strerror(&error);
    zip_error_fini(&error);
    throw std::runtime_error(text);
  }
  try {
    for (const auto& [path, content] : contents) add_entry(archive, path, content);
    check(archive, zip_close(archive) == 0);
  } catch (...) {
    zip_discard(archive);
    throw;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: assemble ARCHIVE PATH=FILE...\n";
    return 2;
  }
  const std::string target = argv[1], unfinished = target + ".unfinished";
  try {
    Contents contents;
    for (int i = 2; i < argc; ++i) add_pair(contents, argv[i]);
    pack(contents, unfinished);
    std::filesystem::rename(unfinished, target);
  } catch (const std::exception& error) {
    std::cerr << "assemble: error: " << target << ": " << error.what() << '\n';
    std::error_code ignored;
    std::filesystem::remove(unfinished, ignored);
    return 1;
  }
  return 0;
}
