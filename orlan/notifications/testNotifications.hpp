#pragma once

#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"
#include "orlan/platform/NotificationCenter.hpp"
#include "orlan/platform/RandomSource.hpp"

/// Notifications with which a host tries its handling out. All values of their payloads are texts.
namespace orlan::testNotifications {

[[nodiscard]] json::Object basicPayload();

/// The basic payload and what notifications that arrive by push carry besides.
[[nodiscard]] json::Object pushStylePayload(TimePoint now);

/// Comes up a second after it is scheduled, under an identifier of its own.
[[nodiscard]] NotificationRequest request(json::Object userInfo, RandomSource& random);

}  // namespace orlan::testNotifications
