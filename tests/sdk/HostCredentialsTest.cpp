#include <gtest/gtest.h>

#include "orlan/sdk/HostCredentials.hpp"

namespace orlan {
namespace {

using json::Object;

TEST(HostCredentials, EachFieldIsReadFromTheFirstSpellingThatIsNotBlank) {
  struct Row {
    const char* name;
    Object list;
    TransmissionAppCredentials expected;
  };
  const auto with = [](auto change) {
    TransmissionAppCredentials credentials;
    credentials.companyApiKey = "K";
    credentials.iosBundleID = "com.host";
    change(credentials);
    return credentials;
  };
  const auto filled = with([](auto& c) {
    c.appID = "A";
    c.appApiKey = "AK";
    c.iosBundleID = "B";
    c.companyID = "C";
    c.appName = "N";
  });
  const Row rows[] = {
      {"the order of the key's spellings",
       {{"apiKey", "4"}, {"api_key", "3"}, {"companyApiKey", "2"}, {"company_api_key", "1"}},
       with([](auto& c) { c.companyApiKey = "1"; })},
      {"a blank spelling gives way to the next",
       {{"company_api_key", "  "}, {"companyApiKey", " \n K\t"}},
       with([](auto&) {})},
      {"all snake case",
       {{"company_api_key", "K"},
        {"app_id", "A"},
        {"app_api_key", "AK"},
        {"ios_bundle_id", "B"},
        {"company_id", "C"},
        {"app_name", "N"}},
       filled},
      {"all camel case",
       {{"companyApiKey", "K"},
        {"appId", "A"},
        {"appApiKey", "AK"},
        {"iosBundleId", "B"},
        {"companyId", "C"},
        {"appName", "N"}},
       filled},
      {"the bundle identifier's spellings in order",
       {{"apiKey", "K"},
        {"appIdentifier", "6"},
        {"app_identifier", "5"},
        {"bundleId", "4"},
        {"bundle_id", "3"},
        {"iosBundleId", " "}},
       with([](auto& c) { c.iosBundleID = "3"; })},
      {"numbers and booleans as text",
       {{"apiKey", 42}, {"appId", 1.5}, {"appApiKey", true}, {"appName", 100000.0}},
       with([](auto& c) {
         c.companyApiKey = "42";
         c.appID = "1.5";
         c.appApiKey = "true";
         c.appName = "100000.0";
       })},
      {"collections and data have no text",
       {{"company_api_key", json::Array{"x"}}, {"api_key", Bytes{"x"}}, {"apiKey", "K"}},
       with([](auto&) {})},
      {"nested, and then only nested",
       {{"app_id", "outer"}, {"company_api_key", "outer"}, {"transmission", Object{{"apiKey", "K"}}}},
       with([](auto&) {})},
      {"a transmission that is no dictionary does not count",
       {{"apiKey", "K"}, {"transmission", "on"}},
       with([](auto&) {})},
  };
  for (const Row& row : rows) {
    const auto found = hostCredentials(row.list, "com.host");
    ASSERT_TRUE(found) << row.name;
    EXPECT_TRUE(*found == row.expected) << row.name;
  }
}

TEST(HostCredentials, WithoutACompanyKeyThereAreNone) {
  EXPECT_FALSE(hostCredentials({}, "com.host"));
  EXPECT_FALSE(hostCredentials({{"app_id", "A"}, {"api_key", " \n"}}, "com.host"));
  EXPECT_FALSE(hostCredentials({{"apiKey", "outer"}, {"transmission", Object{}}}, "com.host"));
}

TEST(HostCredentials, AnUnknownHostHasAnEmptyBundleIdentifier) {
  EXPECT_EQ(hostCredentials({{"apiKey", "K"}}, std::nullopt)->iosBundleID, "");
}

TEST(HostCredentials, TheLegacyHeaderFlagHasManyWords) {
  struct Row {
    const char* name;
    Object list;
    bool expected;
  };
  const char* const first = "include_legacy_api_key_header";
  const char* const second = "includeLegacyApiKeyHeader";
  const Row rows[] = {
      {"absent", {}, true},
      {"boolean false", {{first, false}}, false},
      {"No", {{first, "No"}}, false},
      {"padded OFF", {{first, " OFF\n"}}, false},
      {"integer 0", {{first, 0}}, false},
      {"yes", {{first, "yes"}}, true},
      {"a word that says nothing gives way", {{first, "maybe"}, {second, "false"}}, false},
      {"third spelling", {{"allow_legacy_api_key_header", "0"}}, false},
      {"fourth spelling", {{"allowLegacyApiKeyHeader", "no"}}, false},
      {"the first that says something wins", {{second, true}, {first, false}}, false},
  };
  for (const Row& row : rows) {
    Object list = row.list;
    list.set("apiKey", "K");
    EXPECT_EQ(hostCredentials(list, "com.host")->includeLegacyApiKeyHeader, row.expected) << row.name;
  }
}

}  // namespace
}  // namespace orlan
