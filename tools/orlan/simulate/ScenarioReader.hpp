#pragma once

#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"
#include "tools/orlan/simulate/Scenario.hpp"

namespace orlan::simulate {

/// Reads and checks a whole scenario, with all files that it names (relative to its own place). The error
/// (domain "Scenario") begins with `path`: where the mistake stands, what was expected there and what was
/// found.
[[nodiscard]] Result<Scenario> readScenario(const std::string& path);

/// The same from a text. `directory`: where relative files are; `name`: the name of a scenario without one.
[[nodiscard]] Result<Scenario> parseScenario(std::string_view text, const std::string& directory,
                                             std::string name);

}  // namespace orlan::simulate
