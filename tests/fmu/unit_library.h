#pragma once

/// The unit's shared library, loaded as an importer does.

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <stdexcept>
#include <string>

#include "fmi/fmi2.h"

/// The library's functions, one member each.
struct UnitLibrary {
#define FMI2_FUNCTION(name, result, parameters) decltype(&::name) name;
#include "fmi/fmi2_functions.def"
};

/// Loads the library and leaves it loaded.
/// @throws std::runtime_error naming the file or the function that is missing
inline UnitLibrary load_unit(const std::string& file) {
#if defined(_WIN32)
  const HMODULE handle = LoadLibraryA(file.c_str());
  if (handle == nullptr) throw std::runtime_error(file + ": Windows error " + std::to_string(GetLastError()));
  const auto find = [handle](const char* name) { return reinterpret_cast<void (*)()>(GetProcAddress(handle, name)); };
#else
  void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) throw std::runtime_error(dlerror());
  const auto find = [handle](const char* name) { return dlsym(handle, name); };
#endif
  UnitLibrary library{};
#define FMI2_FUNCTION(name, result, parameters)                    \
  library.name = reinterpret_cast<decltype(&::name)>(find(#name)); \
  if (library.name == nullptr) throw std::runtime_error(file + " has no " #name);
#include "fmi/fmi2_functions.def"
  return library;
}
