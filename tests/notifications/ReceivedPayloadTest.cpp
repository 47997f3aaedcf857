#include <gtest/gtest.h>

#include <limits>

#include "orlan/notifications/ReceivedPayload.hpp"

namespace orlan::test {
namespace {

using json::Object;
using json::Value;

constexpr auto smallest = std::numeric_limits<std::int64_t>::min();

TEST(ReceivedPayload, IdentifiersAreTextsOrWholeNumbers) {
  struct Row {
    const char* name;
    Value value;
    std::int64_t expected;
  };
  constexpr std::int64_t next = 77;  // what the key behind it says
  const Row rows[] = {
      {"integer", 12, 12},
      {"minus one is a number like any other", -1, -1},
      {"text", "42", 42},
      {"plus sign", "+12", 12},
      {"a double that is whole", 12.0, 12},
      {"the smallest double", -0x1p63, smallest},
      // A text that is no number ends the search.
      {"empty text", "", -1},
      {"one too large", "9223372036854775808", -1},
      // Everything else is passed over.
      {"null", nullptr, next},
      {"true", true, next},
      {"a double with a fraction", 12.5, next},
      {"a double beyond 64 bits", 0x1p63, next},
      {"not a number", std::numeric_limits<double>::quiet_NaN(), next},
      {"array", json::Array{1}, next},
      {"object", Object{{"id", 1}}, next},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ReceivedPayload::parse({{"n_id", next}, {"id", row.value}}).notifID, row.expected) << row.name;
    EXPECT_EQ(ReceivedPayload::parse({{"locationId", row.value}, {"location_id", next}}).locationID,
              row.expected)
        << row.name;
    const auto nested =
        ReceivedPayload::parse({{"notification_data", Object{{"notification_id", row.value}}}});
    EXPECT_EQ(nested.notifID, row.expected == next ? -1 : row.expected) << row.name;
  }
}

TEST(ReceivedPayload, KeysAreTriedInOrder) {
  const auto nested = [](Object data) { return std::pair{"notification_data", Value(std::move(data))}; };
  const ReceivedPayload::Nested media{
      .notifID = -1, .mediaType = "video", .mediaURL = "N", .ctaLabel = "L", .ctaURL = "C"};
  struct Row {
    const char* name;
    Object info;
    ReceivedPayload expected;
  };
  const Row rows[] = {
      {"what the library posts itself",
       {{"campaign_id", 1}, {"location_id", 7}, {"n_id", 42}, {"mediaType", "image"}, {"mediaUrl", nullptr}},
       {.notifID = 42, .locationID = 7, .mediaType = "image"}},
      {"id before n_id, locationId before location_id",
       {{"n_id", 1}, {"id", 2}, {"location_id", 3}, {"locationId", 4}},
       {.notifID = 2, .locationID = 4}},
      {"nested zero wins",
       {nested({{"notification_id", 0}}), {"id", 9}},
       {.nested = ReceivedPayload::Nested{.notifID = 0}, .notifID = 0}},
      {"nested without identifier",
       {{"id", 9},
        {"mediaUrl", "T"},
        {"mediaType", "image"},
        {"ctaLabel", "l"},
        {"ctaUrl", "c"},
        nested({{"media_url", "N"}, {"type", "video"}, {"cta_label", "L"}, {"cta_url", "C"}})},
       {.nested = media,
        .notifID = 9,
        .mediaType = "video",
        .mediaURL = "N",
        .ctaLabel = "L",
        .ctaURL = "C"}},
      {"nested minus one leaves it to the others",
       {nested({{"notification_id", "-1"}}), {"n_id", 3}},
       {.nested = ReceivedPayload::Nested{}, .notifID = 3}},
      {"nested values that are no texts",
       {nested({{"media_url", 1}, {"cta_label", nullptr}}), {"mediaUrl", "T"}, {"ctaLabel", "l"}},
       {.nested = ReceivedPayload::Nested{}, .mediaURL = "T", .ctaLabel = "l"}},
      {"nested has no location",
       {nested({{"location_id", 4}, {"locationId", 4}})},
       {.nested = ReceivedPayload::Nested{}}},
      {"nested is no dictionary",
       {{"notification_data", "{\"notification_id\":1}"}, {"id", 2}},
       {.notifID = 2}},
      {"completion message: first key",
       {{"completionMessage", "d"}, {"completion_message", "c"}, {"post_message", "b"}, {"postMessage", "a"}},
       {.completionMessage = "a"}},
      {"completion message: first text",
       {{"postMessage", 1}, {"post_message", nullptr}, {"completion_message", "c"}},
       {.completionMessage = "c"}},
      {"completion message: last key", {{"completionMessage", "d"}}, {.completionMessage = "d"}},
  };
  for (const Row& row : rows) EXPECT_EQ(ReceivedPayload::parse(row.info), row.expected) << row.name;
}

}  // namespace
}  // namespace orlan::test
