// What journeys do not show of surveys.
#include <gmock/gmock.h>

#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using test::SimulatedHost;
using ::testing::ElementsAre;

TEST(SurveyOperations, NumbersBeyondTheRangeAreNoneAndNobodyNeedsToListen) {
  SimulatedHost host;
  host.start();
  host.plugin().submitSurveyResponse("9223372036854775808", {}, {});
  host.plugin().trackSurveyEvent("42", "9223372036854775808", "shown");
  host.world.runFor(1s);
  EXPECT_THAT(host.seen.after("log ERROR s"),
              ElementsAre("ubmitSurveyResponse: Invalid notification ID 9223372036854775808"));
  EXPECT_EQ(host.seen.requests.back().body,
            R"({"device_registered_id":"D1","curated_notification_id":42,"activity":"shown"})");
}

TEST(SurveyOperations, BridgedAnswersThatAreNoneAreDropped) {
  const json::Object whole{{"question_id", 1}, {"type", "RATING"}, {"value", "4"}};
  const auto with = [&](std::string_view key, json::Value value) {
    auto answer = whole;
    answer.set(key, std::move(value));
    return answer;
  };
  auto incomplete = whole;
  incomplete.remove("value");
  const auto chosen = [&](json::Value id) {
    return with("choice", json::Array{json::Object{{"choice_id", std::move(id)}}});
  };
  const std::string sent = R"([{"question_id":1,"type":"RATING","value":"4")";
  const std::pair<json::Value, std::string> rows[] = {
      {json::Array{whole}, sent + "}]"},
      {json::Array{"no", 7, incomplete, with("value", 4), with("type", nullptr), with("question_id", "1"),
                   with("question_id", 1.5), with("choice", "none"), with("choice", json::Array{7}),
                   chosen(1e300), with("more", 1)},
       sent + "}]"},
      {json::Array{with("question_id", 1.0)}, sent + "}]"},
      {json::Array{with("choice", nullptr)}, sent + "}]"},
      {json::Array{chosen(11)}, sent + R"(,"choice":[{"choice_id":11}]}])"},
      {json::Array{incomplete}, "Empty answers list"},
      {whole, "Empty answers list"},  // no list at all
      {json::Array{json::Object{{"question_id", 1}, {"type", "OPEN_ENDED"}, {"value", "\xff"}}},
       "a text is not UTF-8"},
  };
  for (const auto& [answers, expected] : rows) {
    SimulatedHost host;
    host.start();
    host.seen.requests.clear();
    std::string outcome;
    host.plugin().submitSurveyResponseObjC(
        "42", {}, answers, [&](bool, const std::optional<Error>& error) { outcome = error->description; });
    if (!host.seen.requests.empty()) {
      const std::string body = host.seen.requests.at(0).body.value();
      outcome = body.substr(body.find('['), body.size() - body.find('[') - 1);
    }
    EXPECT_EQ(outcome, expected) << json::print(answers);
  }
}

}  // namespace
}  // namespace orlan
