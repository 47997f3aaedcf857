#include "orlan/geofence/ReactionStyle.hpp"

namespace orlan {

constexpr ReactionStyle ReactionStyle::foreground{
    .entered = "🟢 FG didEnterPolygon camp ",
    .exited = "🔴 FG didExitPolygon camp ",
    .cooldown = "🔔 ",
    .posting = "🔔 FG ",
    .refused = "🔔 FG Failed to schedule notification: ",
    .dwellNote = " (dwell: ",
    .noteDecimals = 1,
    .exitSkipped = "🔴 Skipping ON_EXIT notifications due to cooldown",
    .reportingGeo = "🟢 Reporting Geo",
    .notReportingGeo = "🔴 NOT Reporting Geo",
    .reportsBeforePayload = false,
    .crossingType = NotificationType::location,
    .count = &NotificationCounter::recordFGNotification,
};

constexpr ReactionStyle ReactionStyle::background{
    .entered = "📥 BG didEnterRegion camp ",
    .exited = "📤 BG didExitRegion camp ",
    .cooldown = "🔔 BG ",
    .posting = "🔔 ",
    .refused = "\uFFFD\uFFFD Failed to schedule notification: ",  // as readers of the log know it
    .dwellNote = " (dwell time: ",
    .noteDecimals = 0,
    .exitSkipped = "📤 BG Skipping ON_EXIT notifications due to cooldown",
    .reportingGeo = "",
    .notReportingGeo = "",
    .reportsBeforePayload = true,
    .crossingType = NotificationType::geofence,
    .count = &NotificationCounter::recordBGNotification,
};

}  // namespace orlan
