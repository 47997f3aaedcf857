#pragma once

#include <string_view>

/// What makes a campaign's notification due, as the backend writes it (in any case) and as it is compared.
namespace orlan::activations {

inline constexpr std::string_view onEnter = "ON_ENTER";
inline constexpr std::string_view onExit = "ON_EXIT";
inline constexpr std::string_view push = "PUSH";

}  // namespace orlan::activations
