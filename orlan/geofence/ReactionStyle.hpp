#pragma once

#include <string_view>

#include "orlan/backend/Activity.hpp"
#include "orlan/geofence/NotificationCounter.hpp"

namespace orlan {

/// In what the two monitors' reactions to the same crossing differ; all else is common.
struct ReactionStyle {
  // How log lines open.
  std::string_view entered;   // then the campaign id
  std::string_view exited;    // then the campaign id
  std::string_view cooldown;  // of the cooldown check
  std::string_view posting;   // while notifications are posted
  std::string_view refused;   // then why the notification centre did not take a notification

  // What the exit line says of the time spent inside, and both of time: seconds with so many decimals.
  std::string_view dwellNote;
  int noteDecimals;

  std::string_view exitSkipped;  // whole line

  // Whole lines before the geo reports; empty: none.
  std::string_view reportingGeo;
  std::string_view notReportingGeo;

  /// Whether a notification's delivery is reported before its payload is built and logged, or after.
  bool reportsBeforePayload;

  /// The type under which the crossing itself is reported.
  NotificationType crossingType;

  /// Which count a reaction goes into.
  void (NotificationCounter::*count)(std::string_view activation);

  static const ReactionStyle foreground;
  static const ReactionStyle background;
};

}  // namespace orlan
