#define TOML_IMPLEMENTATION  // of what the header declares: here, and nowhere else in the program
#include "apps/runner/config.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "apps/runner/errors.h"
#include "apps/runner/result_reader.h"
#include "apps/runner/text.h"

namespace runner {
namespace {

constexpr const char* kTypeNames[] = {"nothing",  "a table",   "an array", "a string", "a whole number",
                                      "a number", "a boolean", "a date",   "a time",   "a date with time"};

/// A key of the file with its value, and what a message about it needs.
struct Entry {
  const std::filesystem::path* file;
  toml::source_position place;
  std::string key;
  const toml::node* node;

  [[noreturn]] void fail(const std::string& reason) const {
    throw Error(ExitCode::kUsage,
                file->string() + ": line " + std::to_string(place.line) + ": '" + key + "': " + reason);
  }
  [[noreturn]] void fail_type(const std::string& needed) const {
    fail("needed is " + needed + ", not " + kTypeNames[static_cast<std::size_t>(node->type())]);
  }

  std::string text(const char* needed = "a string") const {
    if (!node->is_string()) fail_type(needed);
    return node->as_string()->get();
  }
  std::string number(const char* needed) const {
    if (const auto* whole = node->as_integer()) return std::to_string(whole->get());
    if (const auto* real = node->as_floating_point()) return number_text(real->get());
    fail_type(needed);
  }
  /// A value for a variable, as the command line would have it.
  std::string assigned() const {
    if (const auto* flag = node->as_boolean()) return flag->get() ? "true" : "false";
    if (node->is_string()) return text();
    return number("a number, a boolean, or a string such as \"98kPa\"");
  }
};

/// The entries of a table in the order of the file: of two that set the same thing the later one counts.
/// @param is_deep  go into tables in the table: a key with dots makes some
std::vector<Entry> entries_of(const std::filesystem::path& file, const toml::table& table, bool is_deep = false,
                              const std::string& prefix = "") {
  std::vector<Entry> entries;
  for (const auto& [key, node] : table) {
    const std::string name = prefix + std::string(key.str());
    if (is_deep && node.is_table()) {
      for (const Entry& inner : entries_of(file, *node.as_table(), true, name + ".")) entries.push_back(inner);
    } else {
      entries.push_back({&file, key.source().begin, name, &node});
    }
  }
  std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.place < b.place; });
  return entries;
}

[[noreturn]] void fail_key(const Entry& entry, const std::vector<std::string_view>& known) {
  entry.fail("unknown key" + did_you_mean(entry.key, known));
}

std::string change_text(const Entry& list, const toml::node& node) {
  const Entry change = {list.file, node.source().begin, list.key, &node};
  const toml::table* table = node.as_table();
  if (table == nullptr) change.fail_type("a table with time, name and value");
  std::string time, name, value;
  for (const Entry& entry : entries_of(*list.file, *table)) {
    if (entry.key == "time") {
      time = entry.number("a number of seconds");
    } else if (entry.key == "name") {
      name = entry.text();
    } else if (entry.key == "value") {
      value = entry.assigned();
    } else {
      fail_key(entry, {"time", "name", "value"});
    }
  }
  if (time.empty() || name.empty() || value.empty()) change.fail("needed are time, name and value");
  return time + ":" + name + "=" + value;
}

std::vector<std::string> texts(const Entry& entry) {
  if (entry.node->is_string()) return {entry.text()};
  if (!entry.node->is_array()) entry.fail_type("an array of strings");
  std::vector<std::string> texts;
  for (const toml::node& node : *entry.node->as_array()) {
    const Entry element = {entry.file, node.source().begin, entry.key, &node};
    texts.push_back(element.text("an array of strings alone"));
  }
  return texts;
}

std::vector<std::string> start_values(const Entry& entry) {
  const toml::table* table = entry.node->as_table();
  if (table == nullptr) entry.fail_type("a table of NAME = VALUE");
  std::vector<std::string> texts;
  for (const Entry& value : entries_of(*entry.file, *table, /*is_deep=*/true)) {
    texts.push_back(value.key + "=" + value.assigned());
  }
  return texts;
}

std::vector<std::string> changes(const Entry& entry) {
  const toml::array* list = entry.node->as_array();
  if (list == nullptr) entry.fail_type("a list of tables, [[set-at]], with time, name and value");
  std::vector<std::string> texts;
  for (const toml::node& node : *list) texts.push_back(change_text(entry, node));
  return texts;
}

/// Puts the value of an entry where the setting goes.
struct Reader {
  const Entry& entry;

  void operator()(bool* target) const {
    if (!entry.node->is_boolean()) entry.fail_type("true or false");
    *target = entry.node->as_boolean()->get();
  }
  void operator()(double* target) const {
    const std::optional<double> tolerance = parse_tolerance(entry.number("a number"));
    if (!tolerance) entry.fail(kToleranceNeeds);
    *target = *tolerance;
  }
  void operator()(std::optional<std::string>* target) const { *target = entry.number("a number of seconds"); }
  void operator()(std::string* target) const { *target = entry.text(); }
  void operator()(std::filesystem::path* target) const { *target = entry.text(); }
  void operator()(const Repeated& repeated) const {
    switch (repeated.form) {
      case Repeated::kTexts:
        *repeated.target = texts(entry);
        break;
      case Repeated::kStartValues:
        *repeated.target = start_values(entry);
        break;
      case Repeated::kChanges:
        *repeated.target = changes(entry);
        break;
    }
  }
  template <class Value>
  void operator()(const Choice<Value>& choice) const {
    const std::string name = entry.text();
    std::string known;
    for (const auto& [text, value] : choice.values) {
      if (text == name) {
        *choice.target = value;
        return;
      }
      known += (known.empty() ? "" : ", ") + text;
    }
    entry.fail("'" + name + "' is not one of " + known);
  }
};

}  // namespace

void read_settings(const toml::table& table, const std::filesystem::path& file, RunOptions& options,
                   std::initializer_list<std::string_view> without) {
  std::vector<RunSetting> settings = run_settings(options);
  std::erase_if(settings, [&](const RunSetting& setting) {
    return std::find(without.begin(), without.end(), setting.key) != without.end();
  });
  std::vector<std::string_view> known;
  known.reserve(settings.size());
  for (const RunSetting& setting : settings) known.emplace_back(setting.key);

  for (const Entry& entry : entries_of(file, table)) {
    const auto found = std::find(known.begin(), known.end(), entry.key);
    if (found == known.end()) fail_key(entry, known);
    std::visit(Reader{entry}, settings[static_cast<std::size_t>(found - known.begin())].target);
  }
}

namespace {

/// The index behind the string that begins at `begin`, or where its line ends if the string does not.
std::size_t end_of_string(std::string_view text, std::size_t begin) {
  const char quote = text[begin];
  const bool is_block = text.substr(begin, 3) == std::string(3, quote);
  const std::string quotes(is_block ? 3 : 1, quote);
  std::size_t i = begin + quotes.size();
  while (i < text.size() && text.substr(i, quotes.size()) != quotes) {
    if (!is_block && text[i] == '\n') return i;
    i += quote == '"' && text[i] == '\\' ? 2 : 1;
  }
  i = std::min(i + quotes.size(), text.size());
  while (is_block && i < text.size() && text[i] == quote) ++i;  // up to two quotes more belong to the text
  return i;
}

/// Refuses what does not survive: keys of many dots, each a table in a table and a call in a call, of which inline
/// tables in one another make a multitude; and letters beyond ASCII outside of strings and comments, for which the
/// parser has no answer.
void refuse_the_indigestible(const std::filesystem::path& file, std::string_view text) {
  constexpr int kMostDots = 20;
  int dots = 0;
  for (std::size_t i = 0; i < text.size();) {
    const char c = text[i];
    const auto refuse = [&](const std::string& reason) {
      const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(i), '\n');
      throw Error(ExitCode::kUsage, file.string() + ": line " + std::to_string(line) + ": " + reason);
    };
    if (static_cast<unsigned char>(c) > 0x7F) refuse("a letter that only a string or a comment may have");
    if (c == '.' && ++dots > kMostDots) refuse("a key of more than " + std::to_string(kMostDots) + " dots");
    if (c == '\n' || c == ',' || c == '=') dots = 0;
    if (c == '#') {
      i = std::min(text.find('\n', i), text.size());
    } else if (c == '"' || c == '\'') {
      i = end_of_string(text, i);
    } else {
      ++i;
    }
  }
}

}  // namespace

toml::table parse_toml(const std::filesystem::path& file) {
  const std::string text = read_file(file);
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  refuse_the_indigestible(file, std::string_view(text).substr(text.starts_with(kByteOrderMark) ? 3 : 0));
  try {
    return toml::parse(text, file.string());
  } catch (const toml::parse_error& error) {
    throw Error(ExitCode::kUsage, file.string() + ": line " + std::to_string(error.source().begin.line) + ": " +
                                      std::string(error.description()));
  }
}

}  // namespace runner
