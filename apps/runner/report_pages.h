#pragma once

#include <string_view>

namespace runner {

/// The pages of `report`, whole but for @title@ (HTML) and @data@ (JSON); the build makes them from report/.
extern const std::string_view run_page, sweep_page;

}  // namespace runner
