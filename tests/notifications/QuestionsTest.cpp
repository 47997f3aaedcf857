#include <gmock/gmock.h>

#include "orlan/notifications/QuestionLookup.hpp"
#include "support/FloorHost.hpp"

namespace orlan::test {
namespace {

using testing::ElementsAreArray;

constexpr char oneQuestion[] = R"([{"id":1,"question":"Why?","has_choices":false,"position":0}])";

struct Campaigns final : CampaignSource {
  [[nodiscard]] std::shared_ptr<const CampaignData> current() override { return data; }
  std::shared_ptr<const CampaignData> data;
};

CampaignData::Notification withQuestions(std::int64_t id,
                                         std::optional<std::vector<CampaignData::Question>> list) {
  CampaignData::Notification made;
  made.id = id;
  made.questions = std::move(list);
  return made;
}

CampaignData campaigns() {
  using Question = CampaignData::Question;
  CampaignData data;
  data.campaignsArray = {
      {{"First", 10}, {}, {withQuestions(1, std::vector<Question>{}), withQuestions(2, std::nullopt)}},
      {{"Second", 20}, {}, {withQuestions(42, {{{5, "Cached?", "RATING", 3, std::nullopt}}})}},
      {{"Third", 30}, {}, {withQuestions(42, std::nullopt), withQuestions(-1, {{{6, "Lost?", "", 0, {}}}})}}};
  return data;
}

TEST(Questions, ComeFromThePayloadElseFromTheCampaigns) {
  const Lines cached{"• 🔍 Questions not in payload, looking up in cached campaigns...",
                     "• 🔍 Looking up questions for notification ID 42 in cached campaigns",
                     "• ✅ Found notification 42 in campaign 20",
                     "• ✅ Found 1 question(s) for notification 42"};
  const auto list = [](std::string_view text) { return *json::parse(text); };
  const std::string deep = std::string(100000, '[') + std::string(100000, ']');
  struct Row {
    const char* name;
    json::Value questions;
    Lines before;                                      // the lines about the payload
    std::optional<std::vector<std::int64_t>> carried;  // identifiers, when the payload has usable questions
  };
  const std::string inText = "• 🔍 Found questions JSON string in payload";
  const std::string inList = "• 🔍 Found questions array in payload";
  const std::string failed = "ERROR ❌ Failed to parse questions JSON: ";
  const Row rows[] = {
      {"text", oneQuestion, {inText, "• ✅ Successfully parsed 1 question(s) from payload"}, {{1}}},
      {"empty list as text", "[]", {inText, "• ✅ Successfully parsed 0 question(s) from payload"}, {{}}},
      {"no JSON", "Why?", {inText, failed + "not valid JSON"}, {}},
      {"deep", deep, {inText, failed + "arrays or objects are nested too deeply at line 1, column 513"}, {}},
      {"unknown type",
       R"([{"id":1,"question":"Why?","question_type":"ESSAY","has_choices":false,"position":0}])",
       {inText, failed + "[0].question_type: expected a known value, found a string"},
       {}},
      {"list", list(oneQuestion), {inList, "• ✅ Successfully parsed 1 question(s) from array"}, {{1}}},
      {"empty list", json::Array{}, {inList, "• ✅ Successfully parsed 0 question(s) from array"}, {{}}},
      {"list that does not decode, silently", list(R"([{"id":true}])"), {inList}, {}},
      {"list with something else in it", list(R"([{"id":1},7])"), {}, {}},
      {"null", nullptr, {}, {}},
  };
  for (const Row& row : rows) {
    FloorHost host;
    Campaigns source;
    source.data = std::make_shared<CampaignData>(campaigns());
    QuestionLookup lookup(host.logger, source);
    const auto found = lookup.find({{"questions", row.questions}}, 42);
    Lines expected = row.before;
    if (!row.carried) {
      expected.insert(expected.end(), cached.begin(), cached.end());
    }
    EXPECT_THAT(host.seen(), ElementsAreArray(expected)) << row.name;
    ASSERT_TRUE(found) << row.name;
    std::vector<std::int64_t> identifiers;
    for (const auto& question : *found) identifiers.push_back(question.id);
    EXPECT_EQ(identifiers, row.carried.value_or(std::vector<std::int64_t>{5})) << row.name;
  }
}

TEST(Questions, OfTheCampaignsBelongToTheFirstNotificationWithTheIdentifier) {
  const std::pair<std::int64_t, Lines> rows[] = {
      {9, {"• ⚠️ Notification ID 9 not found in cached campaigns"}},
      {1, {"• ✅ Found notification 1 in campaign 10", "• ℹ️ Notification 1 has no questions"}},
      {2, {"• ✅ Found notification 2 in campaign 10", "• ℹ️ Notification 2 has no questions"}},
      {-1, {"• ✅ Found notification -1 in campaign 30", "• ✅ Found 1 question(s) for notification -1"}},
  };
  for (const auto& [identifier, lines] : rows) {
    FloorHost host;
    Campaigns source;
    source.data = std::make_shared<CampaignData>(campaigns());
    EXPECT_EQ(QuestionLookup(host.logger, source).find({}, identifier).has_value(), identifier == -1);
    Lines seen = host.seen();
    EXPECT_EQ(seen.at(1), "• 🔍 Looking up questions for notification ID " + std::to_string(identifier) +
                              " in cached campaigns");
    seen.erase(seen.begin(), seen.begin() + 2);
    EXPECT_EQ(seen, lines);
  }
}

TEST(Questions, OfACampaignBecomeSurveyQuestions) {
  CampaignData data;
  data.campaignsArray = {
      {{"First", 10},
       {},
       {withQuestions(42, {{{1, "None", "NUMBER", 4, std::nullopt},
                            {2, "Empty", "single_choice", 5, std::vector<CampaignData::Choice>{}},
                            {3, "Some", "SINGLE_CHOICE", 6, {{{7, "Yes", 8}, {}}}}}})}}};
  FloorHost host;
  Campaigns source;
  source.data = std::make_shared<CampaignData>(std::move(data));
  const std::vector<SurveyQuestion> expected{
      {1, "None", QuestionType::number, false, 4, std::nullopt},
      {2, "Empty", std::nullopt, false, 5, std::vector<SurveyChoice>{}},
      {3, "Some", QuestionType::singleChoice, true, 6, {{{7, "Yes", 8}, {0, "", 0}}}}};
  EXPECT_EQ(QuestionLookup(host.logger, source).find({}, 42), expected);
}

}  // namespace
}  // namespace orlan::test
