#include "orlan/sdk/NotificationStats.hpp"

#include <fmt/format.h>

#include <chrono>

namespace orlan {

void NotificationStats::record(std::int64_t NotificationStats::*monitor, std::string_view activation) {
  ++(this->*monitor);
  ++totalNotifications;
  if (activation == "ON_ENTER") {
    ++entryNotifications;
  } else if (activation == "ON_EXIT") {
    ++exitNotifications;
  }
}

double NotificationStats::duplicationRate() const {
  return static_cast<double>(fgNotifications + bgNotifications) / static_cast<double>(totalNotifications);
}

std::string NotificationStats::summary(TimePoint now) const {
  const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(now - lastReportTime).count();
  return fmt::format(
      "📊 Notification Stats (last {}m):\n   • Total: {} (FG: {}, BG: {})\n   • Entry: {}, Exit: {}", minutes,
      totalNotifications, fgNotifications, bgNotifications, entryNotifications, exitNotifications);
}

json::Object NotificationStats::telemetry(std::int64_t transitions, Duration session) const {
  return {{"total_notifications", totalNotifications}, {"fg_notifications", fgNotifications},
          {"bg_notifications", bgNotifications},       {"entry_notifications", entryNotifications},
          {"exit_notifications", exitNotifications},   {"app_transitions", transitions},
          {"session_duration", seconds(session)}};
}

}  // namespace orlan
