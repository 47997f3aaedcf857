#include <gtest/gtest.h>

#include "backend/Bed.hpp"
#include "orlan/backend/StoreKeys.hpp"

namespace orlan {
namespace {

using sim::HttpAnswer;
using test::Bed;
using test::Events;
using test::rule;

const std::string kVendor = "00000000-0000-4000-8000-000000000001";

sim::PhoneSettings knownInNewYork() {
  sim::PhoneSettings settings;
  settings.store = {{storeKeys::deviceID, "D1"}, {storeKeys::apiKey, "K"}};
  settings.offsetFromUtc = [](TimePoint) { return std::chrono::hours(-4); };
  return settings;
}

std::string uploadResponse(int status, const std::string& body) {
  return "• ┌─📬  HTTP " + std::to_string(status) + " • " + std::string(statusPhrase(status)) +
         "\n│ Raw body:\n" + body + rule(54);
}

void reportMedia(APIService& api) {
  api.reportActivity(ActivityType::mediaViewed, 11, 22, NotificationType::notification);
}
void reportEntry(APIService& api) {
  api.reportGeoActivity(ActivityType::geofence_entry, 11, 22, NotificationType::geofence, 51.5, -0.12);
}

TEST(Activity, OutcomesAreLoggedByThePositionBearingReportOnly) {
  struct Row {
    const char* name;
    HttpAnswer answer;
    Events both;
    std::string geoOnly;
  };
  const auto timedOut = urlErrors::timedOut().description;
  const auto badResponse = "ERROR ❌ Geo activity failed: " + urlErrors::badServerResponse().description;
  const std::string fine = "• ✅ Geo activity reported successfully";
  for (const auto& [name, answer, both, geoOnly] :
       {Row{"200", HttpAnswer::reply(200, "ok"), {uploadResponse(200, "ok")}, fine},
        Row{"300", HttpAnswer::reply(300, "\xff"), {uploadResponse(300, "<binary>")}, badResponse},
        Row{"not HTTP", HttpAnswer::notHttp(), {"• ❌ sendEvent: no HTTPURLResponse"}, badResponse},
        Row{"hangs",
            HttpAnswer::reply(200).after(std::chrono::hours(1)),
            {"• ❌ sendEvent transport error: " + timedOut},
            "ERROR ❌ Geo activity failed: " + timedOut}}) {
    for (const bool geo : {false, true}) {
      Bed bed(knownInNewYork());
      bed.phone.http().answer("POST", "/api/activities", {answer});
      geo ? reportEntry(*bed.api) : reportMedia(*bed.api);
      bed.tape.events.clear();
      auto events = bed.settle();
      events.erase(events.begin());  // the response itself
      auto expected = both;
      if (geo) expected.push_back(geoOnly);
      EXPECT_EQ(events, expected) << name << (geo ? ", with position" : "");
    }
  }
}

TEST(Activity, TimeIsThePhonesOwn) {
  Bed bed(knownInNewYork());
  reportMedia(*bed.api);
  EXPECT_THAT(*bed.tape.requests.at(0).body,
              testing::HasSubstr("name=\"time\"\r\n\r\n2025-03-14 05:26:53\r\n"));
}

TEST(Activity, DeviceIsNamedByWhatIsKnownOfIt) {
  struct Row {
    const char* name;
    json::Object store;
    std::optional<std::string> vendor;
    std::string expected;
  };
  for (const auto& [name, store, vendor, expected] :
       {Row{"the backend's identifier", {{storeKeys::deviceID, "D1"}}, kVendor, "D1"},
        Row{"the vendor's, in upper case", {}, "0a-b", "0A-B"}, Row{"none", {}, std::nullopt, "unknown"}}) {
    sim::PhoneSettings settings;
    settings.store = store;
    settings.device.vendorIdentifier = vendor;
    Bed bed(std::move(settings));
    reportMedia(*bed.api);
    const auto& request = bed.tape.requests.at(0);
    EXPECT_THAT(*request.body,
                testing::HasSubstr("name=\"device_registered_id\"\r\n\r\n" + expected + "\r\n"))
        << name;
    EXPECT_EQ(request.headers.at(1), (HttpHeader{"ApiKey", ""})) << name;
  }
}

TEST(PluginActivity, OutcomesAreOnlyLogged) {
  struct Row {
    const char* name;
    HttpAnswer answer;
    std::string logged;
  };
  HttpAnswer textWithoutHttp = HttpAnswer::notHttp();
  textWithoutHttp.outcome->body = "220 mail";
  for (const auto& [name, answer, logged] :
       {Row{"none", HttpAnswer::reply(200), "• No data received"},
        Row{"not UTF-8", HttpAnswer::reply(200, "\xff"), "• No data received"},
        Row{"not HTTP", textWithoutHttp, "• Received response: 220 mail"}}) {
    Bed bed;
    bed.phone.http().answer("POST", "/api/plugin-activity/create", {answer});
    bed.api->createPluginActivity("plugin_started", "K", Config::Environment::staging);
    EXPECT_EQ(bed.settle().back(), logged) << name;
  }
}

}  // namespace
}  // namespace orlan
