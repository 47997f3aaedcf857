#pragma once

#include <span>
#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"
#include "tools/orlan/simulate/Scenario.hpp"
#include "tools/orlan/simulate/keys.hpp"

namespace orlan::simulate {

/// Reads and checks a whole scenario, with all files that it names (relative to its own place). The error
/// (domain "Scenario") begins with `path`: where the mistake stands, what was expected there and what was
/// found. `members`: the only ones that it may have.
[[nodiscard]] Result<Scenario> readScenario(const std::string& path,
                                            std::span<const std::string_view> members = keys::scenario);

/// The same from a text. `directory`: where relative files are; `name`: the name of a scenario without one.
[[nodiscard]] Result<Scenario> parseScenario(std::string_view text, const std::string& directory,
                                             std::string name,
                                             std::span<const std::string_view> members = keys::scenario);

}  // namespace orlan::simulate
