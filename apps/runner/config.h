#pragma once

#include <toml++/toml.h>
#include <filesystem>
#include <initializer_list>
#include <string_view>

#include "apps/runner/run_options.h"

namespace runner {

/// Reads settings of a run from a table of a TOML file. The keys are the long options without dashes: stop-time = 600,
/// output-variable = ["stack.*"], keep-gates = true. Values of parameters are the table start-value, NAME = number,
/// boolean, or text with a unit ("98kPa"), where a dot in NAME needs no quotes; changes during the run are tables
/// [[set-at]] with time, name and value.
/// @param table    as parsed from `file`, which is named in messages
/// @param options  receives what the table says; the rest of it stays
/// @param without  keys that this use does not know
/// @throws Error kUsage naming file, line and key, and what would do
void read_settings(const toml::table& table, const std::filesystem::path& file, RunOptions& options,
                   std::initializer_list<std::string_view> without = {});

/// Parses a TOML file.
/// @throws Error kFile if it cannot be read, kUsage naming file and line if it is not TOML
toml::table parse_toml(const std::filesystem::path& file);

}  // namespace runner
