#include "apps/runner/completion.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>

namespace runner {
namespace {

/// What the value of an argument can be completed with.
enum class Content { kNothing, kChoices, kFile, kParameter, kOutput };

/// An option or a positional argument.
struct Argument {
  std::vector<std::string> names;  ///< with their dashes; empty: positional
  std::string help, type;
  bool has_value = false;
  bool is_repeatable = false;
  Content content = Content::kNothing;
  std::vector<std::string> choices;
};

struct Command {
  std::string name, help;
  std::vector<Argument> options, positionals;
};

std::string joined(const std::vector<std::string>& words, const char* separator) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : separator).append(word);
  return text;
}

std::string replaced(std::string text, const std::string& part, const std::string& replacement) {
  for (std::size_t i = text.find(part); i != std::string::npos; i = text.find(part, i + replacement.size())) {
    text.replace(i, part.size(), replacement);
  }
  return text;
}

/// The description of a type ends in ":{a,b,c}" if there is a fixed set of values.
std::vector<std::string> choices_of(const std::string& type) {
  const std::size_t open = type.find(":{");
  if (open == std::string::npos || !type.ends_with('}')) return {};
  return CLI::detail::split(type.substr(open + 2, type.size() - open - 3), ',');
}

Argument argument(const CLI::Option& option) {
  Argument result;
  for (const std::string& name : option.get_snames()) result.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) result.names.push_back("--" + name);
  result.help = option.get_description();
  const std::string type = option.get_type_name();
  result.type = type.substr(0, type.find(":{"));
  result.has_value = option.get_items_expected_max() > 0;
  result.is_repeatable = option.get_expected_max() > 1;
  result.choices = choices_of(type);
  if (!result.choices.empty()) {
    result.content = Content::kChoices;
  } else if (result.type == "FILE") {
    result.content = Content::kFile;
  } else if (result.type == "NAME=VALUE") {
    result.content = Content::kParameter;
  } else if (result.type == "PATTERN") {
    result.content = Content::kOutput;
  }
  return result;
}

Command command(const CLI::App& app) {
  Command result = {app.get_name(), app.get_description(), {}, {}};
  for (const CLI::Option* option : app.get_options()) {
    const Argument described = argument(*option);
    (described.names.empty() ? result.positionals : result.options).push_back(described);
  }
  return result;
}

std::vector<Command> commands(const CLI::App& app) {
  std::vector<Command> list;
  for (const CLI::App* sub : app.get_subcommands([](const CLI::App*) { return true; })) list.push_back(command(*sub));
  return list;
}

std::vector<std::string> option_names(const Command& command) {
  std::vector<std::string> names;
  for (const Argument& option : command.options) names.insert(names.end(), option.names.begin(), option.names.end());
  return names;
}

// bash

constexpr const char* kBashHead =
    R"script(# Completes the command line of tessera; to load it: source <(tessera completion bash)
_tessera_words() { mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current"); }
_tessera_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$current")
}
# _tessera_variables CAUSALITY SUFFIX: of the unit on the command line, or of the default one
_tessera_variables() {
  local word unit=()
  for word in "${COMP_WORDS[@]:1}"; do [[ $word == *.fmu ]] && unit=("$word"); done
  [[ -n $2 ]] && compopt -o nospace 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" info --names --causality "$1" "${unit[@]}" 2>/dev/null)" \
    -S "$2" -- "$current")
}
_tessera() {
  local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD-1]} command= word
  COMPREPLY=()
  # Between an option and its value "=" is a word of its own.
  if [[ $current == = ]]; then
    current=
  elif [[ $option == = ]]; then
    option=${COMP_WORDS[COMP_CWORD-2]}
  fi
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    [[ $word == -* ]] || { command=$word; break; }
  done
  case $command in
)script";

std::string bash_action(const Argument& argument) {
  switch (argument.content) {
    case Content::kChoices:
      return "_tessera_words '" + joined(argument.choices, " ") + "'";
    case Content::kFile:
      return "_tessera_files";
    case Content::kParameter:
      return "_tessera_variables parameter =";
    case Content::kOutput:
      return "_tessera_variables output ''";
    default:
      return ":";
  }
}

std::string bash_script(const CLI::App& app) {
  std::vector<std::string> names;
  std::string script = kBashHead;
  for (const Command& command : commands(app)) {
    names.push_back(command.name);
    script += "    " + command.name + ")\n      case $option in\n";
    for (const Argument& option : command.options) {
      if (option.has_value) script += "        " + joined(option.names, "|") + ") " + bash_action(option) + " ;;\n";
    }
    script += "        *)\n          if [[ $current == -* ]]; then\n            _tessera_words '" +
              joined(option_names(command), " ") + "'\n";
    if (!command.positionals.empty())
      script += "          else\n            " + bash_action(command.positionals[0]) + "\n";
    script += "          fi ;;\n      esac ;;\n";
  }
  for (const std::string& name : option_names(command(app))) names.push_back(name);
  return script + "    '') _tessera_words '" + joined(names, " ") + "' ;;\n  esac\n}\ncomplete -F _tessera tessera\n";
}

// zsh

constexpr const char* kZshHead = R"script(#compdef tessera
# Completes the command line of tessera; to load it: source <(tessera completion zsh)
# _tessera_variables CAUSALITY [SUFFIX]: of the default unit
_tessera_variables() {
  local -a names=(${(f)"$(tessera info --names --causality $1 2>/dev/null)"})
  if [[ -n $2 ]]; then compadd -S $2 -a names; else compadd -a names; fi
}
_tessera() {
  local state line
  local -a commands
)script";

/// Text for a place between single quotes in which brackets and colons have a meaning.
std::string zsh_text(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
    escaped += c;
  }
  return replaced(escaped, "'", "'\\''");
}

std::string zsh_action(const Argument& argument) {
  switch (argument.content) {
    case Content::kChoices:
      return "(" + joined(argument.choices, " ") + ")";
    case Content::kFile:
      return "_files";
    case Content::kParameter:
      return "{_tessera_variables parameter =}";
    case Content::kOutput:
      return "{_tessera_variables output}";
    default:
      return " ";
  }
}

std::string zsh_arguments(const Command& command) {
  std::string text;
  for (const Argument& option : command.options) {
    for (const std::string& name : option.names) {
      const bool is_long = name.starts_with("--");
      text += std::string(" \\\n          '") + (option.is_repeatable ? "*" : "") + name +
              (option.has_value && is_long ? "=" : "") + "[" + zsh_text(option.help) + "]";
      if (option.has_value) text += ":" + zsh_text(option.type) + ":" + zsh_action(option);
      text += "'";
    }
  }
  for (const Argument& positional : command.positionals) {
    text += " \\\n          '*:" + zsh_text(positional.type) + ":" + zsh_action(positional) + "'";
    break;  // it takes all that follow, which are of its kind
  }
  return text;
}

std::string zsh_script(const CLI::App& app) {
  std::string list = "  commands=(\n";
  std::string cases;
  for (const Command& command : commands(app)) {
    list += "    '" + command.name + ":" + zsh_text(command.help) + "'\n";
    cases += "        " + command.name + ")\n          _arguments" + zsh_arguments(command) + " ;;\n";
  }
  return kZshHead + list + "  )\n  _arguments -C" + zsh_arguments(command(app)) +
         " \\\n    '1:command:->command' '*::argument:->argument'\n"
         "  case $state in\n    command) _describe command commands ;;\n    argument)\n      case $words[1] in\n" +
         cases + "      esac ;;\n  esac\n}\n" +
         "if [[ $funcstack[1] == _tessera ]]; then _tessera \"$@\"; else compdef _tessera tessera; fi\n";
}

// fish

std::string fish_text(const std::string& text) {
  return "'" + replaced(replaced(text, "\\", "\\\\"), "'", "\\'") + "'";
}

std::string fish_value(const Argument& argument) {
  const std::string names = "(tessera info --names --causality ";
  switch (argument.content) {
    case Content::kChoices:
      return " -x -a " + fish_text(joined(argument.choices, " "));
    case Content::kFile:
      return " -r -F";
    case Content::kParameter:
      return " -x -a " + fish_text(names + "parameter 2>/dev/null | string replace -r '$' '=')");
    case Content::kOutput:
      return " -x -a " + fish_text(names + "output 2>/dev/null)");
    default:
      return argument.has_value ? " -x" : "";
  }
}

std::string fish_options(const Command& command, const std::string& line) {
  std::string script;
  for (const Argument& option : command.options) {
    script += line;
    for (const std::string& name : option.names) {
      script += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    script += fish_value(option) + " -d " + fish_text(option.help) + "\n";
  }
  return script;
}

std::string fish_script(const CLI::App& app) {
  std::string script =
      "# Completes the command line of tessera; to load it: tessera completion fish | source\n"
      "complete -c tessera -f\n";
  const std::string at_start = "complete -c tessera -n __fish_use_subcommand";
  script += fish_options(command(app), at_start);
  for (const Command& command : commands(app)) {
    script += at_start + " -a " + command.name + " -d " + fish_text(command.help) + "\n";
    const std::string line = "complete -c tessera -n '__fish_seen_subcommand_from " + command.name + "'";
    script += fish_options(command, line);
    if (command.positionals.empty()) continue;
    const Argument& positional = command.positionals[0];
    if (positional.content == Content::kFile) script += line + " -F\n";
    if (positional.content == Content::kChoices) script += line + fish_value(positional) + "\n";
  }
  return script;
}

}  // namespace

std::vector<std::string> completion_shells() { return {"bash", "zsh", "fish"}; }

std::string completion_script(const CLI::App& app, const std::string& shell) {
  if (shell == "zsh") return zsh_script(app);
  if (shell == "fish") return fish_script(app);
  return bash_script(app);
}

}  // namespace runner
