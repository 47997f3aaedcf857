#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "linux/TemporaryDirectory.hpp"
#include "phones/linux/Track.hpp"

namespace orlan::linuxphone {
namespace {

const std::string data = ORLAN_SOURCE_DIR "/tests/data/tracks/";

TEST(RecordedTracks, AreReadWhole) {
  const struct {
    const char* file;
    std::size_t count;
    const char* first;
    const char* last;
    double best, worst;  // metres
  } rows[] = {
      {"gpx/apple-watch-savannah.gpx", 44, "2019-12-15T20:19:55Z", "2019-12-15T20:20:38Z", 1.06346, 1.801682},
      {"gpx/gpx1.0_with_all_fields.gpx", 1, "2013-01-01T12:00:04Z", "2013-01-01T12:00:04Z", 505, 505},
      {"gpx/track-with-empty-segment.gpx", 9, "2013-07-06T17:26:26Z", "2013-07-06T17:27:42Z", 5, 5},
      {"gpx/track-with-small-floats.gpx", 3, "1970-01-01T00:00:00Z", "1970-01-01T00:00:02Z", 5, 5},
      {"nmea/haicom-305N.log", 68, "2007-04-08T09:53:04Z", "2007-04-08T09:54:15Z", 5.5, 105.5},
      {"nmea/quectel-eg25-g.log", 23, "2022-09-11T19:15:03Z", "2022-09-11T19:15:33Z", 5.5, 20.5},
  };
  for (const auto& row : rows) {
    const auto track = readTrack(data + row.file);
    ASSERT_TRUE(track) << track.error().description;
    const auto& fixes = track->fixes;
    ASSERT_EQ(fixes.size(), row.count) << row.file;
    EXPECT_EQ(isoDateTime(fixes.front().timestamp), row.first) << row.file;
    EXPECT_EQ(isoDateTime(fixes.back().timestamp), row.last) << row.file;
    const auto [best, worst] = std::ranges::minmax_element(fixes, {}, &Location::horizontalAccuracy);
    EXPECT_DOUBLE_EQ(best->horizontalAccuracy, row.best) << row.file;
    EXPECT_DOUBLE_EQ(worst->horizontalAccuracy, row.worst) << row.file;
    EXPECT_TRUE(std::ranges::is_sorted(fixes, {}, &Location::timestamp)) << row.file;
  }
}

std::string description(const Result<Track>& track) {
  return track ? "a track" : track.error().description;
}

TEST(RecordedTracks, WhatCannotBeWalkedIsOneLineWithFileAndPlace) {
  const test::TemporaryDirectory directory;
  const std::string gpx = "<gpx><trk><trkseg>\n";
  const std::pair<std::string, std::string> rows[] = {
      // content, and what is said behind "path: "
      {"", "the file is empty"},
      {"Dear diary,\n", "neither GPX nor NMEA position sentences (RMC, GGA)"},
      {gpx + "<trkpt lat=\"1\" lon=\"2\"></trkpt>\n", "line 2: Start-end tags mismatch"},
      {gpx + "<trkpt lat=\"90.1\" lon=\"2\"/></trkseg></trk></gpx>",
       "line 2: a point without a valid latitude"},
      {gpx + "<trkpt lat=\"1\" lon=\"nan\"/></trkseg></trk></gpx>",
       "line 2: a point without a valid longitude"},
      {gpx + "<trkpt lat=\"1\" lon=\"2\"><time>noon\n</time></trkpt></trkseg></trk></gpx>",
       "line 2: not a time: noon"},
      {"<gpx><wpt lat=\"1\" lon=\"2\"/></gpx>", "there is no track point in it"},
      {"<kml/>", "line 1: not a GPX file"},
      {"$GPGGA,,,,,,0,,,,,,,,*66\r\n$GPRMC,095255.810,V,2712.6404,S,15303.1201,E,0.00,0.00,080407,,,A*6E\r\n",
       "no position fix in 1 epochs of NMEA sentences"},
      {"$GPRMC,095255.810,A,2712.6404,S,15303.1201,E,0.00,0.00,080407,,,A*6E\n",
       "neither GPX nor NMEA position sentences (RMC, GGA); lines with a wrong checksum: 1"},
  };
  const std::string path = directory.file("walk");
  for (const auto& [content, expected] : rows) {
    std::ofstream(path, std::ios::binary) << content;
    EXPECT_EQ(description(readTrack(path)), path + ": " + expected);
  }
  EXPECT_EQ(description(readTrack("/nowhere")), "/nowhere: No such file or directory");
  EXPECT_EQ(description(readTrack("/dev")), "/dev: Is a directory");
}

/// "time accuracy" of each fix of a document with these points.
std::vector<std::string> gpxFixes(const std::string& points) {
  const auto track =
      parseGpx("<g:gpx xmlns:g=\"x\"><g:trk><g:trkseg>" + points + "</g:trkseg></g:trk></g:gpx>");
  if (!track) return {track.error()};
  std::vector<std::string> fixes;
  for (const auto& fix : track->fixes) {
    fixes.push_back(std::to_string(secondsSince1970(fix.timestamp)).substr(0, 4) + " " +
                    std::to_string(static_cast<int>(fix.horizontalAccuracy)));
  }
  return fixes;
}

TEST(GpxTrack, TimesAndAccuraciesFollowTheirRules) {
  auto point = [](const std::string& inside) { return "<g:trkpt lat='1' lon='2'>" + inside + "</g:trkpt>"; };
  auto timed = [&](const std::string& second) {
    return point("<g:time>1970-01-01T00:00:" + second + "Z</g:time>");
  };
  const struct {
    const char* name;
    std::string points;
    std::vector<std::string> expected;
  } rows[] = {
      {"decimals, zone", point("<g:time>1970-01-01T02:00:00.5+01:59</g:time>"), {"60.5 5"}},
      {"empty time", point("<g:time> </g:time>"), {"0.00 5"}},
      {"out of order", timed("09") + timed("03"), {"3.00 5", "9.00 5"}},
      {"out of order, one without", timed("09") + point("") + timed("03"), {"3.00 5", "6.00 5", "9.00 5"}},
      {"between neighbours",
       timed("01") + point("") + point("") + timed("07"),
       {"1.00 5", "3.00 5", "5.00 5", "7.00 5"}},
      {"before and after", point("") + timed("05") + point(""), {"4.00 5", "5.00 5", "6.00 5"}},
      {"hdop", point("<g:hdop>3</g:hdop>"), {"0.00 15"}},
      {"hdop of nothing", point("<g:hdop>0</g:hdop>") + point("<g:hdop>?</g:hdop>"), {"0.00 5", "1.00 5"}},
      {"accuracy before hdop",
       point("<g:hdop>3</g:hdop><g:extensions><x><hAcc>7</hAcc></x></g:extensions>"),
       {"0.00 7"}},
      {"not valid", point("<g:extensions><accuracy>-1</accuracy></g:extensions>"), {"0.00 -1"}},
  };
  for (const auto& row : rows) EXPECT_EQ(gpxFixes(row.points), row.expected) << row.name;
}

TEST(GpxTrack, TakesRoutesWhenThereIsNoTrack) {
  EXPECT_EQ(parseGpx("<gpx><rte><rtept lat='1' lon='2'/></rte></gpx>").value_or(Track()).fixes.size(), 1U);
}

/// The sentence with its checksum.
std::string sentence(const std::string& body) {
  unsigned sum = 0;
  for (const char c : body) sum ^= static_cast<unsigned char>(c);
  const char* digits = "0123456789ABCDEF";
  return "$" + body + "*" + digits[sum / 16] + digits[sum % 16] + "\r\n";
}

TEST(NmeaTrack, SentencesOfOneTimeMakeOneFix) {
  const std::string rmc = "GPRMC,120000.00,A,5130.0000,N,00007.5000,W,0.0,0.0,291119,,,A";
  const std::string gga = "GNGGA,120000,5130.6000,N,00007.5000,W,1,08,2.0,10.0,M,47.0,M,,";
  const std::string gst = "GPGST,120000.000,1.0,,,,3.0,4.0,5.0";
  const struct {
    const char* name;
    std::string stream;
    std::vector<std::tuple<double, double, std::string>> expected;  // latitude, accuracy, time
  } rows[] = {
      {"RMC alone", sentence(rmc), {{51.5, 5, "2019-11-29T12:00:00Z"}}},
      {"GGA alone", sentence(gga), {{51.51, 10, "1970-01-01T12:00:00Z"}}},
      {"GGA's position wins", sentence(gga) + sentence(rmc), {{51.51, 10, "2019-11-29T12:00:00Z"}}},
      {"in either order", sentence(rmc) + sentence(gga), {{51.51, 10, "2019-11-29T12:00:00Z"}}},
      {"deviations win", sentence(rmc) + sentence(gga) + sentence(gst), {{51.51, 5, "2019-11-29T12:00:00Z"}}},
      {"noise between",
       "#\n" + sentence(rmc) + "\xff\0$GP" + sentence("GPGSV,1,1,00") + "$PUBX,00\n" + sentence("PUBX,00,1") +
           "$GPRMC,1200" + sentence(gga),
       {{51.51, 10, "2019-11-29T12:00:00Z"}}},
      {"one says no fix",
       sentence("GPRMC,120000.00,V,5130.0000,N,00007.5000,W,,,291119,,,N") + sentence(gga),
       {}},
      {"date comes later",
       sentence("GPGGA,235959,5130.0,N,0.0,W,1") + sentence("GPGGA,235959,5130.0,N,00000.0,E,1,,,,,,,,") +
           sentence("GPRMC,000001,A,5130.0,N,00000.0,E,,,010120,,,A") +
           sentence("GPGGA,000002,5130.0,N,00000.0,E,1,,,,,,,,"),
       {{51.5, 5, "2019-12-31T23:59:59Z"},
        {51.5, 5, "2020-01-01T00:00:01Z"},
        {51.5, 5, "2020-01-01T00:00:02Z"}}},
      {"over midnight without a date",
       sentence("GPGGA,235959,5130.0,N,00000.0,E,1,,,,,,,,") +
           sentence("GPGGA,000000,5130.0,N,00000.0,E,1,,,,,,,,"),
       {{51.5, 5, "1970-01-01T23:59:59Z"}, {51.5, 5, "1970-01-02T00:00:00Z"}}},
  };
  for (const auto& row : rows) {
    const auto track = parseNmea(row.stream);
    std::vector<std::tuple<double, double, std::string>> fixes;
    for (const auto& fix : track ? track->fixes : std::vector<Location>()) {
      fixes.emplace_back(fix.coordinate.latitude, fix.horizontalAccuracy, isoDateTime(fix.timestamp));
    }
    EXPECT_EQ(fixes, row.expected) << row.name;
  }
}

TEST(NmeaTrack, CoordinatesAreStrict) {
  const std::pair<std::string, std::optional<Coordinate>> rows[] = {
      {"5130.6,N,00007.5,W", Coordinate{51.51, -0.125}},
      {"9000.0,S,18000.0,E", Coordinate{-90, 180}},
      {"9000.1,N,00000.0,E", {}},
      {"5160.0,N,00000.0,E", {}},
      {"5130.0,X,00000.0,E", {}},
      {"5130.0,N,00000.0,N", {}},
      {"51-0.0,N,00000.0,E", {}},
      {"1,N,00000.0,E", {}},
  };
  for (const auto& [fields, expected] : rows) {
    const auto track = parseNmea(sentence("GPRMC,120000,A," + fields + ",,,010120,,,A"));
    EXPECT_EQ(track ? std::optional(track->fixes.front().coordinate) : std::nullopt, expected) << fields;
  }
}

}  // namespace
}  // namespace orlan::linuxphone
