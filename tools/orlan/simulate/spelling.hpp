#pragma once

#include <span>
#include <string_view>

namespace orlan::simulate {

/// The candidate that takes the fewest changed, added, dropped or swapped letters to write, letter case
/// aside; the first of equals. Empty without candidates.
[[nodiscard]] std::string_view nearest(std::string_view word, std::span<const std::string_view> candidates);

}  // namespace orlan::simulate
