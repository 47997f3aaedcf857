#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orlan::output {

/// A text as a person may look at it, in a terminal or on a page: control characters and bytes that are not
/// UTF-8 stand there as escapes and are never obeyed. Line breaks stay; what follows one is set `indent`
/// blanks in, so that it cannot pass for a line of our own.
[[nodiscard]] std::string shown(std::string_view text, std::size_t indent = 0);

}  // namespace orlan::output
