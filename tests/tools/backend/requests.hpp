#pragma once

#include <string>
#include <string_view>

#include "tools/orlan/backend/Request.hpp"

/// A request to each endpoint with which nothing is wrong.
namespace orlan::devbackend::good {

inline constexpr char boundary[] = "Boundary-0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D";

Request registration();
Request tokenSync();
Request segments();
Request activity(std::string_view edge = boundary);
Request pluginActivity();
Request survey();
Request surveyEvent();
Request configuration();  // app-scoped, with the legacy header
Request legacyConfiguration();
Request geofenceCheck();  // app-scoped, without the legacy header

}  // namespace orlan::devbackend::good

namespace orlan::devbackend {

/// The request with the first `from` in its body replaced; the test fails when there is none.
Request edited(Request request, std::string_view from, std::string_view to);

Request withHeader(Request request, std::string_view name,
                   std::string_view value);  // replaced, or at the end
Request withoutHeader(Request request, std::string_view name);

}  // namespace orlan::devbackend
