#include <gtest/gtest.h>

#include "backend/Bed.hpp"
#include "orlan/backend/StoreKeys.hpp"

namespace orlan {
namespace {

using sim::HttpAnswer;
using test::Bed;
using test::Events;
using test::rule;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kVendor = "00000000-0000-4000-8000-000000000001";

sim::PhoneSettings knownInNewYork() {
  sim::PhoneSettings settings;
  settings.store = {{storeKeys::deviceID, "D1"}, {storeKeys::apiKey, "K"}};
  settings.offsetFromUtc = [](TimePoint) { return std::chrono::hours(-4); };
  return settings;
}

/// The boundary that an upload announces.
std::string boundaryOf(const HttpRequest& request) {
  constexpr std::string_view front = "multipart/form-data; boundary=";
  const auto& value = request.headers.at(0).second;
  EXPECT_TRUE(value.starts_with(front)) << value;
  return value.substr(front.size());
}

std::string part(const std::string& boundary, const char* name, const std::string& value) {
  return "--" + boundary + "\r\nContent-Disposition: form-data; name=\"" + name + "\"\r\n\r\n" + value +
         "\r\n";
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

TEST(Activity, EachUploadHasABoundaryOfItsOwnAndTheLocalTime) {
  Bed bed(knownInNewYork());
  reportMedia(*bed.api);
  reportMedia(*bed.api);
  const auto& request = bed.tape.requests.at(0);
  const auto boundary = boundaryOf(request);
  EXPECT_THAT(boundary, testing::MatchesRegex(
                            "Boundary-[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
  EXPECT_NE(boundaryOf(bed.tape.requests.at(1)), boundary);
  EXPECT_EQ(request.url, "https://platform.staging.orlan.example/api/activities");
  EXPECT_EQ(request.headers.at(1), (HttpHeader{"ApiKey", "K"}));
  EXPECT_EQ(request.body,
            part(boundary, "device_registered_id", "D1") + part(boundary, "curated_notification_id", "22") +
                part(boundary, "location_id", "11") + part(boundary, "type", "notification") +
                part(boundary, "activity", "media_viewed") + part(boundary, "time", "2025-03-14 05:26:53") +
                part(boundary, "latitude", "-1.0") + part(boundary, "longitude", "-1.0") + "--" + boundary +
                "--\r\n");
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

TEST(Activity, ReportWithPositionIsRecordedAsAPendingEventWithTheSameValues) {
  Bed bed(knownInNewYork());
  struct Watch final : phone::PhoneObserver {
    std::vector<std::string> pending;
    void storeWritten(std::string_view key, const json::Value& value) override {
      if (key == "Orlan_PendingEvents" && value.bytes()) pending.push_back(value.bytes()->data);
    }
  } watch;
  bed.phone.observe(watch);
  EXPECT_EQ(bed.reliability->ifBuilt(), nullptr);
  reportMedia(*bed.api);
  EXPECT_EQ(bed.reliability->ifBuilt(), nullptr);
  reportEntry(*bed.api);
  (void)bed.settle();
  ASSERT_FALSE(watch.pending.empty());
  const auto events = json::decodeText<std::vector<reliability::PendingEvent>>(watch.pending.front());
  ASSERT_TRUE(events && events->size() == 1u);
  const auto& event = events->front();
  EXPECT_EQ(event.eventType, "geo_activity");
  EXPECT_EQ(event.priority, reliability::EventPriority::high);
  EXPECT_EQ(event.data.size(), 8u);
  EXPECT_EQ(event.data.at("latitude"), "51.5");
  const auto& body = bed.tape.requests.at(1).body.value();
  for (const auto& [name, value] : event.data) {
    EXPECT_NE(body.find("name=\"" + name + "\"\r\n\r\n" + value + "\r\n"), std::string::npos) << name;
  }
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
    EXPECT_NE(request.body->find("name=\"device_registered_id\"\r\n\r\n" + expected + "\r\n"),
              std::string::npos)
        << name;
    EXPECT_EQ(request.headers.at(1), (HttpHeader{"ApiKey", ""})) << name;
  }
}

TEST(PluginActivity, GoesOutUnescapedInTheGivenEnvironment) {
  Bed bed(knownInNewYork());  // whose stored identifier plays no part here
  bed.api->createPluginActivity("plugin_started", "K9", Config::Environment::nightly);
  const auto& request = bed.tape.requests.at(0);
  EXPECT_EQ(request.url, "https://platform.nightly.orlan.example/api/plugin-activity/create");
  EXPECT_EQ(request.body,
            "device_registered_id=" + kVendor + "&time=2025-03-14 05:26:53&activity=plugin_started");
  EXPECT_EQ(request.headers.at(1), (HttpHeader{"ApiKey", "K9"}));
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
       {Row{"refused", HttpAnswer::unreachable(),
            "• HTTP Request Failed " + urlErrors::cannotConnectToHost().description},
        Row{"empty", HttpAnswer::reply(500, ""), "• Received response: "},
        Row{"none", HttpAnswer::reply(200), "• No data received"},
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
