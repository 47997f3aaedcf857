#pragma once

#include <array>
#include <span>
#include <string_view>

namespace orlan::devbackend {

/// What a made-up campaign says. The question, if any, stands on the notification at the exit.
struct Theme {
  std::string_view slug;  // in addresses: "harbour-market"
  std::string_view name;
  std::string_view enterHeadline;
  std::string_view enterBody;
  std::string_view exitHeadline;
  std::string_view exitBody;
  std::string_view callToAction;
  std::string_view question;
  std::string_view questionType;  // "RATING", "SINGLE_CHOICE", …
  std::span<const std::string_view> choices;
};

/// Nine, so that no two neighbours among nine cells are alike.
[[nodiscard]] const std::array<Theme, 9>& themes();

}  // namespace orlan::devbackend
