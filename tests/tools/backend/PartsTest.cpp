#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <set>

#include "orlan/campaigns/GeofenceResponse.hpp"
#include "orlan/platform/Coordinate.hpp"
#include "requests.hpp"
#include "tools/orlan/backend/Answers.hpp"
#include "tools/orlan/backend/CampaignGenerator.hpp"
#include "tools/orlan/backend/Devices.hpp"
#include "tools/orlan/backend/Exchange.hpp"
#include "tools/orlan/backend/Faults.hpp"
#include "tools/orlan/backend/Files.hpp"

namespace orlan::devbackend {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(FaultParsing, ReadsEveryForm) {
  struct Row {
    const char* text;
    Fault::Kind kind;
    Duration delay;
    std::size_t number;
    const char* content;
    std::optional<int> times;
  };
  for (const auto& row :
       {Row{"/get-config=status:500", Fault::Kind::status, {}, 500, "", {}},
        Row{"/api//get-config=status:304*2", Fault::Kind::status, {}, 304, "", 2},
        Row{"/check-geofence=delay:2.5", Fault::Kind::delay, std::chrono::milliseconds(2500), 0, "", {}},
        Row{"/api/segments=cut", Fault::Kind::cut, {}, 0, "", {}},
        Row{"/api/segments=cut:40*1", Fault::Kind::cut, {}, 40, "", 1},
        Row{"/api/segments=body:", Fault::Kind::body, {}, 0, "", {}},
        Row{"/api/segments=body:a=b:c*d*3", Fault::Kind::body, {}, 0, "a=b:c*d", 3},
        Row{"/api/segments=raw:220 mail", Fault::Kind::raw, {}, 0, "220 mail", {}}}) {
    const auto fault = parseFault(row.text);
    ASSERT_TRUE(fault) << row.text << ": " << fault.error().description;
    EXPECT_EQ(fault->kind, row.kind) << row.text;
    EXPECT_EQ(fault->delay, row.delay) << row.text;
    EXPECT_EQ(row.kind == Fault::Kind::cut ? fault->bytes : static_cast<std::size_t>(fault->status),
              row.number);
    EXPECT_EQ(fault->text, row.content) << row.text;
    EXPECT_EQ(fault->times, row.times) << row.text;
  }
}

TEST(FaultParsing, SaysWhatItCannotRead) {
  struct Row {
    const char* text;
    const char* problem;
  };
  for (const auto& row :
       {Row{"/get-config", "expected PATH=FAULT"},
        Row{"/get-confg=cut", R"(no such endpoint "/get-confg"; there are)"},
        Row{"/get-config=slow", "expected status, delay, cut, body or raw"},
        Row{"/get-config=status", "expected status:200 to status:599"},
        Row{"/get-config=status:99", "status:200"}, Row{"/get-config=status:5e2", "status:200"},
        Row{"/get-config=delay:-1", "delay:0 to delay:3600"}, Row{"/get-config=delay:nan", "delay:0 to"},
        Row{"/get-config=delay:", "delay:0 to"}, Row{"/get-config=cut:x", "cut or cut:BYTES"},
        Row{"/get-config=cut*0", "expected *1 to *1000000"},
        Row{"/get-config=body", "expected body:TEXT or body:@FILE"},
        Row{"/get-config=body:@/no/such\n/file", R"(/no/such\n/file: cannot be read: No such file)"}}) {
    const auto fault = parseFault(row.text);
    ASSERT_FALSE(fault) << row.text;
    EXPECT_THAT(fault.error().description, HasSubstr(row.problem)) << row.text;
  }
}

TEST(FaultStrikes, EachKindByItsFirstThatIsLeft) {
  Faults faults({parseFault("/get-config=status:500*1").value(),
                 parseFault("/get-config=status:503*1").value(), parseFault("/get-config=delay:1").value(),
                 parseFault("/api/segments=cut").value()});
  EXPECT_THAT(faults.take(Endpoint::configuration).names, ElementsAre("status:500", "delay:1"));
  EXPECT_EQ(faults.take(Endpoint::configuration).status, 503);
  const auto third = faults.take(Endpoint::configuration);
  EXPECT_EQ(third.status, std::nullopt);
  EXPECT_EQ(third.delay, std::chrono::seconds(1));
  EXPECT_THAT(faults.take(Endpoint::activities).names, IsEmpty());
}

TEST(DevicesTest, AnIdentityIsForGood) {
  Devices devices;
  const auto first = devices.identify("UUID-1", "0");
  EXPECT_EQ(first, (Identity{"device-UUID-1", "1001"}));
  EXPECT_EQ(devices.identify("UUID-1", "0"), first) << "registers again";
  EXPECT_EQ(devices.identify("device-UUID-1", "1001"), first) << "syncs its token";
  EXPECT_EQ(devices.identify("device-UUID-2", "1002"), (Identity{"device-UUID-2", "1002"}))
      << "from an earlier run";
  EXPECT_EQ(devices.identify("UUID-3", "0"), (Identity{"device-UUID-3", "1003"})) << "never given twice";
}

NewGeofenceResponse around(Coordinate position, bool push = false) {
  const auto response = NewGeofenceResponse::decode(json::print(campaignsAround(position, push)));
  EXPECT_TRUE(response) << response.error().description;
  return response.value_or(NewGeofenceResponse{});
}

TEST(CampaignGeneration, NineDifferentCampaignsLieAroundTheCaller) {
  for (const auto position : {Coordinate{51.5, -0.12}, {0.0, 0.0}, {-33.86, 151.2}, {64.1, -21.9}}) {
    const auto response = around(position);
    ASSERT_EQ(response.geoCampaign.size(), 9U);
    EXPECT_THAT(response.pushCampaign, IsEmpty());
    std::set<std::string> names;
    std::set<std::int64_t> identifiers;
    for (const auto& campaign : response.geoCampaign) {
      names.insert(campaign.campaignName);
      identifiers.insert(campaign.campaignId);
      ASSERT_EQ(campaign.notificationsArray.size(), 2U);
      EXPECT_EQ(campaign.notificationsArray[0].activation, "ON_ENTER");
      EXPECT_EQ(campaign.notificationsArray[1].activation, "ON_EXIT");
      for (const auto& notification : campaign.notificationsArray) {
        EXPECT_FALSE(notification.headline.empty());
        EXPECT_FALSE(notification.body.empty());
        identifiers.insert(notification.id);
      }
      ASSERT_TRUE(campaign.locationsArray);
      EXPECT_GE(campaign.locationsArray->geofence.size(), 4U);
      for (const auto& vertex : campaign.locationsArray->geofence) {
        const Coordinate corner{std::stod(std::string(vertex.latitude)),
                                std::stod(std::string(vertex.longitude))};
        EXPECT_LT(distance(position, corner), 1300.0);
      }
    }
    EXPECT_EQ(names.size(), 9U);
    EXPECT_EQ(identifiers.size(), 27U);
  }
}

TEST(CampaignGeneration, AWalkerFindsTheSameCampaignsAgain) {
  EXPECT_EQ(campaignsAround(Coordinate{51.5, -0.12}, true), campaignsAround(Coordinate{51.5, -0.12}, true));
  std::map<std::int64_t, std::vector<std::string>> places;
  for (int step = 0; step <= 40; ++step) {  // some two kilometres to the north-east
    for (const auto& campaign : around({51.5 + step * 0.0004, -0.12 + step * 0.0003}).geoCampaign) {
      std::vector<std::string> ring;
      for (const auto& vertex : campaign.locationsArray->geofence)
        ring.push_back(std::string(vertex.latitude) + std::string(vertex.longitude));
      const auto [known, isNew] = places.emplace(campaign.campaignId, ring);
      EXPECT_EQ(known->second, ring) << campaign.campaignId;
    }
  }
  EXPECT_GT(places.size(), 9U);
}

TEST(CampaignGeneration, EdgesOfTheGlobeAndNonsenseAreNoTrouble) {
  for (const auto position : {Coordinate{90, 180}, {-90, -180}, {89.9999, 0.0}}) {
    EXPECT_FALSE(around(position).geoCampaign.empty()) << position.latitude;
  }
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (const auto position : {Coordinate{none, 0}, {0, none}, {91, 0}, {0, 1e300}}) {
    EXPECT_THAT(around(position, true).geoCampaign, IsEmpty()) << position.latitude;
  }
  ASSERT_EQ(around({51.5, -0.12}, true).pushCampaign.size(), 1U);
  EXPECT_EQ(around({51.5, -0.12}, true).pushCampaign[0].locationsArray, std::nullopt);
}

TEST(AnswersTest, FilesComeBeforeWhatIsMadeUp) {
  Answers answers({{Endpoint::configuration, "{}"}, {Endpoint::segments, "fine"}}, false);
  EXPECT_EQ(answers.answer(Endpoint::configuration, {}).body, "{}");
  EXPECT_EQ(answers.answer(Endpoint::configuration, {}).contentType, "application/json");
  EXPECT_EQ(answers.answer(Endpoint::segments, {}).contentType, "text/plain; charset=utf-8");
  EXPECT_EQ(answers.answer(Endpoint::registration, good::registration()).body,
            R"({"data":{"device_id":"device-9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A","orlan_id":"1001"}})");
  const auto campaigns =
      NewGeofenceResponse::decode(answers.answer(Endpoint::geofenceCheck, good::geofenceCheck()).body);
  ASSERT_TRUE(campaigns);
  EXPECT_EQ(campaigns->geoCampaign.size(), 9U);
}

TEST(CampaignFiles, ErrorsNameFileAndPlace) {
  const std::filesystem::path folder(testing::TempDir());
  struct Row {
    const char* name;
    const char* content;
    const char* problem;
  };
  for (const auto& row : {Row{"empty.json", "", "empty.json: is empty"},
                          Row{"broken.json", "{\"geoCampaign\": [", "broken.json: "},
                          Row{"half.json", R"({"geoCampaign":[]})", "half.json: pushCampaign: missing"},
                          Row{"text.json", R"({"geoCampaign":[{"campaignName":1}],"pushCampaign":[]})",
                              "text.json: geoCampaign[0].campaignName: expected a string"}}) {
    const auto path = folder / row.name;
    std::ofstream(path) << row.content;
    const auto read = readCampaigns(path.string());
    ASSERT_FALSE(read) << row.name;
    EXPECT_THAT(read.error().description, HasSubstr(row.problem));
    std::filesystem::remove(path);
  }
  EXPECT_THAT(readCampaigns("/no/such/file").error().description,
              HasSubstr("/no/such/file: cannot be read: No such"));
  EXPECT_THAT(readCampaigns(folder.string()).error().description, HasSubstr("is a directory"));
}

TEST(ExchangeTest, APeersControlCharactersNeverReachTheTerminal) {
  Exchange exchange;
  exchange.request = {.method = "GET", .target = "/\x1b[31m", .headers = {}, .body = ""};
  exchange.faults = {"body:\x07"};
  exchange.status = 404;
  exchange.problems = {"found \n"};
  EXPECT_EQ(describe(exchange), R"(GET /\u001b[31m 404 (fault body:\u0007))");
  EXPECT_THAT(complaints(exchange), ElementsAre(R"(GET /\u001b[31m: found \n)"));
  EXPECT_EQ(excerpt("grün\x1b", 3), "\"gr\"…") << "no half characters";
}

}  // namespace
}  // namespace orlan::devbackend
