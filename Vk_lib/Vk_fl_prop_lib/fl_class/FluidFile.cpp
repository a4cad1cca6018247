#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluidFile.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <locale.h>  // newlocale, _create_locale

namespace Vk_fl_prop_lib {
namespace {

#ifdef _WIN32
using Locale = _locale_t;
Locale new_classic_locale() { return _create_locale(LC_ALL, "C"); }
void delete_locale(Locale locale) { _free_locale(locale); }
double to_double(const char* text, char** end, Locale locale) { return _strtod_l(text, end, locale); }
#else
using Locale = locale_t;
Locale new_classic_locale() { return newlocale(LC_ALL_MASK, "C", nullptr); }
void delete_locale(Locale locale) { freelocale(locale); }
double to_double(const char* text, char** end, Locale locale) { return strtod_l(text, end, locale); }
#endif

/// The locale in which the numbers of the files are written.
class ClassicLocale {
 public:
  ClassicLocale() = default;
  ~ClassicLocale() { delete_locale(locale_); }
  ClassicLocale(const ClassicLocale&) = delete;
  ClassicLocale& operator=(const ClassicLocale&) = delete;
  Locale get() const { return locale_; }

 private:
  Locale locale_ = new_classic_locale();
};

bool is_space(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool is_digit(int c) { return c >= '0' && c <= '9'; }
bool is_exponent(int c) { return c == 'e' || c == 'E'; }

/// Whether c can go on a decimal number of which text, length characters, has been read.
bool continues_number(const char* text, std::size_t length, int c) {
  const bool has_exponent = std::memchr(text, 'e', length) != nullptr || std::memchr(text, 'E', length) != nullptr;
  if (is_digit(c)) return true;
  if (c == '+' || c == '-') return length == 0 || is_exponent(text[length - 1]);
  if (c == '.') return !has_exponent && std::memchr(text, '.', length) == nullptr;
  return is_exponent(c) && !has_exponent && length > 0;
}

}  // namespace

FluidFile::FluidFile(const char* folder, const char* name) {
  std::array<char, 4096> path{};
  const int length = std::snprintf(path.data(), path.size(), "%s%s", folder, name);
  if (length >= 0 && static_cast<std::size_t>(length) < path.size()) file_ = std::fopen(path.data(), "r");
  if (file_ != nullptr) {  // a folder opens, too, but does not read
    std::ungetc(std::fgetc(file_), file_);
    if (std::ferror(file_) != 0) std::fclose(std::exchange(file_, nullptr));
  }
  failed_ = file_ == nullptr;
}

FluidFile::~FluidFile() {
  if (file_ != nullptr) std::fclose(file_);
}

int FluidFile::first_after_space() {
  int c = std::fgetc(file_);
  while (is_space(c)) c = std::fgetc(file_);
  return c;
}

const char* FluidFile::word() {
  if (failed_) return nullptr;
  std::size_t length = 0;
  int c = first_after_space();
  for (; c != EOF && !is_space(c); c = std::fgetc(file_)) {
    if (length < word_.size() - 1) word_[length++] = static_cast<char>(c);
  }
  std::ungetc(c, file_);  // of no effect at the end of the file
  word_[length] = '\0';
  failed_ = length == 0;
  return failed_ ? nullptr : word_.data();
}

bool FluidFile::number(double& value) {
  if (failed_) return false;
  std::array<char, 512> text{};
  std::size_t length = 0;
  int c = first_after_space();
  for (; length < text.size() - 1 && continues_number(text.data(), length, c); c = std::fgetc(file_)) {
    text[length++] = static_cast<char>(c);
  }
  const bool is_too_long = length == text.size() - 1 && continues_number(text.data(), length, c);
  std::ungetc(c, file_);
  static const ClassicLocale classic;
  char* end = nullptr;
  const double parsed = to_double(text.data(), &end, classic.get());
  failed_ = length == 0 || is_too_long || end != text.data() + length || !std::isfinite(parsed);
  if (failed_) return false;
  value = parsed;
  return true;
}

void FluidFile::numbers(std::span<double> values) {
  for (double& value : values) number(value);
}

bool FluidFile::labelled_number(double& value) {
  word();
  return number(value);
}

void FluidFile::find_section(const char* key) {
  for (;;) {
    const char* next = word();
    if (next != nullptr && std::strcmp(next, key) == 0) return;
  }
}

void FluidFile::skip_past(char last, int limit) {
  if (failed_) return;
  for (int skipped = 0; skipped < limit; ++skipped) {
    const int c = std::fgetc(file_);
    if (c == last || c == EOF) return;
  }
}

SourceFile::SourceFile(const char* name) : FluidFile(std::strchr(name, ':') != nullptr ? "" : kSourceFolder, name) {}

}  // namespace Vk_fl_prop_lib
