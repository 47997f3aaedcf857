#include "tools/orlan/run/Narrator.hpp"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <map>
#include <utility>

#include "orlan/base/text.hpp"
#include "tools/orlan/output/shown.hpp"
#include "tools/orlan/simulate/valueForms.hpp"

namespace orlan::run {

namespace {

constexpr std::string_view green = "\x1b[32m";
constexpr std::string_view red = "\x1b[31m";
constexpr std::string_view yellow = "\x1b[33m";
constexpr std::string_view dim = "\x1b[2m";
constexpr std::string_view plain = "\x1b[0m";
constexpr std::string_view eraseLine = "\r\x1b[K";

// How far in a text goes on that has several lines.
constexpr std::size_t rowIndent = 12;
constexpr std::size_t logIndent = 6;

std::string placeText(const std::optional<Coordinate>& where) {
  if (!where) return "place unknown";
  return text::fixed(where->latitude, 5) + ", " + text::fixed(where->longitude, 5);
}

json::Value placeValue(const std::optional<Coordinate>& where) {
  if (!where) return nullptr;
  return json::Array{where->latitude, where->longitude};
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
      fmt::format("{}  ({}; {})", crossing.campaign, placeText(crossing.where), crossing.monitor));
}

void Narrator::notified(const report::Notification& notification) {
  const NotificationContent& content = notification.request.content;
  if (voice_.json) {
    return object(notification.at, "notification",
                  {{"number", static_cast<std::int64_t>(notification.number)},
                   {"headline", content.title},
                   {"body", content.body},
                   {"state", notification.state},
                   {"place", placeValue(notification.where)}});
  }
  row(notification.at, yellow, "🔔",
      fmt::format("#{} {}\n{}\nat {}{}", notification.number, content.title, content.body,
                  placeText(notification.where),
                  notification.state == "presented" ? "" : " (" + notification.state + ")"));
}

void Narrator::noted(const report::Moment& moment) {
  if (voice_.json) return object(moment.at, moment.kind, {{"text", moment.text}});
  if (isOldNews(moment)) return;
  row(moment.at, moment.kind == "error" ? red : dim, moment.kind, moment.text);
}

bool Narrator::isOldNews(const report::Moment& moment) {
  if (moment.kind != "fetch") return false;
  const std::lock_guard lock(mutex_);
  return std::exchange(lastFetch_, moment.text) == moment.text;
}

void Narrator::opened(const OrlanNotificationDetails& details, Duration at) {
  if (voice_.json) {
    const json::Value form = simulate::formOf(details);
    return object(at, "details", *form.object());
  }
  std::string text = details.headline() + "\n" + details.body();
  if (details.mediaURL()) text += "\n" + details.mediaType().value_or("media") + " " + *details.mediaURL();
  if (details.ctaURL()) text += "\n" + details.ctaLabel().value_or("link") + " → " + *details.ctaURL();
  row(at, yellow, "opened", text);
}

void Narrator::logged(std::string_view level, std::string_view message) {
  if (voice_.log && !voice_.json) print(output::shown(fmt::format("{:5} {}", level, message), logIndent));
}

void Narrator::progress(double share, Duration at, std::string_view hint) {
  if (!voice_.progress) return;
  const std::lock_guard lock(mutex_);
  progressShown_ = true;
  const std::string shown =
      fmt::format("\r{} {:3.0f} %{}\x1b[K", time(at), share * 100.0, text::escapedControls(hint));
  write(shown);
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
  std::string text =
      fmt::format("\n{} fixes, {} entries, {} exits, {} notifications, {} requests", data.fixes.size(),
                  entries, exits, data.notifications.size(), data.requests.size());
  for (const auto& [endpoint, outcomes] : requests) {
    text += fmt::format("\n  {:42}", endpoint);
    for (const auto& [outcome, count] : outcomes) text += fmt::format("  {} × {}", count, outcome);
  }
  for (const auto& [name, path] : files) text += fmt::format("\n{}: {}", name, path);
  print(output::shown(text));
}

int Narrator::trouble() {
  const std::lock_guard lock(mutex_);
  return trouble_;
}

void Narrator::print(std::string_view lines) {
  const std::lock_guard lock(mutex_);
  if (std::exchange(progressShown_, false)) write(eraseLine);
  write(std::string(lines) + "\n");
}

void Narrator::write(std::string_view bytes) {
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
  if ((!written || std::fflush(stdout) != 0) && trouble_ == 0) trouble_ = errno;
}

void Narrator::row(Duration at, std::string_view colour, std::string_view what, std::string_view text) {
  // Padding by hand: a bell is two columns wide, and colour codes are none.
  const std::size_t columns = what == "🔔" ? 2 : what.size();
  const std::string gap(columns < 12 ? 12 - columns : 1, ' ');
  print(fmt::format("{}  {}{}{}{}{}", time(at), voice_.colour ? colour : "", what, voice_.colour ? plain : "",
                    gap, output::shown(text, rowIndent)));
}

void Narrator::object(Duration at, std::string_view event, const json::Object& members) {
  json::Object line{{"time", isoDateTime(begin_ + at)}, {"at", seconds(at)}, {"event", event}};
  for (const auto& [key, value] : members) line.set(key, value);
  print(output::shown(json::print(line)));  // JSON has the same escapes
}

std::string Narrator::time(Duration at) const {
  return localTimeOfDay(begin_ + at, utcOffset_).substr(0, 8);
}

}  // namespace orlan::run
