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
  bool log = false;       // the library's own lines, too; not as JSON
  bool colour = false;    // only on a terminal
  bool progress = false;  // a line that is overwritten; only on a terminal
};

/// Tells on standard output what the person holding the phone sees. Control characters of any text are
/// escaped, never obeyed. Any thread.
class Narrator final : public report::ReportListener {
 public:
  Narrator(Voice voice, TimePoint begin, std::chrono::seconds utcOffset);

  void crossed(const report::Crossing& crossing) override;
  void notified(const report::Notification& notification) override;
  void noted(const report::Moment& moment) override;
  void logged(std::string_view level, std::string_view message) override;

  /// The details of a notification that was tapped, as a host shows them.
  void opened(const OrlanNotificationDetails& details, Duration at);

  /// How far the replay is, 0 to 1, and what else belongs beside it; shown only where a line can be
  /// overwritten.
  void progress(double share, Duration at, std::string_view hint);

  /// The summary at the end; `files` are name and path of what was written.
  void summary(const report::ReportData& data, const std::vector<std::pair<std::string, std::string>>& files);

  /// The `errno` of the first write that failed, such as EPIPE when nobody reads any more; 0: all is well.
  [[nodiscard]] int trouble();

 private:
  void print(std::string_view lines);            // without the last line's end
  void write(std::string_view bytes);            // under the mutex
  bool isOldNews(const report::Moment& moment);  // a refresh that brought what was there
  void row(Duration at, std::string_view colour, std::string_view what, std::string_view text);
  void object(Duration at, std::string_view event, const json::Object& members);
  [[nodiscard]] std::string time(Duration at) const;

  Voice voice_;
  TimePoint begin_;
  std::chrono::seconds utcOffset_;
  std::mutex mutex_;  // one line at a time
  bool progressShown_ = false;
  int trouble_ = 0;
  std::string lastFetch_;
};

}  // namespace orlan::run
