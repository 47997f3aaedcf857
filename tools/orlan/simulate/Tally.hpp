#pragma once

#include <cstddef>
#include <string>

#include "phones/common/PhoneObserver.hpp"

namespace orlan::simulate {

/// Counts what happened on a phone, for a summary of one line.
class Tally final : public phone::PhoneObserver {
 public:
  /// "12 requests (1 failed), 3 notifications, 40 fixes, 210 log lines".
  [[nodiscard]] std::string text() const;

  void consoleLines(const ConsoleLines& lines) override { lines_ += lines.count; }
  void request(phone::RequestId, const HttpRequest&) override { ++requests_; }
  void response(phone::RequestId, const Result<HttpReply>& result) override;
  void notificationScheduled(const NotificationRequest&) override { ++notifications_; }
  void fixes(std::span<const Location> batch) override { fixes_ += batch.size(); }

 private:
  std::size_t lines_ = 0;
  std::size_t requests_ = 0;
  std::size_t failures_ = 0;
  std::size_t notifications_ = 0;
  std::size_t fixes_ = 0;
};

}  // namespace orlan::simulate
