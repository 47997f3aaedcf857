#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "orlan/base/text.hpp"
#include "tools/orlan/backend/BodyChecks.hpp"
#include "tools/orlan/backend/JsonCheck.hpp"

namespace orlan::devbackend {
namespace {

using json::Kind;

constexpr std::array bodyMembers{
    ExpectedMember{"device_registered_id", Kind::string},
    ExpectedMember{"curated_notification_id", Kind::integer}, ExpectedMember{"activity", Kind::string},
    ExpectedMember{"location_id", Kind::integer, false}, ExpectedMember{"responses", Kind::array, false}};
constexpr std::array answerMembers{
    ExpectedMember{"question_id", Kind::integer}, ExpectedMember{"type", Kind::string},
    ExpectedMember{"value", Kind::string}, ExpectedMember{"choice", Kind::array, false}};
constexpr std::array choiceMembers{ExpectedMember{"choice_id", Kind::integer}};

std::optional<std::string> choiceProblem(json::Node answer) {
  const auto choice = member(answer, "choice");
  if (choice && choice->size() > 0) return std::nullopt;
  return "choice: expected at least one selection";
}

std::optional<std::string> booleanProblem(std::string_view value) {
  const auto lower = text::lower(value);
  if (lower == "true" || lower == "false" || lower == "yes" || lower == "no") return std::nullopt;
  return fmt::format("value: expected true, false, yes or no, found {}", excerpt(value));
}

std::optional<std::string> numberProblem(std::string_view value, bool rating) {
  const auto number = text::toInteger(value);
  if (!number) return fmt::format("value: expected a whole number, found {}", excerpt(value));
  if (rating && (*number < 1 || *number > 5)) {
    return fmt::format("value: expected a rating from 1 to 5, found {}", excerpt(value));
  }
  return std::nullopt;
}

/// What is wrong with an answer as an answer; a host's mistake that the library should have stopped.
std::optional<std::string> answerProblem(json::Node answer) {
  const auto type = stringMember(answer, "type");
  const auto value = stringMember(answer, "value");
  if (!type || !value) return std::nullopt;
  if (*type == "SLIDER" || *type == "SINGLE_CHOICE" || *type == "MULTIPLE_CHOICE") {
    return choiceProblem(answer);
  }
  if (*type == "BOOLEAN") return booleanProblem(*value);
  if (*type == "NUMBER" || *type == "RATING") return numberProblem(*value, *type == "RATING");
  if (*type == "OPEN_ENDED") {
    return text::trimmed(*value).empty() ? std::optional<std::string>("value: blank") : std::nullopt;
  }
  return fmt::format("type: unknown question type {}", excerpt(*type));
}

void checkAnswer(json::Node answer, const std::string& path, Problems& problems) {
  if (!checkMembers(answer, path, answerMembers, problems)) return;
  if (const auto choice = member(answer, "choice")) {
    std::size_t index = 0;
    choice->elements([&](json::Node selection) {
      checkMembers(selection, fmt::format("{}.choice[{}]", path, index++), choiceMembers, problems);
      return true;
    });
  }
  if (const auto problem = answerProblem(answer)) problems.push_back(fmt::format("{}.{}", path, *problem));
}

}  // namespace

void checkSurveyResponse(const Request& request, Problems& problems) {
  const auto document = parseObject(request, bodyMembers, problems);
  if (!document) return;
  const auto body = document->root();
  constexpr std::array<std::string_view, 1> filled{"device_registered_id"};
  expectFilled(body, filled, problems);

  const auto responses = member(body, "responses");
  if (!responses || responses->kind() != Kind::array) return;
  expectText(body, "activity", "survey_activity", problems);
  if (responses->size() == 0) problems.push_back("body.responses: empty; an event leaves them out");
  std::size_t index = 0;
  responses->elements([&](json::Node answer) {
    checkAnswer(answer, fmt::format("body.responses[{}]", index++), problems);
    return true;
  });
}

}  // namespace orlan::devbackend
