#include "tools/orlan/backend/Formats.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "orlan/base/text.hpp"
#include "tools/orlan/backend/BodyForms.hpp"

namespace orlan::devbackend {
namespace {

using json::Kind;

constexpr Rule dateTime{"yyyy-MM-dd HH:mm:ss", isDateTime};
constexpr Rule decimal{"a decimal integer", isPlainInteger};
constexpr Rule latitude{"degrees from -90 to 90 as their shortest text", isLatitude};
constexpr Rule longitude{"degrees from -180 to 180 as their shortest text", isLongitude};
constexpr Rule uuid{"an upper-case UUID", isUuid};

bool isVendor(std::string_view text) {
  return isUuid(text) || text == "unknown";
}

bool isUpload(std::string_view contentType) {
  constexpr std::string_view prefix = "multipart/form-data; boundary=Boundary-";
  return contentType.starts_with(prefix) && isUuid(contentType.substr(prefix.size()));
}

constexpr Field jsonContent{"Content-Type", {"application/json"}};
constexpr Field jsonAccepted{"Accept", {"application/json"}};
constexpr std::array jsonBothWays{jsonContent, jsonAccepted};
constexpr std::array sendsJson{jsonContent};
constexpr std::array acceptsJson{jsonAccepted};
constexpr std::array sendsForm{Field{"Content-Type", {"application/x-www-form-urlencoded"}}};
constexpr std::array sendsUpload{
    Field{"Content-Type", {"multipart/form-data; boundary=Boundary-…, an upper-case UUID", isUpload}}};

constexpr std::array deviceRecord{
    Field{"app_name"},
    Field{"api_key"},
    Field{"sdk_version"},
    Field{"platform", {"iOS"}},
    Field{"os_version"},
    Field{"device_model"},
    Field{"device_name"},
    Field{"manufacturer", {"Apple"}},
    Field{"country"},
    Field{"language"},
    Field{"device_id", filled},
    Field{"segmentations"},
    Field{"correlation_id"},
    Field{"orlan_id", filled},
    Field{"device_token", filled},
};

void checkDeviceRecord(const Request& request, Problems& problems) {
  const auto document = checkJson(request, deviceRecord, problems);
  if (!document) return;
  const auto text = [&](std::string_view key) { return textMember(document->root(), key); };
  const auto language = text("language");
  if (language && text("country").value_or(*language) != *language) {
    problems.push_back("body.language: differs from country");
  }
  const auto* key = findHeader(request, "ApiKey");
  if (key != nullptr && text("api_key").value_or(*key) != *key) {
    problems.push_back("body.api_key: differs from the header ApiKey");
  }
  // "0" says that the device has no identity yet; then its own identifier must be a UUID.
  const auto device = text("device_id");
  if (device && text("orlan_id") == "0") checkValue(uuid, "body.device_id", *device, problems);
}

constexpr std::array anyText{Field{}};
constexpr std::array segments{Field{.name = "segmentation", .kind = Kind::array, .content = anyText},
                              Field{"device_registered_id", filled}};

constexpr std::array question{Field{"latitude", latitude}, Field{"longitude", longitude},
                              Field{"segmentationTags"}, Field{"distance", {"10"}, Kind::integer}};

constexpr std::array activityParts{
    Field{"device_registered_id", filled},
    Field{"curated_notification_id", decimal},
    Field{"location_id", decimal},
    Field{"type", {"notification|location|geofence"}},
    Field{"activity",
          {"cta_engagement|notification_sent|notification_delivered|media_viewed|location_update|"
           "geofence_exit|geofence_entry"}},
    Field{"time", dateTime},
    Field{"latitude", latitude},
    Field{"longitude", longitude},
};

constexpr std::array pluginActivity{
    Field{"device_registered_id", {"the vendor's upper-case UUID or unknown", isVendor}},
    Field{"time", dateTime}, Field{"activity", filled}};

constexpr std::array selectionMembers{Field{.name = "choice_id", .kind = Kind::integer}};
constexpr std::array selection{Field{.kind = Kind::object, .content = selectionMembers}};
constexpr std::array answerMembers{
    Field{.name = "question_id", .kind = Kind::integer}, Field{"type"}, Field{"value"},
    Field{.name = "choice", .kind = Kind::array, .isRequired = false, .content = selection}};
constexpr std::array answer{Field{.kind = Kind::object, .content = answerMembers}};
constexpr std::array survey{
    Field{"device_registered_id", filled}, Field{.name = "curated_notification_id", .kind = Kind::integer},
    Field{"activity"}, Field{.name = "location_id", .kind = Kind::integer, .isRequired = false},
    Field{.name = "responses",
          .rule = {"at least one answer", [](std::string_view list) { return list != "[]"; }},
          .kind = Kind::array,
          .isRequired = false,
          .content = answer}};

bool isRating(std::string_view text) {
  const auto stars = text::toInteger(text);
  return stars && *stars >= 1 && *stars <= 5;
}

bool isYesOrNo(std::string_view text) {
  const auto lower = text::lower(text);
  return lower == "true" || lower == "false" || lower == "yes" || lower == "no";
}

/// What an answer's value is; a question whose answer is a choice has no rule. Otherwise a host made a
/// mistake that the library should have stopped.
constexpr std::array answerTypes{
    Field{"SLIDER"},
    Field{"SINGLE_CHOICE"},
    Field{"MULTIPLE_CHOICE"},
    Field{"BOOLEAN", {"true, false, yes or no", isYesOrNo}},
    Field{"NUMBER",
          {"a whole number", [](std::string_view text) { return text::toInteger(text).has_value(); }}},
    Field{"RATING", {"a rating from 1 to 5", isRating}},
    Field{"OPEN_ENDED", {"some text", [](std::string_view text) { return !text::trimmed(text).empty(); }}},
};

void checkAnswer(json::Node answered, const std::string& path, Problems& problems) {
  const auto name = textMember(answered, "type");
  const auto value = textMember(answered, "value");
  if (!name || !value) return;
  const auto type = std::find_if(answerTypes.begin(), answerTypes.end(),
                                 [&](const Field& known) { return known.name == *name; });
  if (type == answerTypes.end()) {
    problems.push_back(fmt::format("{}.type: unknown question type {}", path, excerpt(*name)));
  } else if (!type->rule.expected.empty()) {
    checkValue(type->rule, path + ".value", *value, problems);
  } else if (const auto choice = member(answered, "choice"); !choice || choice->size() == 0) {
    problems.push_back(path + ".choice: expected at least one selection");
  }
}

void checkSurvey(const Request& request, Problems& problems) {
  const auto document = checkJson(request, survey, problems);
  const auto responses = document ? member(document->root(), "responses") : std::nullopt;
  if (!responses) return;
  const auto activity = textMember(document->root(), "activity");
  if (activity) checkValue({"survey_activity"}, "body.activity", *activity, problems);
  std::size_t index = 0;
  responses->elements([&](json::Node answered) {
    checkAnswer(answered, fmt::format("body.responses[{}]", index++), problems);
    return true;
  });
}

template <auto& form, auto& fields>
void checkAs(const Request& request, Problems& problems) {
  static_cast<void>(form(request, fields, problems));
}

void checkNone(const Request& request, Problems& problems) {
  if (!request.body.empty()) problems.push_back("body: expected none");
}

constexpr std::array all{
    Format{Endpoint::registration, "POST", "/api/device-registerd/create", false, jsonBothWays,
           checkDeviceRecord},
    Format{Endpoint::segments, "POST", "/api/segments", false, sendsJson, checkAs<checkJson, segments>},
    Format{Endpoint::activities, "POST", "/api/activities", false, sendsUpload,
           checkAs<checkMultipart, activityParts>},
    Format{Endpoint::pluginActivity, "POST", "/api/plugin-activity/create", false, sendsForm,
           checkAs<checkForm, pluginActivity>},
    Format{Endpoint::surveyResponse, "POST", "/api/survey-response", false, jsonBothWays, checkSurvey},
    Format{Endpoint::configuration, "GET", "/get-config", true, acceptsJson, checkNone},
    Format{Endpoint::geofenceCheck, "POST", "/check-geofence", true, jsonBothWays,
           checkAs<checkJson, question>},
};

}  // namespace

std::span<const Format> formats() {
  return all;
}

const Format& formatOf(Endpoint endpoint) {
  return all[static_cast<std::size_t>(endpoint)];
}

}  // namespace orlan::devbackend
