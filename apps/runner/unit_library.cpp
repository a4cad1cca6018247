#include "apps/runner/unit_library.h"

#include <dlfcn.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "apps/runner/errors.h"

namespace runner {

namespace fs = std::filesystem;

#if defined(__x86_64__)
const char* const kPlatform = "linux64";
#elif defined(__aarch64__)
const char* const kPlatform = "aarch64-linux";  // the standard names none for this processor; importers use this name
#elif defined(__i386__)
const char* const kPlatform = "linux32";
#else
const char* const kPlatform = "linux";
#endif

std::string binary_entry(const std::string& model_identifier) {
  return std::string("binaries/") + kPlatform + "/" + model_identifier + ".so";
}

namespace {

/// A folder of the user's own, removed with its content at the end of the scope. Until then the signals that end a
/// program wait, so that they find nothing to leave behind.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&ending, signal);
    pthread_sigmask(SIG_BLOCK, &ending, &former_mask_);

    std::error_code error;
    const fs::path parent = fs::temp_directory_path(error);
    std::string name = (parent / "tessera-XXXXXX").string();
    if (error || mkdtemp(name.data()) == nullptr) {
      const std::string reason = error ? "TMPDIR is no folder" : std::strerror(errno);
      pthread_sigmask(SIG_SETMASK, &former_mask_, nullptr);
      throw Error(ExitCode::kFile, "cannot make a temporary folder: " + reason);
    }
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    pthread_sigmask(SIG_SETMASK, &former_mask_, nullptr);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
  sigset_t former_mask_;
};

}  // namespace

void UnitLibrary::Unload::operator()(void* library) const { dlclose(library); }

UnitLibrary::UnitLibrary(const UnitArchive& archive, const std::string& model_identifier) {
  const std::string entry = binary_entry(model_identifier);
  if (!archive.contains(entry)) {
    const std::string offered = archive.platforms();
    throw Error(ExitCode::kFile, archive.file().string() + ": has no binary for this machine (" + entry +
                                     "); it has binaries for: " + (offered.empty() ? "none at all" : offered));
  }
  const std::string content = archive.read(entry);

  const TemporaryFolder folder;
  const fs::path file = folder.path() / (model_identifier + ".so");
  std::ofstream output(file, std::ios::binary);
  output.write(content.data(), static_cast<std::streamsize>(content.size()));
  output.close();
  if (!output)
    throw Error(ExitCode::kFile, "cannot unpack the unit to '" + file.string() + "': " + std::strerror(errno));

  library_.reset(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL));
  if (!library_) {
    throw Error(ExitCode::kFile, archive.file().string() + ": entry '" + entry + "' cannot be loaded: " + dlerror());
  }
#define FMI2_FUNCTION(name, result, parameters)                                           \
  functions_.name = reinterpret_cast<result(*) parameters>(dlsym(library_.get(), #name)); \
  if (functions_.name == nullptr) missing_.emplace_back(#name);
#include "fmi/fmi2_functions.def"
}

}  // namespace runner
