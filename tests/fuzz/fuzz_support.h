#pragma once

/// What the fuzzers share.

#include <fuzzer/FuzzedDataProvider.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

/// Ends the process, which the fuzzer takes for a fault, unless the condition holds.
#define EXPECT(...) (void)((__VA_ARGS__) || (std::fprintf(stderr, "not so: %s\n", #__VA_ARGS__), std::abort(), false))

/// The same bits, or both not-a-number.
inline bool is_same(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (a != a && b != b);
}

/// An ordinary value more often than not, else one with any bits or from the ends of the range.
inline double pick_real(FuzzedDataProvider& in) {
  constexpr double kEdges[] = {0.0, -0.0, 1e-10, 1e300, -1e300, 5e-324, 2147483648.0, HUGE_VAL, -HUGE_VAL};
  const int kind = in.ConsumeIntegralInRange(0, 5);
  if (kind == 0) return in.PickValueInArray(kEdges);
  if (kind == 1) return std::bit_cast<double>(in.ConsumeIntegral<std::uint64_t>());
  return in.ConsumeIntegralInRange(-2000, 8000) / (kind == 2 ? 1000.0 : 10.0);
}

/// Writes a file into a folder of this process. Its path has a colon, so that loadFile of a fluid takes it as it is.
inline std::string write_file(const std::string& name, const std::string& content) {
  static std::string folder = (std::filesystem::temp_directory_path() / "fuzz:XXXXXX").string();
  static const bool is_made = mkdtemp(folder.data()) != nullptr;
  EXPECT(is_made);
  std::ofstream(folder + "/" + name, std::ios::binary) << content;
  return folder + "/" + name;
}
