#include "Vk_lib/Vk_fl_prop_lib/fluid_tables.h"

#include <cstddef>
#include <cstdio>
#include <iterator>

#include "Vk_lib/Vk_fl_prop_lib/fl_class/FluidFile.h"

namespace Vk_fl_prop_lib {
namespace {

struct Table {
  const char* file;  // null: the type has no table
  std::size_t values;
};
constexpr Table kTables[] = {{"aeration.fdb", 60}, {"brines.fdb", 97}, {"liquids.fdb", 31}, {"gasIDG.fdb", 25},
                             {nullptr, 0},         {"refrig.fdb", 61}, {"moistAir.fdb", 10}};

constexpr int kLongestLine = 2000;
constexpr int kLongestField = 500;

char ascii_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool equal_without_case(const char* a, const char* b) {
  for (; *a != '\0' && ascii_lower(*a) == ascii_lower(*b); ++a, ++b) {
  }
  return ascii_lower(*a) == ascii_lower(*b);
}

/// Moves behind the word that names the fluid; false if the file has no such record.
bool find_record(FluidFile& file, const char* name) {
  const char* word = file.word();
  while (word != nullptr && word[0] == '#') {
    file.skip_past('\n', kLongestLine);
    word = file.word();
  }
  while (word != nullptr && !equal_without_case(word, name)) {
    file.skip_past('\n', kLongestLine);
    word = file.word();
  }
  return word != nullptr;
}

bool is_type(int type) { return type >= 0 && type < static_cast<int>(std::size(kTables)); }

int read_table(int type, const char* name, const char* folder, const char* path, double* coeffs, char* msg) {
  if (!is_type(type)) {
    std::sprintf(msg, "The fluid type=%d is not found!", type);
    return 1;
  }
  const Table& table = kTables[type];
  if (table.file == nullptr) return 1;
  FluidFile file(folder, path != nullptr ? path : table.file);
  if (!file.is_open()) {
    std::sprintf(msg, "The source file of type=%d can not be opened!", type);
    return 1;
  }
  if (!find_record(file, name)) {
    std::sprintf(msg, "The fluid %s is not in source file!", name);
    return 1;
  }
  file.skip_past('\t', kLongestField);
  file.skip_past('\t', kLongestField);
  file.numbers({coeffs, table.values});
  return 0;
}

}  // namespace

const char* table_file(int type) { return is_type(type) ? kTables[type].file : nullptr; }

int getCoeffs(int type, const char* name, double* coeffs, char* msg) {
  return read_table(type, name, kTableFolder, nullptr, coeffs, msg);
}

int getCoeffs(int type, const char* name, const char* path, double* coeffs, char* msg) {
  return read_table(type, name, "", path, coeffs, msg);
}

}  // namespace Vk_fl_prop_lib
