#pragma once

#include <optional>

#include "orlan/base/Time.hpp"

namespace orlan {

/// Whether an exit may be announced, decided from values alone.
struct ExitCooldown {
  static constexpr Duration notificationCooldown = std::chrono::seconds(900);

  enum class Verdict {
    allowed,    // no announcement within the cooldown
    restarted,  // first check of a later run than the stored one: allowed, whatever was announced before
    denied      // announced `elapsed` ago
  };

  Verdict verdict = Verdict::allowed;
  Duration elapsed{};  // since the last announcement, when denied; negative if the clock was set back

  /// `appStart` is when the checking monitor came to life, `storedStart` what the store says of the monitor
  /// that checked last. A last announcement in the future denies.
  [[nodiscard]] static ExitCooldown decide(TimePoint now, TimePoint appStart,
                                           std::optional<TimePoint> storedStart,
                                           std::optional<TimePoint> lastAnnounced) {
    if (storedStart && appStart > *storedStart) return {Verdict::restarted, {}};
    if (!lastAnnounced) return {Verdict::allowed, {}};
    const Duration since = orlan::elapsed(*lastAnnounced, now);
    if (since < notificationCooldown) return {Verdict::denied, since};
    return {Verdict::allowed, {}};
  }

  friend bool operator==(const ExitCooldown&, const ExitCooldown&) = default;
};

}  // namespace orlan
