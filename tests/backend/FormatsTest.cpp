// The texts that leave the client, where whole exchanges do not show them.
#include <gtest/gtest.h>

#include "backend/Bed.hpp"
#include "orlan/backend/Activity.hpp"
#include "orlan/backend/LogBlocks.hpp"

namespace orlan {
namespace {

TEST(LogBlocks, RequestShowsEveryHeaderButTheApplicationsKey) {
  HttpRequest request{.method = "POST", .url = "https://host.example/x", .body = "{}"};
  request.addHeader("ApiKey", "key");
  request.addHeader("x-app-api-key", "secret");
  request.addHeader("x-api-key", "");
  EXPECT_EQ(logBlocks::textRequest("🔒  Title", request),
            "┌─🔒  Title\n│ URL: https://host.example/x\n│ Headers:\n│   ApiKey: key\n"
            "│   x-app-api-key: (redacted)\n│   x-api-key: \n│ Body:\n{}" +
                test::rule(44));
  request.body = "\xff\xfe";
  const auto block = logBlocks::textRequest("🔒  Title", request);
  EXPECT_TRUE(block.ends_with("│ Body:\n<non-utf8>" + test::rule(44))) << block;
}

TEST(LogBlocks, ResponseWithoutHeadersHasAnEmptyLineInTheirPlace) {
  struct Row {
    std::optional<std::string> body;
    const char* shown;
  };
  for (const auto& [body, shown] :
       {Row{std::nullopt, "<binary>"}, {"", ""}, {"ü\n2", "ü\n2"}, {"\xc3", "<binary>"}}) {
    EXPECT_EQ(logBlocks::response(500, {.status = 500, .body = body}),
              std::string("┌─📬  HTTP 500\n│ Headers:\n\n│ Raw body:\n") + shown + test::rule(44));
  }
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

}  // namespace
}  // namespace orlan
