#pragma once

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
/// Texts stand there as they came, line breaks and control characters included: whoever shows a log makes
/// them safe to look at. Values of the user info are in JSON's notation.
namespace orlan::diagnostics {

/// The blocks of a notification that arrived, in order; those about foreign fields only when there are some.
/// Entries of the user info stand in its own order.
[[nodiscard]] std::vector<std::string> received(const NotificationContent& content, std::string_view context);

/// What was understood of it.
[[nodiscard]] std::string processed(const OrlanNotificationDetails& details);

}  // namespace orlan::diagnostics
