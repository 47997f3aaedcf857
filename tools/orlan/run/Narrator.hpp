#pragma once

#include <chrono>
#include <mutex>
#include <string>
#include <string_view>

#include "orlan/base/json.hpp"
#include "orlan/notifications/OrlanNotificationDetails.hpp"
#include "tools/orlan/report/ReportCollector.hpp"

namespace orlan::run {

/// How to speak: for a person, in colour or not, or one JSON object a line for a machine.
struct Voice {
  bool json = false;
  bool colour = false;    // only on a terminal
  bool progress = false;  // a line that is overwritten; only on a terminal
};

/// Tells on standard output what the person holding the phone sees. Text from campaigns is shown with its
/// control characters escaped, never obeyed. Any thread.
class Narrator final : public report::ReportListener {
 public:
  Narrator(Voice voice, TimePoint begin, std::chrono::seconds utcOffset);

  void crossed(const report::Crossing& crossing) override;
  void notified(const report::Notification& notification) override;
  void noted(const report::Moment& moment) override;

  /// The details of a notification that was tapped, as a host shows them.
  void opened(const OrlanNotificationDetails& details, Duration at);

  /// One of the library's own log lines.
  void logLine(std::string_view line);

  /// How far the replay is, 0 to 1, and what else belongs beside it; shown only where a line can be
  /// overwritten.
  void progress(double share, Duration at, std::string_view hint);

  /// The summary at the end; `files` are name and path of what was written.
  void summary(const report::ReportData& data, const std::vector<std::pair<std::string, std::string>>& files);

 private:
  void say(std::string_view text);               // whole lines
  bool isOldNews(const report::Moment& moment);  // a refresh that brought what was there
  void row(Duration at, std::string_view colour, std::string_view what, std::string_view text);
  void object(Duration at, std::string_view event, const json::Object& members);
  [[nodiscard]] std::string time(Duration at) const;

  Voice voice_;
  TimePoint begin_;
  std::chrono::seconds utcOffset_;
  std::mutex mutex_;  // one line at a time
  bool progressShown_ = false;
  std::string lastFetch_;
};

}  // namespace orlan::run
