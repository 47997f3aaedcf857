#include "tools/orlan/report/Report.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "orlan/base/text.hpp"
#include "tools/orlan/report/Html.hpp"
#include "tools/orlan/report/MapView.hpp"
#include "tools/orlan/report/Style.hpp"
#include "tools/orlan/report/TimelineView.hpp"

namespace orlan::report {

namespace {

std::string summary(const ReportData& data) {
  const auto entries = std::ranges::count_if(data.crossings, [](const Crossing& c) { return c.entry; });
  const auto count = [](std::size_t n, std::string_view what) {
    return fmt::format("<div><b>{}</b><span>{}</span></div>", n, what);
  };
  return "<div class=\"numbers\">" + count(data.fixes.size(), "fixes") +
         count(data.areas.size(), "campaign areas") + count(static_cast<std::size_t>(entries), "entries") +
         count(data.crossings.size() - static_cast<std::size_t>(entries), "exits") +
         count(data.notifications.size(), "notifications") + count(data.requests.size(), "requests") +
         "</div>\n";
}

std::string place(const std::optional<Coordinate>& where) {
  if (!where) return {};
  return " · " + text::fixed(where->latitude, 5) + ", " + text::fixed(where->longitude, 5);
}

std::string notificationCards(const ReportData& data) {
  if (data.notifications.empty()) return R"(<p class="nothing">No notification.</p>)";
  std::string out = "<div class=\"phone\">\n";
  for (const Notification& n : data.notifications) {
    out += fmt::format(
        R"(<div class="note" id="n{0}"><div class="icon">{0}</div><div><b>{1}</b><p>{2}</p><small>{3}{4} · {5}{6}</small></div></div>)",
        n.number, escaped(n.request.content.title), escaped(n.request.content.body), data.clockTime(n.at),
        place(n.where), escaped(n.state), n.tapped ? ", tapped" : "");
    out += '\n';
  }
  return out + "</div>\n";
}

constexpr std::string_view mapLegend =
    R"html(<p class="legend"><i class="entry"></i>entered<i class="exit"></i>left
<i class="seen"></i>seen by the background monitor<i class="track"></i>track
<i class="region"></i>circle watched at the end; a number is a notification below</p>)html";

constexpr std::string_view timelineLegend =
    R"html(<p class="legend"><i class="inside"></i>inside a campaign, as each of the two monitors sees it
<i class="pocket"></i>application in the background</p>)html";

}  // namespace

std::string renderReport(const ReportData& data) {
  return fmt::format(
      "<!doctype html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
      "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\">"
      "<title>{0}</title><style>{1}</style></head><body><main>\n"
      "<h1>{0}</h1><p class=\"when\">{2} UTC, {3} minutes</p>\n{4}"
      "<h2>Map</h2>\n{5}\n{6}\n<h2>Timeline</h2>\n{7}\n{8}\n<h2>Notifications</h2>\n{9}"
      "<h2>Events</h2>\n<details><summary>Everything in "
      "order</summary>\n{10}\n</details>\n</main></body></html>\n",
      escaped(data.title), styleSheet, localDateTime(data.begin, std::chrono::seconds(0)),
      text::fixed(seconds(data.length) / 60.0, 1), summary(data), mapView(data), mapLegend,
      timelineView(data), timelineLegend, notificationCards(data), eventTable(data));
}

}  // namespace orlan::report
