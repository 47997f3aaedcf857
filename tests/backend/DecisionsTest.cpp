// What the client decides and writes, where whole exchanges do not show it.
#include <gtest/gtest.h>

#include "backend/Bed.hpp"
#include "orlan/backend/Credentials.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/backend/calls.hpp"

namespace orlan {
namespace {

using Text = std::optional<std::string>;

TEST(TokenToSync, SendsWhatTheBackendHasNotSeen) {
  struct Row {
    const char* current;
    Text lastSynced;
    bool force;
    Text expected;
  };
  for (const auto& [current, lastSynced, force, expected] :
       {Row{"pending", "old", false, std::nullopt}, Row{"pending", std::nullopt, true, std::nullopt},
        Row{"pending", "", true, std::nullopt}, Row{"pending", "old", true, "old"},
        Row{"new", std::nullopt, false, "new"}, Row{"new", "old", false, "new"},
        Row{"old", "old", false, std::nullopt}, Row{"old", "old", true, "old"}}) {
    EXPECT_EQ(calls::tokenToSync(current, lastSynced, force), expected) << current << force;
  }
}

TEST(TransmissionHeaders, AnyMissingPartLeavesOnlyTheLegacyHeader) {
  using Credentials = TransmissionAppCredentials;
  const Credentials complete{
      .companyApiKey = "company", .appID = "app", .appApiKey = "secret", .iosBundleID = "com.example.host"};
  const auto headersOf = [](const Credentials& credentials) {
    HttpRequest request;
    addTransmissionHeaders(request, credentials);
    return request.headers;
  };
  EXPECT_EQ(headersOf(complete).size(), 6u);
  EXPECT_EQ(headersOf(complete).back(), (HttpHeader{"x-api-key", "company"}));
  auto without = complete;
  without.includeLegacyApiKeyHeader = false;
  EXPECT_EQ(headersOf(without).back(), (HttpHeader{"x-platform", "ios"}));
  for (const auto part : {&Credentials::companyApiKey, &Credentials::appID, &Credentials::appApiKey,
                          &Credentials::iosBundleID}) {
    auto credentials = complete;
    credentials.*part = "";
    EXPECT_EQ(headersOf(credentials), (std::vector<HttpHeader>{{"x-api-key", credentials.companyApiKey}}));
  }

  auto keyless = complete;
  keyless.companyApiKey = "";
  EXPECT_EQ(effectiveCredentials(keyless, "company", "other"), complete);
  EXPECT_EQ(effectiveCredentials(complete, "stored", "other"), complete);
  EXPECT_EQ(effectiveCredentials(std::nullopt, "stored", "com.example.host"),
            (Credentials{.companyApiKey = "stored", .iosBundleID = "com.example.host"}));
}

TEST(LogBlocks, ABodyThatIsNoTextIsSaidToBeNone) {
  EXPECT_TRUE(logBlocks::textRequest("T", {.method = "POST", .url = "u", .body = "\xff"})
                  .ends_with("│ Body:\n<non-utf8>" + test::rule(44)));
  EXPECT_TRUE(logBlocks::response(500, {.status = 500, .body = "\xc3"})
                  .ends_with("│ Headers:\n\n│ Raw body:\n<binary>" + test::rule(44)));
}

TEST(Activity, HasItsWireNames) {
  std::string names;
  for (const auto activity : allCases<ActivityType>()) names.append(wireName(activity)).append(" ");
  for (const auto type : allCases<NotificationType>()) names.append(wireName(type)).append(" ");
  EXPECT_EQ(names,
            "cta_engagement notification_sent notification_delivered media_viewed location_update "
            "geofence_exit geofence_entry notification location geofence ");
  EXPECT_EQ(rawValue(ActivityType::geofence_entry), 6);
}

TEST(Client, SegmentsAreTheStoredPiecesThatAreNotEmpty) {
  sim::PhoneSettings settings;
  settings.store.set("Orlan.Segments", ",a,, b ,");
  EXPECT_EQ(test::Bed(std::move(settings)).api->segments(), (std::vector<std::string>{"a", " b "}));
  EXPECT_TRUE(test::Bed().api->segments().empty());
}

}  // namespace
}  // namespace orlan
