#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/Enumeration.hpp"
#include "orlan/base/Result.hpp"
#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"

namespace orlan {

/// Whether the person lets the application notify, with the raw values that phones use.
enum class NotificationAuthorization { notDetermined, denied, authorized, provisional, ephemeral };

template <>
struct RawValues<NotificationAuthorization> {
  static constexpr std::array table{std::pair{NotificationAuthorization::notDetermined, std::int64_t{0}},
                                    std::pair{NotificationAuthorization::denied, std::int64_t{1}},
                                    std::pair{NotificationAuthorization::authorized, std::int64_t{2}},
                                    std::pair{NotificationAuthorization::provisional, std::int64_t{3}},
                                    std::pair{NotificationAuthorization::ephemeral, std::int64_t{4}}};
};

/// Bits that say how a notification may appear.
namespace notificationOptions {
inline constexpr std::uint32_t badge = 1;
inline constexpr std::uint32_t sound = 2;
inline constexpr std::uint32_t alert = 4;
inline constexpr std::uint32_t banner = 16;
}  // namespace notificationOptions

/// What a notification shows and carries.
struct NotificationContent {
  std::string title;
  std::string body;
  json::Object userInfo;
  bool defaultSound = false;

  // What arrives from elsewhere may carry more than the library itself ever sets.
  std::string subtitle;
  std::optional<std::int64_t> badge;
  std::optional<std::string> sound;
  std::string threadIdentifier;
  std::string categoryIdentifier;
  std::string targetContentIdentifier;
  std::string launchImageName;
  std::size_t attachments = 0;
};

/// A notification on its way. Of two with the same identifier the later one replaces the earlier.
struct NotificationRequest {
  std::string identifier;
  NotificationContent content;
  Duration delay{};  // from scheduling to delivery; once
};

/// What a person did with a notification: tapped it, or chose one of its actions.
struct NotificationResponse {
  NotificationRequest request;
  std::string actionIdentifier = "default";
};

/// Answers the notification centre. Called on the main thread; the completion is called exactly once.
class NotificationCenterDelegate {
 public:
  virtual ~NotificationCenterDelegate() = default;

  // NOLINTBEGIN(performance-unnecessary-value-param): who overrides may keep the completion for later.
  /// A notification arrives while the application is in front; answer with `notificationOptions` (0: not
  /// shown).
  virtual void willPresent(const NotificationRequest&, std::function<void(std::uint32_t)> completion) {
    completion(0);
  }
  /// The person tapped a notification.
  virtual void didReceive(const NotificationResponse&, std::function<void()> completion) { completion(); }
  // NOLINTEND(performance-unnecessary-value-param)

  /// For the log.
  [[nodiscard]] virtual std::string_view name() const { return "the host's own"; }
};

/// The phone's notification centre.
class NotificationCenter {
 public:
  virtual ~NotificationCenter() = default;

  /// Held weakly; whoever comes last is the delegate. Main thread.
  virtual void setDelegate(std::weak_ptr<NotificationCenterDelegate> delegate) = 0;
  [[nodiscard]] virtual std::shared_ptr<NotificationCenterDelegate> delegate() const = 0;

  /// Schedules; `done` runs once, later, on any thread. A request with a known identifier replaces it.
  virtual void add(NotificationRequest request, std::function<void(Result<void>)> done) = 0;

  /// Asks the person (at most once a phone). `done` runs once, later, on any thread: granted or not.
  virtual void requestAuthorization(std::uint32_t options, std::function<void(Result<bool>)> done) = 0;

  /// `done` runs once, later, on any thread.
  virtual void authorizationStatus(std::function<void(NotificationAuthorization)> done) = 0;
};

}  // namespace orlan
