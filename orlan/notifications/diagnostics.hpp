#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/notifications/OrlanNotificationDetails.hpp"
#include "orlan/platform/NotificationCenter.hpp"

/// What a received notification holds, as framed blocks for the log:
///
///     🔔 PUSH NOTIFICATION RECEIVED [willPresent]
///     ┌─📱 Notification Details
///     │ Title: "Welcome"
///     │ …
///     └────────────────────────────────────────────
///
/// Each value stays on its line: control characters and bytes that are not UTF-8 are escaped, so that no
/// payload can close a frame, begin a line of the log or keep one out of its file.
namespace orlan::diagnostics {

/// The blocks of a notification that arrived, in order; those about foreign fields only when there are some.
/// Entries of the user info stand in its own order.
[[nodiscard]] std::vector<std::string> received(const NotificationContent& content, std::string_view context);

/// What was understood of it.
[[nodiscard]] std::string processed(const OrlanNotificationDetails& details);

/// A text from a payload as it stands on a line of the log.
[[nodiscard]] std::string shown(std::string_view text);
[[nodiscard]] std::string shownOrNil(const std::optional<std::string>& text);

}  // namespace orlan::diagnostics
