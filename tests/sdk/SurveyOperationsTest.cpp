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

constexpr char path[] = "/api/survey-response";

const SurveyAnswer good{1, "RATING", "4", {}};
const SurveyAnswer bad{2, "RATING", "6", {}};

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
  struct Row {
    bool started;
    bool registered;
    std::string notificationId;
    std::vector<SurveyAnswer> answers;
    std::string line;  // behind the operation's name
    std::string error;
  };
  const std::string tooLarge = "9223372036854775808";
  for (const auto& [started, registered, notificationId, answers, line, error] : {
           Row{false,
               true,
               "",
               {},
               " called before SDK initialization",
               "-1 SDK not initialized. Call start() first."},
           Row{true, false, "", {}, " called before device registration", "-2 Device not registered"},
           Row{true, true, "abc", {}, ": Invalid notification ID abc", "-3 Invalid notification ID"},
           Row{true, true, "", {bad}, ": Invalid notification ID ", "-3 Invalid notification ID"},
           Row{true,
               true,
               tooLarge,
               {},
               ": Invalid notification ID " + tooLarge,
               "-3 Invalid notification ID"},
           Row{true, true, "42", {}, ": Empty answers list", "-4 Empty answers list"},
           Row{true, true, "42", {bad, good, bad}, ": 2 invalid answers", "-5 2 invalid answer(s)"},
       }) {
    Host host(started, knownDevice());
    if (!registered) host.phone.store().remove("Orlan.DeviceID");
    host.seen.lines.clear();
    const auto expect = [&](const std::string& operation) {
      EXPECT_THAT(host.seen.lines,
                  ElementsAre("log ERROR " + operation + line, "failed OrlanPlugin " + error));
      EXPECT_THAT(host.seen.requests, IsEmpty()) << operation << line;
      host.seen.lines.clear();
    };
    host.plugin().submitSurveyResponse(notificationId, "7", answers, host.completion());
    expect("submitSurveyResponse");
    if (notificationId == "42") continue;  // what remains is about answers
    host.plugin().trackSurveyEvent(notificationId, "7", "shown", host.completion());
    expect("trackSurveyEvent");
  }
}

TEST(SurveyOperations, AnAnswerOfNoTypeIsTheHostsMistakeAndSaidSo) {
  Host host;
  host.plugin().submitSurveyResponse("42", {},
                                     {SurveyQuestion{.id = 3}.toAnswer("x"), good});  // nobody listens
  EXPECT_THAT(host.seen.lines, ElementsAre("log ERROR submitSurveyResponse: Unknown question type ''",
                                           "log ERROR submitSurveyResponse: 1 invalid answers"));
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
