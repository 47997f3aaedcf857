#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>

#include "orlan/campaigns/GeofenceResponse.hpp"
#include "tools/orlan/backend/Answers.hpp"
#include "tools/orlan/backend/Campaigns.hpp"
#include "tools/orlan/backend/Exchange.hpp"
#include "tools/orlan/backend/Faults.hpp"

namespace orlan::devbackend {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(FaultParsing, SaysWhatItCannotRead) {
  const std::pair<const char*, const char*> rows[] = {
      {"/get-config", "there is no \"=\" behind"},
      {"/get-confg=cut", R"(no such endpoint "/get-confg"; there are /api/dev)"},
      {"/get-config=slow", "expected status, delay, cut, body or raw"},
      {"/get-config=status", "expected status:200 to status:599"},
      {"/get-config=status:600", "expected status:200 to status:599"},
      {"/get-config=delay:nan", "expected delay:0 to delay:3600"},
      {"/get-config=cut:x", "expected cut or cut:BYTES"},
      {"/get-config=cut*0", "expected *1 to *1000000"},
      {"/get-config=body", "expected body:TEXT or body:@FILE"},
      {"/get-config=raw:@/no/such\n/f", R"(/no/such\n/f: cannot be read: No such)"},
  };
  for (const auto& [text, problem] : rows) {
    const auto fault = parseFault(text);
    ASSERT_FALSE(fault) << text;
    EXPECT_THAT(fault.error().description, HasSubstr(problem));
  }
}

NewGeofenceResponse around(Coordinate position, bool push = false) {
  const auto response = NewGeofenceResponse::decode(json::print(campaignsAround(position, push)));
  EXPECT_TRUE(response) << response.error().description;
  return response.value_or(NewGeofenceResponse{});
}

TEST(CampaignGeneration, AWalkerFindsNineDifferentCampaignsAndTheSameAgain) {
  std::map<std::int64_t, std::string> places;
  for (int step = 0; step <= 40; ++step) {  // some two kilometres to the north-east
    const Coordinate position{51.5 + step * 0.0004, -0.12 + step * 0.0003};
    std::set<std::string> names;
    std::set<std::int64_t> identifiers;
    for (const auto& campaign : around(position).geoCampaign) {
      names.emplace(campaign.campaignName);
      for (const auto& notification : campaign.notificationsArray) identifiers.insert(notification.id);
      std::string ring;
      for (const auto& vertex : campaign.locationsArray->geofence) {
        const std::string latitude(vertex.latitude);
        const std::string longitude(vertex.longitude);
        ring += latitude + longitude;
        EXPECT_LT(distance(position, {std::stod(latitude), std::stod(longitude)}), 1300.0);
      }
      EXPECT_EQ(places.emplace(campaign.campaignId, ring).first->second, ring) << campaign.campaignId;
    }
    EXPECT_EQ(names.size(), 9U);
    EXPECT_EQ(identifiers.size(), 18U);
  }
  const auto text = json::print(campaignsAround(Coordinate{51.5, -0.12}, true));
  EXPECT_EQ(text.find_first_of("$#"), std::string::npos) << "a place of the texts was not filled";
  EXPECT_EQ(around({51.5, -0.12}, true).pushCampaign.size(), 1U);
}

TEST(CampaignGeneration, EdgesOfTheGlobeAndNonsenseAreNoTrouble) {
  for (const auto position : {Coordinate{90, 180}, {-90, -180}, {89.9999, 0.0}}) {
    EXPECT_FALSE(around(position).geoCampaign.empty()) << position.latitude;
  }
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (const auto position : {Coordinate{none, 0}, {0, none}, {91, 0}, {0, 1e300}}) {
    EXPECT_TRUE(around(position, true).geoCampaign.empty()) << position.latitude;
  }
}

TEST(AnswersTest, FilesComeBeforeWhatIsMadeUp) {
  Answers answers({{Endpoint::configuration, "{}"}, {Endpoint::segments, "fine"}}, false);
  EXPECT_EQ(answers.answer(Endpoint::configuration, {}).body, "{}");
  EXPECT_EQ(answers.answer(Endpoint::configuration, {}).contentType, "application/json");
  EXPECT_EQ(answers.answer(Endpoint::segments, {}).contentType, "text/plain; charset=utf-8");
}

TEST(AnswersTest, AnIdentityIsForGood) {
  Answers answers({}, false);
  struct Row {
    std::string device, orlan, identity;
  };
  for (const auto& row :
       {Row{"A", "0", R"({"device_id":"device-A","orlan_id":"1001"})"},
        Row{"A", "0", R"({"device_id":"device-A","orlan_id":"1001"})"},
        Row{"device-A", "1001", R"({"device_id":"device-A","orlan_id":"1001"})"},
        Row{"device-B", "1002", R"({"device_id":"device-B","orlan_id":"1002"})"},  // earlier run
        Row{"C", "0", R"({"device_id":"device-C","orlan_id":"1003"})"}}) {
    const Request request{.body = R"({"device_id":")" + row.device + R"(","orlan_id":")" + row.orlan + "\"}"};
    EXPECT_EQ(answers.answer(Endpoint::registration, request).body, R"({"data":)" + row.identity + "}");
  }
}

TEST(ExchangeTest, APeersControlCharactersNeverReachTheTerminal) {
  Exchange exchange;
  exchange.request = {.method = "GET", .target = "/\x1b[31m", .headers = {}, .body = "\u009b31m"};
  exchange.faults = {"body:\x07"};
  exchange.status = 404;
  exchange.problems = {"found \n"};
  EXPECT_EQ(describe(exchange), R"(GET /\u001b[31m 404 (fault body:\u0007))");
  EXPECT_THAT(complaints(exchange), ElementsAre(R"(GET /\u001b[31m: found \n)"));
  EXPECT_THAT(recordLine(exchange), HasSubstr(R"("body":"\u009b31m")"));
  EXPECT_EQ(excerpt("grün\x1b", 3), "\"gr\"…") << "no half characters";
}

}  // namespace
}  // namespace orlan::devbackend
