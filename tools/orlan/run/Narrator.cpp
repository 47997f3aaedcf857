#include "tools/orlan/run/Narrator.hpp"

#include <fmt/format.h>

#include <cstdio>
#include <map>
#include <utility>

#include "orlan/base/text.hpp"
#include "orlan/surveys/SurveyFields.hpp"

namespace orlan::run {

namespace {

constexpr std::string_view green = "\x1b[32m";
constexpr std::string_view red = "\x1b[31m";
constexpr std::string_view yellow = "\x1b[33m";
constexpr std::string_view dim = "\x1b[2m";
constexpr std::string_view plain = "\x1b[0m";
constexpr std::string_view eraseLine = "\r\x1b[K";

std::string placeText(const std::optional<Coordinate>& where) {
  if (!where) return "place unknown";
  return text::fixed(where->latitude, 5) + ", " + text::fixed(where->longitude, 5);
}

json::Value placeValue(const std::optional<Coordinate>& where) {
  if (!where) return nullptr;
  return json::Array{where->latitude, where->longitude};
}

std::string detailLine(const std::string& before, const std::string& text) {
  return fmt::format("{:12}{}\n", "", text::escapedControls(before + text));
}

/// Requests by "method path": how many got which outcome.
std::map<std::string, std::map<std::string, int>> requestCounts(const report::ReportData& data) {
  std::map<std::string, std::map<std::string, int>> counts;
  for (const report::Request& request : data.requests) {
    ++counts[request.method + " " + request.path][request.outcome.empty() ? "unanswered" : request.outcome];
  }
  return counts;
}

std::size_t entryCount(const report::ReportData& data) {
  std::size_t entries = 0;
  for (const report::Crossing& crossing : data.crossings) entries += crossing.entry ? 1 : 0;
  return entries;
}

}  // namespace

Narrator::Narrator(Voice voice, TimePoint begin, std::chrono::seconds utcOffset)
    : voice_(voice), begin_(begin), utcOffset_(utcOffset) {}

void Narrator::crossed(const report::Crossing& crossing) {
  if (voice_.json) {
    return object(crossing.at, crossing.entry ? "entry" : "exit",
                  {{"campaign", crossing.campaign},
                   {"campaignId", crossing.campaignId},
                   {"locationId", crossing.locationId},
                   {"monitor", crossing.monitor},
                   {"place", placeValue(crossing.where)}});
  }
  row(crossing.at, crossing.entry ? green : red, crossing.entry ? "entered" : "left",
      fmt::format("{}  ({}; {})", text::escapedControls(crossing.campaign), placeText(crossing.where),
                  crossing.monitor));
}

void Narrator::notified(const report::Notification& notification) {
  const NotificationContent& content = notification.request.content;
  if (voice_.json) {
    return object(notification.at, "notification",
                  {{"number", notification.number},
                   {"headline", content.title},
                   {"body", content.body},
                   {"state", notification.state},
                   {"place", placeValue(notification.where)}});
  }
  row(notification.at, yellow, "🔔",
      fmt::format("#{} {}", notification.number, text::escapedControls(content.title)));
  say(fmt::format(
      "{:12}{}\n{:12}at {}{}\n", "", text::escapedControls(content.body), "", placeText(notification.where),
      notification.state == "presented" ? "" : " (" + text::escapedControls(notification.state) + ")"));
}

void Narrator::noted(const report::Moment& moment) {
  if (voice_.json) return object(moment.at, moment.kind, {{"text", moment.text}});
  if (isOldNews(moment)) return;
  row(moment.at, moment.kind == "error" ? red : dim, moment.kind, text::escapedControls(moment.text));
}

bool Narrator::isOldNews(const report::Moment& moment) {
  if (moment.kind != "fetch") return false;
  const std::lock_guard lock(mutex_);
  return std::exchange(lastFetch_, moment.text) == moment.text;
}

void Narrator::opened(const OrlanNotificationDetails& details, Duration at) {
  if (voice_.json) {
    return object(at, "details",
                  {{"headline", details.headline()},
                   {"body", details.body()},
                   {"mediaType", json::encode(details.mediaType())},
                   {"mediaURL", json::encode(details.mediaURL())},
                   {"ctaLabel", json::encode(details.ctaLabel())},
                   {"ctaURL", json::encode(details.ctaURL())},
                   {"notifID", details.notifID()},
                   {"locationID", details.locationID()},
                   {"questions", json::encode(details.questions())},
                   {"completionMessage", json::encode(details.completionMessage())}});
  }
  row(at, yellow, "opened", text::escapedControls(details.headline()));
  std::string out = detailLine("", details.body());
  if (details.mediaURL()) out += detailLine(details.mediaType().value_or("media") + " ", *details.mediaURL());
  if (details.ctaURL()) out += detailLine(details.ctaLabel().value_or("link") + " → ", *details.ctaURL());
  say(out);
}

void Narrator::logLine(std::string_view line) {
  if (!voice_.json) say(line);
}

void Narrator::progress(double share, Duration at, std::string_view hint) {
  if (!voice_.progress) return;
  const std::lock_guard lock(mutex_);
  progressShown_ = true;
  const std::string shown =
      fmt::format("\r{} {:3.0f} %{}\x1b[K", time(at), share * 100.0, text::escapedControls(hint));
  std::fwrite(shown.data(), 1, shown.size(), stdout);
  std::fflush(stdout);
}

void Narrator::summary(const report::ReportData& data,
                       const std::vector<std::pair<std::string, std::string>>& files) {
  const std::size_t entries = entryCount(data);
  const std::size_t exits = data.crossings.size() - entries;
  const auto requests = requestCounts(data);
  if (voice_.json) {
    json::Object byEndpoint;
    for (const auto& [endpoint, outcomes] : requests) {
      json::Object counts;
      for (const auto& [outcome, count] : outcomes) counts.set(outcome, count);
      byEndpoint.set(endpoint, std::move(counts));
    }
    json::Object members{{"fixes", static_cast<std::int64_t>(data.fixes.size())},
                         {"entries", static_cast<std::int64_t>(entries)},
                         {"exits", static_cast<std::int64_t>(exits)},
                         {"notifications", static_cast<std::int64_t>(data.notifications.size())},
                         {"requests", std::move(byEndpoint)}};
    for (const auto& [name, path] : files) members.set(name, path);
    return object(data.length, "summary", members);
  }
  std::string out =
      fmt::format("\n{} fixes, {} entries, {} exits, {} notifications, {} requests\n", data.fixes.size(),
                  entries, exits, data.notifications.size(), data.requests.size());
  for (const auto& [endpoint, outcomes] : requests) {
    out += fmt::format("  {:42}", text::escapedControls(endpoint));
    for (const auto& [outcome, count] : outcomes)
      out += fmt::format("  {} × {}", count, text::escapedControls(outcome));
    out += '\n';
  }
  for (const auto& [name, path] : files) out += fmt::format("{}: {}\n", name, text::escapedControls(path));
  say(out);
}

void Narrator::say(std::string_view text) {
  const std::lock_guard lock(mutex_);
  if (progressShown_) std::fwrite(eraseLine.data(), 1, eraseLine.size(), stdout);
  progressShown_ = false;
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

void Narrator::row(Duration at, std::string_view colour, std::string_view what, std::string_view text) {
  // Padding by hand: a bell is two columns wide, and colour codes are none.
  const std::size_t columns = what == "🔔" ? 2 : what.size();
  const std::string gap(columns < 12 ? 12 - columns : 1, ' ');
  say(fmt::format("{}  {}{}{}{}{}\n", time(at), voice_.colour ? colour : "", what, voice_.colour ? plain : "",
                  gap, text));
}

void Narrator::object(Duration at, std::string_view event, const json::Object& members) {
  json::Object line{{"time", isoDateTime(begin_ + at)}, {"at", seconds(at)}, {"event", event}};
  for (const auto& [key, value] : members) line.set(key, value);
  say(json::print(line) + "\n");
}

std::string Narrator::time(Duration at) const {
  return localTimeOfDay(begin_ + at, utcOffset_).substr(0, 8);
}

}  // namespace orlan::run
