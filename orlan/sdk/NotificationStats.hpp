#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"

namespace orlan {

/// How many campaign notifications each monitor accounted for, and for which reason.
struct NotificationStats {
  std::int64_t fgNotifications = 0;
  std::int64_t bgNotifications = 0;
  std::int64_t totalNotifications = 0;
  std::int64_t entryNotifications = 0;  // activation "ON_ENTER"
  std::int64_t exitNotifications = 0;   // activation "ON_EXIT"
  TimePoint lastReportTime;             // start of the counting period

  /// `monitor` is `fgNotifications` or `bgNotifications`.
  void record(std::int64_t NotificationStats::*monitor, std::string_view activation);

  /// Notifications by monitor over all notifications: 1 unless something was counted twice. Only with a
  /// total.
  [[nodiscard]] double duplicationRate() const;

  /// For people; `now` ends the period, in whole minutes towards zero.
  [[nodiscard]] std::string summary(TimePoint now) const;

  /// For the backend: the counters with the transitions and the length of the session.
  [[nodiscard]] json::Object telemetry(std::int64_t transitions, Duration session) const;

  friend bool operator==(const NotificationStats&, const NotificationStats&) = default;
};

}  // namespace orlan
