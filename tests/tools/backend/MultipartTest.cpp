#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "requests.hpp"
#include "tools/orlan/backend/BodyChecks.hpp"

namespace orlan::devbackend {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

Problems problemsOf(const Request& request) {
  Problems problems;
  checkActivityUpload(request, problems);
  return problems;
}

TEST(Multipart, EveryByteHasItsPlace) {
  const auto base = good::activity();
  const std::string edge = good::boundary;
  struct Row {
    const char* name;
    Request request;
    const char* problem;
  };
  for (const auto& row : {
           Row{"line feed alone", edited(base, "\r\n", "\n"), "body at byte 47, part device_registered_id"},
           Row{"no empty line", edited(base, "\r\n\r\n", "\r\n"), R"(expected "\r\n", found "device-1\r\n)"},
           Row{"no quotes", edited(base, "\"location_id\"", "location_id"), "part location_id: expected"},
           Row{"lower-case header", edited(base, "Content-Disposition", "content-disposition"),
               R"(found "content-disposition)"},
           Row{"type of a part", edited(base, "\"type\"\r\n", "\"type\"\r\nContent-Type: text/plain\r\n"),
               R"(part type: expected "\r\n", found "Content-Type)"},
           Row{"order of parts", edited(base, "\"latitude\"", "\"longitude\""),
               R"(part latitude: expected "Content-Disposition: form-data; name="latitude"\r\n\r\n", found)"},
           Row{"part left out",
               edited(base,
                      "form-data; name=\"activity\"\r\n\r\ngeofence_entry\r\n--" + edge +
                          "\r\nContent-Disposition: ",
                      ""),
               R"(part activity: expected "Content-Disposition: form-data; name="activity"\r\n\r\n", found)"},
           Row{"ninth part",
               edited(base, "--" + edge + "--\r\n",
                      "--" + edge +
                          "\r\nContent-Disposition: form-data; "
                          "name=\"x\"\r\n\r\n1\r\n--" +
                          edge + "--\r\n"),
               "body at byte 947, closing line"},
           Row{"closing line not ended", edited(base, "--" + edge + "--\r\n", "--" + edge + "--"),
               "body at byte 949, closing line"},
           Row{"never closed", edited(base, "-0.12\r\n--" + edge, "-0.12"), "part longitude: not ended by"},
           Row{"more behind the end", edited(base, edge + "--\r\n", edge + "--\r\n\r\n"),
               "2 bytes behind the closing line"},
           Row{"other boundary", edited(base, "0A1B2C3D", "0A1B2C3E"),
               "body at byte 18, part device_registered_id"},
           Row{"nothing", edited(base, base.body, ""), "body at byte 0, part device_registered_id"},
       }) {
    EXPECT_THAT(problemsOf(row.request), ElementsAre(HasSubstr(row.problem))) << row.name;
  }
}

TEST(Multipart, TheFirstWrongByteIsNamed) {
  const auto request = edited(good::activity(), "\"device_registered_id\"", "\"device_registered\"");
  const auto at = request.body.find("device_registered\"") + std::string("device_registered").size();
  EXPECT_THAT(problemsOf(request), ElementsAre(HasSubstr("body at byte " + std::to_string(at) + ",")));
}

TEST(Multipart, EveryValueHasItsForm) {
  const auto base = good::activity();
  struct Row {
    const char* name;
    Request request;
    const char* problem;
  };
  for (const auto& row : {
           Row{"device", edited(base, "device-1", ""), "part device_registered_id: empty"},
           Row{"notification", edited(base, "42", "+42"),
               R"(part curated_notification_id: expected a decimal integer, found "+42")"},
           Row{"location", edited(base, "\r\n7\r\n", "\r\n07\r\n"),
               "part location_id: expected a decimal integer"},
           Row{"type", edited(base, "\r\ngeofence\r\n", "\r\nfence\r\n"),
               "part type: expected one of notification, location, geofence"},
           Row{"activity", edited(base, "geofence_entry", "geofence_enter"),
               "part activity: expected one of cta_engagement"},
           Row{"time", edited(base, "2025-03-14 09", "2025-03-14T09"),
               "part time: expected yyyy-MM-dd HH:mm:ss"},
           Row{"hour", edited(base, "09:26", "24:26"), "part time"},
           Row{"latitude", edited(base, "51.5", "51.50"),
               R"(part latitude: expected the shortest text "51.5")"},
           Row{"longitude", edited(base, "-0.12", "-180.5"), "part longitude: expected -180 to 180 degrees"},
       }) {
    EXPECT_THAT(problemsOf(row.request), ElementsAre(HasSubstr(row.problem))) << row.name;
  }
  EXPECT_THAT(problemsOf(edited(edited(base, "42", "x"), "51.5", "y")), SizeIs(2))
      << "values do not hide each other";
}

TEST(Multipart, TheBoundaryIsAnUpperCaseUuid) {
  struct Row {
    const char* name;
    Request request;
    const char* problem;
  };
  for (const auto& row : {
           Row{"lower case", good::activity("Boundary-0a1b2c3d-4e5f-4a6b-8c7d-9e0f1a2b3c4d"),
               "an upper-case UUID"},
           Row{"no prefix", good::activity("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D"),
               "expected a boundary of \"Boundary-\""},
           Row{"no boundary", withHeader(good::activity(), "Content-Type", "multipart/form-data"),
               R"(expected "multipart/form-data; boundary=…", found "multipart/form-data")"},
           Row{"quoted",
               withHeader(good::activity(), "Content-Type",
                          std::string("multipart/form-data; boundary=\"") + good::boundary + '"'),
               "an upper-case UUID, found"},
       }) {
    const auto problems = problemsOf(row.request);
    ASSERT_FALSE(problems.empty()) << row.name;
    EXPECT_THAT(problems.front(), HasSubstr(row.problem)) << row.name;
  }
}

}  // namespace
}  // namespace orlan::devbackend
