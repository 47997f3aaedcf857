#pragma once

#include <array>
#include <string_view>

/// The members that the parts of a scenario may have; those of a step stand in the step table.
namespace orlan::simulate::keys {

inline constexpr auto scenario = std::to_array<std::string_view>(
    {"name", "start", "seed", "device", "backend", "hosts", "steps", "until"});

inline constexpr auto device = std::to_array<std::string_view>(
    {"vendorIdentifier", "systemVersion", "model", "name", "locale", "timeZone", "bundle", "plist",
     "application", "locationAuthorization", "locationAuthorizationAfterRequest", "notificationAuthorization",
     "grantNotifications", "notificationFailure", "position", "regions", "store", "files"});
inline constexpr auto bundle = std::to_array<std::string_view>({"identifier", "info"});

inline constexpr auto hosts = std::to_array<std::string_view>({"platform", "transmission"});
inline constexpr auto route = std::to_array<std::string_view>({"method", "path", "responses"});
inline constexpr auto response = std::to_array<std::string_view>(
    {"status", "headers", "json", "text", "base64", "file", "error", "delay"});

inline constexpr auto fix = std::to_array<std::string_view>({"latitude", "longitude", "accuracy"});
/// Of a notification that nobody scheduled.
inline constexpr auto notification =
    std::to_array<std::string_view>({"identifier", "title", "body", "userInfo", "subtitle", "badge", "sound",
                                     "threadIdentifier", "categoryIdentifier"});
inline constexpr auto answer = std::to_array<std::string_view>({"question_id", "type", "value", "choice"});
inline constexpr auto selection = std::to_array<std::string_view>({"choice_id"});

}  // namespace orlan::simulate::keys
