#pragma once

#include <string>
#include <string_view>

#include "tools/orlan/backend/Request.hpp"

/// A request to each endpoint with which nothing is wrong, as text: method and target, the headers, an empty
/// line, the body.
namespace orlan::devbackend::good {

extern const std::string registration;
extern const std::string segments;
extern const std::string pluginActivity;
extern const std::string survey;
extern const std::string configuration;  // app-scoped, with the legacy header
extern const std::string legacyConfiguration;
extern const std::string geofenceCheck;  // app-scoped, without the legacy header
extern const std::string activity;
inline constexpr char uuid[] = "9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A";  // in the registration, of the vendor
inline constexpr std::string_view boundary = "Boundary-0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D";

}  // namespace orlan::devbackend::good

namespace orlan::devbackend {

/// The text with every `from` in it replaced; the test fails when there is none.
std::string edited(std::string text, std::string_view from, std::string_view to);

Request requestOf(std::string_view text);

/// The request as bytes, with the length of its body.
std::string wire(std::string_view text);

}  // namespace orlan::devbackend
