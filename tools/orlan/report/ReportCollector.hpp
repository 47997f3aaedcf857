#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

#include "orlan/sdk/OrlanServices.hpp"
#include "phones/common/PhoneObserver.hpp"
#include "tools/orlan/report/ReportData.hpp"

namespace orlan::report {

/// Hears each thing as it is collected. Called on the thread that reported it; main for the first two.
class ReportListener {
 public:
  virtual ~ReportListener() = default;
  virtual void crossed(const Crossing&) {}
  virtual void notified(const Notification&) {}  // it was shown, or refused
  virtual void noted(const Moment&) {}
  virtual void logged(std::string_view /*level*/, std::string_view /*message*/) {}
};

/// Watches a phone and the library on it and keeps what a report shows. The phone may tell it from any
/// thread; `watch`, `note` and the service streams belong to the main thread. Lives until the library is
/// gone.
class ReportCollector final : public phone::PhoneObserver {
 public:
  /// `elapsed` tells the time since the beginning of the run; any thread. The listener outlives this.
  ReportCollector(std::string title, TimePoint begin, std::chrono::seconds utcOffset,
                  std::function<Duration()> elapsed, ReportListener* listener = nullptr);

  /// A process begins in this state. Listens to its services as they come to life; brings none to life.
  /// Again after a relaunch.
  void watch(OrlanServices& services, ApplicationState state);

  /// Since the beginning of the run. Any thread.
  [[nodiscard]] Duration elapsed() const { return elapsed_(); }

  void note(std::string kind, std::string text);

  /// A copy of what is known so far, as long as the run is by now.
  [[nodiscard]] ReportData data() const;

  /// The notification of that number, if it has come up.
  [[nodiscard]] std::optional<NotificationRequest> shown(std::size_t number) const;

  /// Requests without an answer yet.
  [[nodiscard]] std::size_t openRequests() const;

  void consoleLines(const ConsoleLines& lines) override;
  void request(phone::RequestId id, const HttpRequest& request) override;
  void response(phone::RequestId id, const Result<HttpReply>& result) override;
  void notificationScheduled(const NotificationRequest& request) override;
  void notificationRefused(const NotificationRequest& request, const Error& why) override;
  void notificationPresented(const NotificationRequest& request, std::uint32_t options) override;
  void notificationDelivered(const NotificationRequest& request) override;
  void notificationTapped(const NotificationResponse& response) override;
  void fixes(std::span<const Location> batch) override;
  void applicationSignal(ApplicationSignal signal, ApplicationState state) override;

 private:
  void inBackground(bool now);
  void crossed(bool entry, std::string_view monitor, std::int64_t campaignId, std::int64_t locationId);
  void campaignsArrived(const CampaignData& campaigns);
  void notificationState(const NotificationRequest& request, std::string state);
  [[nodiscard]] std::optional<Coordinate> position() const;
  [[nodiscard]] std::string campaignName(std::int64_t campaignId) const;

  std::function<Duration()> elapsed_;
  ReportListener* listener_;
  mutable std::mutex mutex_;  // guards the rest
  ReportData data_;
  std::optional<Duration> backgroundSince_;
  std::unordered_map<phone::RequestId, std::size_t> open_;  // index into data_.requests
  std::unordered_map<std::string, std::size_t> numbers_;    // of notifications, by identifier
  SubscriptionBag subscriptions_;                           // main thread
};

}  // namespace orlan::report
