#pragma once

/// Paths of both backend families, put behind a base URL as they are.
namespace orlan::endpoints {

inline constexpr char deviceRecord[] = "/api/device-registerd/create";  // the backend's spelling
inline constexpr char activities[] = "/api/activities";
inline constexpr char pluginActivity[] = "/api/plugin-activity/create";
inline constexpr char segments[] = "/api/segments";
inline constexpr char surveyResponse[] = "/api/survey-response";

inline constexpr char configuration[] = "/get-config";  // of the transmission layer, unlike those above

}  // namespace orlan::endpoints
