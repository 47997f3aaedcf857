#pragma once

#include <string>

#include "tools/orlan/shell/CommandTree.hpp"

namespace orlan::shell {

/// The manual page, section 1, for man(1).
[[nodiscard]] std::string manual(const Command& program, const std::string& version);

}  // namespace orlan::shell
