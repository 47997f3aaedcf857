// The texts that leave the client: log blocks, forms and wire names.
#include <gtest/gtest.h>

#include "orlan/backend/Activity.hpp"
#include "orlan/backend/ActivityReporter.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/backend/Multipart.hpp"

namespace orlan {
namespace {

std::string dashes(int count) {
  std::string rule = "\n└";
  for (int i = 0; i < count; ++i) rule += "─";
  return rule;
}

TEST(LogBlocks, RulesAreFortyFourAndFiftyFourDashes) {
  EXPECT_EQ(logBlocks::shortCloser(), dashes(44));
  EXPECT_EQ(logBlocks::longCloser(), dashes(54));
}

TEST(LogBlocks, RequestShowsEveryHeaderButTheApplicationsKey) {
  HttpRequest request{.method = "POST", .url = "https://host.example/x", .body = "{}"};
  request.addHeader("ApiKey", "key");
  request.addHeader("x-app-api-key", "secret");
  request.addHeader("x-api-key", "");
  EXPECT_EQ(logBlocks::textRequest("🔒  Title", request),
            "┌─🔒  Title\n│ URL: https://host.example/x\n│ Headers:\n│   ApiKey: key\n"
            "│   x-app-api-key: (redacted)\n│   x-api-key: \n│ Body:\n{}" +
                dashes(44));
  request.body = "\xff\xfe";
  const auto block = logBlocks::textRequest("🔒  Title", request);
  EXPECT_TRUE(block.ends_with("│ Body:\n<non-utf8>" + dashes(44))) << block;
}

TEST(LogBlocks, ResponseKeepsHeadersInTheOrderReceived) {
  const HttpReply reply{.status = 201, .headers = {{"z", "1"}, {"A", "2"}, {"z", "3"}}, .body = "text"};
  EXPECT_EQ(logBlocks::response(201, reply),
            "┌─📬  HTTP 201\n│ Headers:\n│   z: 1\n│   A: 2\n│   z: 3\n│ Raw body:\ntext" + dashes(44));
}

TEST(LogBlocks, ResponseWithoutHeadersHasAnEmptyLineInTheirPlace) {
  struct Row {
    std::optional<std::string> body;
    const char* shown;
  };
  for (const auto& [body, shown] :
       {Row{std::nullopt, "<binary>"}, {"", ""}, {"ü\n2", "ü\n2"}, {"\xc3", "<binary>"}}) {
    EXPECT_EQ(logBlocks::response(500, {.status = 500, .body = body}),
              std::string("┌─📬  HTTP 500\n│ Headers:\n\n│ Raw body:\n") + shown + dashes(44));
  }
}

TEST(LogBlocks, UploadResponseCarriesAPhraseForTheStatus) {
  const HttpReply reply{.status = 500, .headers = {{"hidden", "1"}}, .body = "\xff"};
  EXPECT_EQ(logBlocks::uploadResponse(500, reply),
            "┌─📬  HTTP 500 • " + std::string(statusPhrase(500)) + "\n│ Raw body:\n<binary>" + dashes(54));
}

TEST(Multipart, PartsStandInOrderUnescapedWithOneClosingLine) {
  const std::array fields{FormField{"b", "1"}, FormField{"a", "\"x\"\r\n"}, FormField{"empty", ""}};
  EXPECT_EQ(multipartBody("B", fields),
            "--B\r\nContent-Disposition: form-data; name=\"b\"\r\n\r\n1\r\n"
            "--B\r\nContent-Disposition: form-data; name=\"a\"\r\n\r\n\"x\"\r\n\r\n"
            "--B\r\nContent-Disposition: form-data; name=\"empty\"\r\n\r\n\r\n"
            "--B--\r\n");
}

TEST(Activity, RawValuesAndWireNames) {
  const std::vector<std::string> activities{"cta_engagement", "notification_sent", "notification_delivered",
                                            "media_viewed",   "location_update",   "geofence_exit",
                                            "geofence_entry"};
  for (std::size_t raw = 0; raw < activities.size(); ++raw) {
    const auto activity = fromRawValue<ActivityType>(static_cast<std::int64_t>(raw));
    ASSERT_TRUE(activity);
    EXPECT_EQ(wireName(*activity), activities[raw]);
  }
  EXPECT_EQ(fromRawValue<ActivityType>(std::int64_t{7}), std::nullopt);
  EXPECT_EQ(fromRawValue<ActivityType>(std::int64_t{-1}), std::nullopt);

  const std::vector<std::string> types{"notification", "location", "geofence"};
  for (std::size_t raw = 0; raw < types.size(); ++raw) {
    EXPECT_EQ(wireName(fromRawValue<NotificationType>(static_cast<std::int64_t>(raw)).value()), types[raw]);
  }
  EXPECT_EQ(fromRawValue<NotificationType>(std::int64_t{3}), std::nullopt);
}

TEST(Activity, FormWritesPositionsAsTheShortestTextThatReadsBack) {
  struct Row {
    Coordinate position;
    const char* latitude;
    const char* longitude;
  };
  for (const auto& [position, latitude, longitude] : {Row{{-1.0, -1.0}, "-1.0", "-1.0"},
                                                      {{51.5, -0.12}, "51.5", "-0.12"},
                                                      {{0.1 + 0.2, 1e-5}, "0.30000000000000004", "1e-05"}}) {
    const auto form =
        activityForm({ActivityType::mediaViewed, 9223372036854775807, -2, NotificationType::location}, "dev",
                     "2025-03-14 09:26:53", position);
    const std::vector<std::pair<std::string, std::string>> expected{{"device_registered_id", "dev"},
                                                                    {"curated_notification_id", "-2"},
                                                                    {"location_id", "9223372036854775807"},
                                                                    {"type", "location"},
                                                                    {"activity", "media_viewed"},
                                                                    {"time", "2025-03-14 09:26:53"},
                                                                    {"latitude", latitude},
                                                                    {"longitude", longitude}};
    std::vector<std::pair<std::string, std::string>> found;
    for (const auto& field : form) found.emplace_back(field.name, field.value);
    EXPECT_EQ(found, expected);
  }
}

}  // namespace
}  // namespace orlan
