#pragma once

#include <array>
#include <cstdio>
#include <span>

namespace Vk_fl_prop_lib {

#ifdef _WIN32
inline constexpr const char* kTableFolder = "..\\tables\\";
inline constexpr const char* kSourceFolder = "sources\\";
#else
inline constexpr const char* kTableFolder = "../tables/";
inline constexpr const char* kSourceFolder = "sources/";
#endif

/// Reader of the text files that fluids come from: words, numbers and fields, in the order of the file.
///
/// Numbers have a decimal point, whatever the locale of the process. What can not be read fails the reader: from then
/// on every read fails and leaves its target as it was.
class FluidFile {
 public:
  /// Opens folder + name. A path of 4096 characters and more counts as a file that can not be opened.
  FluidFile(const char* folder, const char* name);
  ~FluidFile();
  FluidFile(const FluidFile&) = delete;
  FluidFile& operator=(const FluidFile&) = delete;

  bool is_open() const { return file_ != nullptr; }

  /// Reads the next word, up to white space, which stays unread. A word is cut after 511 characters.
  /// @return the word, valid until the next call; null at the end of the file or on a failed reader
  const char* word();

  /// Reads one number; the first character that can not belong to it stays unread.
  /// @return false if there is none, or if it exceeds the range of double or 511 characters: the reader has failed,
  /// value is as before
  bool number(double& value);

  /// Reads numbers until one fails; the values from there on stay as they were.
  void numbers(std::span<double> values);

  /// Reads a word, which is not looked at, and the number behind it; the result as of number.
  bool labelled_number(double& value);

  /// Skips words up to and including the one that equals key. There is no way out without it: at the end of the file
  /// and on a failed reader this function waits for ever.
  void find_section(const char* key);

  /// Skips up to and including the next occurrence of last, but no more than limit characters.
  void skip_past(char last, int limit);

 private:
  int first_after_space();

  std::FILE* file_ = nullptr;
  volatile bool failed_ = false;  // volatile, so that waiting for ever counts as something that the program does
  std::array<char, 512> word_{};
};

/// The source file of one fluid, as loadFile finds it: in the folder of source files, or, if the name contains a ':',
/// where the name says.
class SourceFile : public FluidFile {
 public:
  explicit SourceFile(const char* name);
};

}  // namespace Vk_fl_prop_lib
