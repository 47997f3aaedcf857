#include <gtest/gtest.h>

#include <limits>

#include "tools/orlan/report/Report.hpp"

namespace orlan::report {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::size_t count(std::string_view text, std::string_view what) {
  std::size_t found = 0;
  for (auto at = text.find(what); at != std::string_view::npos; at = text.find(what, at + what.size()))
    ++found;
  return found;
}

ReportData rideThrough(const std::string& name) {
  ReportData data;
  data.title = name;
  data.length = std::chrono::minutes(10);
  data.put({7, 70, name, {{51.0, -1.0}, {51.0, -0.9}, {51.1, -0.9}}});
  data.fixes = {{Duration(0), {51.0, -1.0}, 5.0}, {std::chrono::minutes(5), {51.05, -0.95}, 5.0}};
  data.crossings = {{std::chrono::minutes(5), true, "foreground", 7, 70, name, Coordinate{51.05, -0.95}}};
  data.notifications = {
      {1, std::chrono::minutes(5), {"id", {name, name}}, "presented", Coordinate{51.05, -0.95}}};
  data.requests = {{std::chrono::minutes(5), "POST", "/x?" + name, name}};
  data.moments = {{std::chrono::minutes(5), "error", name}};
  return data;
}

TEST(Report, NoTextOfACampaignBecomesMarkupOrAnEscapeSequenceAnywhereOnThePage) {
  const std::string page =
      renderReport(rideThrough("<script>alert('x')</script><img src=\"http://e.example\">\n\x1b[31m"));
  EXPECT_EQ(count(page, "<script"), 0u);
  EXPECT_EQ(count(page, "src=\""), 0u);
  EXPECT_EQ(count(page, "\x1b"), 0u);
  EXPECT_GE(count(page,
                  "&lt;script&gt;alert(&#39;x&#39;)&lt;/script&gt;&lt;img "
                  "src=&quot;http://e.example&quot;&gt;\n\\u001b"),
            8u);  // title twice, map, timeline, card twice, table
  for (const std::string_view reference : {"href=\"http", "url(", "@import", "<link"}) {
    EXPECT_EQ(count(page, reference), 0u) << "loads from elsewhere: " << reference;
  }
}

TEST(Report, ShowsEachThingWhereItHappened) {
  ReportData data = rideThrough("Harbour");
  data.crossings.push_back({std::chrono::minutes(6), true, "foreground", 7, 71, "Harbour", std::nullopt});
  data.crossings.push_back({std::chrono::minutes(6), true, "background", 7, 70, "Harbour", std::nullopt});
  data.inBackground = {{std::chrono::minutes(5), std::chrono::minutes(8)}};
  const std::string page = renderReport(data);
  EXPECT_EQ(count(page, "class=\"area touched\""), 1u);
  EXPECT_EQ(count(page, "class=\"mark entry foreground\""), 1u);
  EXPECT_EQ(count(page, "<div class=\"note\""), 1u);
  EXPECT_EQ(count(page, "class=\"inside foreground\""), 2u) << "two locations of one campaign, two stays";
  EXPECT_EQ(count(page, "class=\"inside background\""), 1u) << "never left: the bar goes on to the end";
  EXPECT_EQ(count(page, "class=\"pocket\" x="), 1u);
}

TEST(Report, ShowsAnAreaThatChangedAsItIsNow) {
  ReportData data = rideThrough("Harbour");
  data.put({7, 70, "Old harbour", {{51.0, -1.0}, {51.0, -0.8}, {51.2, -0.8}}});
  data.put({7, 71, "New harbour", {{51.0, -1.0}, {51.0, -0.9}, {51.1, -0.9}}});
  const std::string page = renderReport(data);
  EXPECT_EQ(count(page, "<title>Old harbour</title></polygon>"), 1u);
  EXPECT_EQ(count(page, "<polygon"), 2u);
}

TEST(Report, DrawsWhatCanBeDrawnOfCoordinatesThatAreNotNumbers) {
  ReportData data = rideThrough("Nowhere");
  data.fixes.push_back({std::chrono::minutes(6), {nan, -1.0}, 5.0});
  data.areas.front().vertices.push_back({std::numeric_limits<double>::infinity(), nan});
  data.circles = {{{nan, nan}, 100.0}, {{51.0, -1.0}, nan}};
  data.crossings.front().where = Coordinate{nan, nan};
  const std::string page = renderReport(data);
  EXPECT_EQ(count(page, "nan"), 0u);
  EXPECT_EQ(count(page, "inf"), 0u);
}

TEST(Report, AnEmptyRunIsStillAPage) {
  const std::string page = renderReport({});
  EXPECT_EQ(count(page, "No position and no campaign area to draw."), 1u);
  EXPECT_EQ(count(page, "No notification."), 1u);
  EXPECT_EQ(count(page, "</html>"), 1u);
}

}  // namespace
}  // namespace orlan::report
