#include <gmock/gmock.h>

#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using sim::HttpAnswer;
using test::SimulatedHost;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Lines = std::vector<std::string>;
constexpr char path[] = "/api/survey-response";

const SurveyAnswer good{1, "RATING", "4", {}};
const SurveyAnswer bad{2, "RATING", "6", {}};
const SurveyAnswer untyped = SurveyQuestion{.id = 3}.toAnswer("x");

struct Host : SimulatedHost {
  explicit Host(bool started = true, sim::PhoneSettings settings = {}) : SimulatedHost(std::move(settings)) {
    if (started) start();
    (void)services().logger.logFileURL();  // the log is open
    seen.lines.clear();
    seen.requests.clear();
  }

  /// For any of the four operations: notes what the completion says.
  BridgedOutcome outcome() {
    return [this](bool ok, const std::optional<Error>& error) {
      seen.add(ok && !error ? "done"
                            : "failed " + error->domain + " " + std::to_string(error->code) + " " +
                                  error->description);
    };
  }
  Completion<bool> completion() { return fromBridged(outcome()); }
};

sim::PhoneSettings knownDevice() {
  sim::PhoneSettings settings;
  settings.store = {{"Orlan.DeviceID", "D0"}};
  return settings;
}

TEST(SurveyOperations, PreconditionsAreLookedAtInOrder) {
  const std::string notStarted = "failed OrlanPlugin -1 SDK not initialized. Call start() first.";
  struct Row {
    const char* name;
    bool started;
    bool registered;
    std::string notificationId;
    std::vector<SurveyAnswer> answers;
    Lines submitting;
    Lines tracking;
  };
  const std::string id = "Invalid notification ID ";
  for (const auto& [name, started, registered, notificationId, answers, submitting, tracking] : {
           Row{"device known from an earlier run",
               false,
               true,
               "",
               {},
               {"log ERROR submitSurveyResponse called before SDK initialization", notStarted},
               {"log ERROR trackSurveyEvent called before SDK initialization", notStarted}},
           Row{"not registered",
               true,
               false,
               "",
               {},
               {"log ERROR submitSurveyResponse called before device registration",
                "failed OrlanPlugin -2 Device not registered"},
               {"log ERROR trackSurveyEvent called before device registration",
                "failed OrlanPlugin -2 Device not registered"}},
           Row{"no number",
               true,
               true,
               "abc",
               {},
               {"log ERROR submitSurveyResponse: " + id + "abc",
                "failed OrlanPlugin -3 Invalid notification ID"},
               {"log ERROR trackSurveyEvent: " + id + "abc",
                "failed OrlanPlugin -3 Invalid notification ID"}},
           Row{"empty",
               true,
               true,
               "",
               {good},
               {"log ERROR submitSurveyResponse: " + id, "failed OrlanPlugin -3 Invalid notification ID"},
               {"log ERROR trackSurveyEvent: " + id, "failed OrlanPlugin -3 Invalid notification ID"}},
           Row{"too large",
               true,
               true,
               "9223372036854775808",
               {good},
               {"log ERROR submitSurveyResponse: " + id + "9223372036854775808",
                "failed OrlanPlugin -3 Invalid notification ID"},
               {"log ERROR trackSurveyEvent: " + id + "9223372036854775808",
                "failed OrlanPlugin -3 Invalid notification ID"}},
           Row{"no answers",
               true,
               true,
               "42",
               {},
               {"log ERROR submitSurveyResponse: Empty answers list",
                "failed OrlanPlugin -4 Empty answers list"},
               {}},
           Row{"two of three invalid",
               true,
               true,
               "42",
               {bad, good, untyped},
               {"log ERROR submitSurveyResponse: Unknown question type ''",
                "log ERROR submitSurveyResponse: 2 invalid answers",
                "failed OrlanPlugin -5 2 invalid answer(s)"},
               {}},
       }) {
    Host host(started, knownDevice());
    if (!registered) host.phone.store().remove("Orlan.DeviceID");
    host.seen.lines.clear();
    host.plugin().submitSurveyResponse(notificationId, "7", answers, host.completion());
    EXPECT_EQ(host.seen.lines, submitting) << name;
    host.plugin().submitSurveyResponse(notificationId, "7", answers);
    if (!tracking.empty()) {
      host.seen.lines.clear();
      host.plugin().trackSurveyEvent(notificationId, "7", "shown", host.completion());
      EXPECT_EQ(host.seen.lines, tracking) << name;
    }
    EXPECT_THAT(host.seen.requests, IsEmpty()) << name;
  }
}

TEST(SurveyOperations, AnswersAreSubmitted) {
  Host host;
  host.phone.http().answer("POST", path, {HttpAnswer::reply(200), HttpAnswer::reply(400)});
  const SurveyAnswer choice{2, "SINGLE_CHOICE", "", {{{11}}}};
  host.plugin().submitSurveyResponse("+12", "7", {good, choice}, host.completion());
  host.world.runFor(1s);
  EXPECT_THAT(
      host.seen.lines,
      ElementsAre("log INFO SURVEY-01 ▶ Submitting survey response notifId=+12 loc=7 answers=2",
                  "log INFO ┌─📝 Submitting survey response",
                  "request POST https://platform.staging.orlan.example/api/survey-response",
                  "log INFO ┌─📬 Survey response HTTP 200", "log INFO └─✅ Survey submitted successfully",
                  "log INFO SURVEY-02 ✅ Survey response submitted successfully", "done"));
  EXPECT_EQ(host.seen.requests.at(0).body,
            R"({"device_registered_id":"D1","curated_notification_id":12,"activity":"survey_activity",)"
            R"("location_id":7,"responses":[{"question_id":1,"type":"RATING","value":"4"},)"
            R"({"question_id":2,"type":"SINGLE_CHOICE","value":"","choice":[{"choice_id":11}]}]})");

  host.seen.lines.clear();
  host.plugin().submitSurveyResponse("42", {}, {good}, host.completion());
  host.world.runFor(1s);
  EXPECT_EQ(host.seen.lines.front(),
            "log INFO SURVEY-01 ▶ Submitting survey response notifId=42 loc=nil answers=1");
  EXPECT_THAT(host.seen.after("log ERROR "),
              ElementsAre("└─❌ Survey submission failed with status 400",
                          "SURVEY-02 ❌ Survey submission failed: Survey submission failed with status 400"));
  EXPECT_EQ(host.seen.lines.back(), "failed OrlanSDK 400 Survey submission failed with status 400");
}

TEST(SurveyOperations, EventsAreTracked) {
  Host host;
  host.phone.http().answer("POST", path, {HttpAnswer::reply(200), HttpAnswer::unreachable()});
  host.plugin().trackSurveyEvent("42", "x", "shown", host.completion());
  host.world.runFor(1s);
  EXPECT_EQ(host.seen.requests.at(0).body,
            R"({"device_registered_id":"D1","curated_notification_id":42,"activity":"shown"})");
  EXPECT_THAT(host.seen.after("log INFO SURVEY-TRACK-"),
              ElementsAre("01 ▶ Tracking survey event: shown notifId=42", "02 ✅ Event tracked: shown"));
  EXPECT_EQ(host.seen.lines.back(), "done");

  host.plugin().trackSurveyEvent("42", {}, "shown");
  host.world.runFor(1s);
  EXPECT_EQ(host.seen.lines.back(), "log ERROR SURVEY-TRACK-02 ❌ Event tracking failed: " +
                                        urlErrors::cannotConnectToHost().description);
}

TEST(SurveyOperations, BridgedAnswersThatAreNoneAreDropped) {
  Host host;
  host.phone.http().answer("POST", path, {HttpAnswer::reply(200)});
  const json::Object answer{{"question_id", 1}, {"type", "RATING"}, {"value", "4"}};
  auto incomplete = answer;
  incomplete.remove("value");
  host.plugin().submitSurveyResponseObjC("42", "x", json::Array{"no", 7, incomplete, answer}, host.outcome());
  host.plugin().submitSurveyResponseObjC("42", "x", json::Array{incomplete}, host.outcome());
  host.plugin().submitSurveyResponseObjC("42", "x", answer, {});  // no list at all
  host.plugin().trackSurveyEventObjC("x", {}, "shown", host.outcome());
  host.world.runFor(1s);
  ASSERT_EQ(host.seen.requests.size(), 1u);
  EXPECT_EQ(host.seen.requests[0].body,
            R"({"device_registered_id":"D1","curated_notification_id":42,"activity":"survey_activity",)"
            R"("responses":[{"question_id":1,"type":"RATING","value":"4"}]})");
  EXPECT_THAT(host.seen.lines,
              Contains("log INFO SURVEY-01 ▶ Submitting survey response notifId=42 loc=x answers=1"));
  EXPECT_THAT(host.seen.after("failed OrlanPlugin "),
              ElementsAre("-4 Empty answers list", "-3 Invalid notification ID"));
  EXPECT_EQ(host.seen.lines.back(), "done");
}

TEST(SurveyOperations, NothingIsCalledAfterTheEnd) {
  Host host;
  host.phone.http().answer("POST", path, {HttpAnswer::reply(200)});
  host.plugin().submitSurveyResponse("42", {}, {good}, host.completion());
  host.plugin().trackSurveyEvent("42", {}, "shown", host.completion());
  host.quit();
  host.world.runFor(61s);
  EXPECT_THAT(host.seen.after("done"), IsEmpty());
  EXPECT_THAT(host.seen.after("failed"), IsEmpty());
}

}  // namespace
}  // namespace orlan
