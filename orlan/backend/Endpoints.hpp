#pragma once

/// Paths of the platform API, put behind a base URL as they are.
namespace orlan::endpoints {

inline constexpr char deviceRecord[] = "/api/device-registerd/create";  // the backend's spelling
inline constexpr char activities[] = "/api/activities";
inline constexpr char pluginActivity[] = "/api/plugin-activity/create";

}  // namespace orlan::endpoints
