#pragma once

/// What the tests of the package share: the archive, a folder with its contents, and the library loaded out of it.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <zip.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "fmi/fmi2.h"

/// A folder that lasts as long as the object.
struct ScratchFolder {
  std::filesystem::path path;

  ScratchFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "tessera-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder " + name);
    path = name;
  }
  ~ScratchFolder() { std::filesystem::remove_all(path); }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
};

inline std::string read_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

struct Entry {
  std::string name, content, date;
};

/// The entries of an archive in their order.
inline std::vector<Entry> read_archive(const std::filesystem::path& file) {
  zip_t* archive = zip_open(file.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
  if (archive == nullptr) throw std::runtime_error(file.string() + " is no sound archive");
  std::vector<Entry> entries;
  for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(zip_get_num_entries(archive, 0)); ++i) {
    zip_stat_t stat;
    EXPECT_EQ(zip_stat_index(archive, i, 0, &stat), 0);
    std::string content(stat.size, '\0'), date(19, '\0');
    zip_file_t* stream = zip_fopen_index(archive, i, 0);
    EXPECT_EQ(zip_fread(stream, content.data(), stat.size), static_cast<zip_int64_t>(stat.size)) << stat.name;
    zip_fclose(stream);
    std::strftime(date.data(), date.size() + 1, "%F %T", std::localtime(&stat.mtime));  // an archive's times are local
    entries.push_back({stat.name, content, date});
  }
  zip_discard(archive);
  return entries;
}

/// The folder that Tessera.fmu is unpacked into, once in the process.
inline const std::filesystem::path& unpacked_unit() {
  static const ScratchFolder folder;
  static const bool unpacked = [] {
    for (const Entry& entry : read_archive(TESSERA_FMU_FILE)) {
      create_directories((folder.path / entry.name).parent_path());
      std::ofstream(folder.path / entry.name, std::ios::binary) << entry.content;
    }
    return true;
  }();
  EXPECT_TRUE(unpacked);
  return folder.path;
}

struct Outcome {
  int status;        ///< exit code, or -1 when the command did not exit by itself
  std::string text;  ///< what it wrote to both of its streams
};

/// Runs a shell command.
inline Outcome run(const std::string& command) {
  Outcome outcome{-1, ""};
  FILE* pipe = popen(("{ " + command + "; } 2>&1").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) outcome.text += static_cast<char>(c);
  if (const int status = pclose(pipe); WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
  return outcome;
}

inline std::filesystem::path library_file() { return unpacked_unit() / "binaries/linux64/Tessera.so"; }

/// A loaded library with its functions and an instance, which is null when the GUID was refused.
struct UnitLibrary {
#define FMI2_FUNCTION(name, result, parameters) decltype(&::name) name = nullptr;
#include "fmi/fmi2_functions.def"
  fmi2Component instance = nullptr;

  UnitLibrary(const std::filesystem::path& file, const std::string& guid)
      : handle(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle == nullptr) throw std::runtime_error(dlerror());
#define FMI2_FUNCTION(name, result, parameters) name = reinterpret_cast<decltype(&::name)>(dlsym(handle, #name));
#include "fmi/fmi2_functions.def"
    instance = fmi2Instantiate("test", fmi2CoSimulation, guid.c_str(), nullptr, &callbacks, fmi2False, fmi2False);
  }
  ~UnitLibrary() {
    fmi2FreeInstance(instance);
    dlclose(handle);
  }
  UnitLibrary(const UnitLibrary&) = delete;
  UnitLibrary& operator=(const UnitLibrary&) = delete;

  double real(fmi2ValueReference reference) const {
    double value = -1.0;
    EXPECT_EQ(fmi2GetReal(instance, &reference, 1, &value), fmi2OK) << "Real " << reference;
    return value;
  }
  fmi2Boolean boolean(fmi2ValueReference reference) const {
    fmi2Boolean value = -1;
    EXPECT_EQ(fmi2GetBoolean(instance, &reference, 1, &value), fmi2OK) << "Boolean " << reference;
    return value;
  }

  static void ignore(fmi2ComponentEnvironment, fmi2String, fmi2Status, fmi2String, fmi2String, ...) {}

  void* handle;
  fmi2CallbackFunctions callbacks = {ignore, nullptr, nullptr, nullptr, nullptr};
};
