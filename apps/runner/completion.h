#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

namespace runner {

/// The shells that a script can be written for.
std::vector<std::string> completion_shells();

/// A script that makes a shell complete the program's command line: commands, options, the values of options that have
/// a fixed set of them, names of the unit's variables, and files. All of it comes from the description of the command
/// line, so that a new option needs no word here.
/// @param shell  one of completion_shells()
std::string completion_script(const CLI::App& app, const std::string& shell);

}  // namespace runner
