#include <gtest/gtest.h>

#include "orlan/sdk/HostCredentials.hpp"

namespace orlan {
namespace {

using json::Object;

TEST(HostCredentials, EachFieldIsReadFromTheFirstSpellingThatIsNotBlank) {
  struct Row {
    const char* name;
    Object list;
    std::string expected;  // key, application, its key, bundle, company, name
  };
  const Row rows[] = {
      {"the order of the key's spellings",
       {{"apiKey", "4"}, {"api_key", "3"}, {"companyApiKey", "2"}, {"company_api_key", "1"}},
       "1,,,com.host,-,-"},
      {"a blank spelling gives way to the next",
       {{"company_api_key", "  "}, {"companyApiKey", " \n K\t"}},
       "K,,,com.host,-,-"},
      {"all snake case",
       {{"company_api_key", "K"},
        {"app_id", "A"},
        {"app_api_key", "AK"},
        {"ios_bundle_id", "B"},
        {"company_id", "C"},
        {"app_name", "N"}},
       "K,A,AK,B,C,N"},
      {"all camel case",
       {{"companyApiKey", "K"},
        {"appId", "A"},
        {"appApiKey", "AK"},
        {"iosBundleId", "B"},
        {"companyId", "C"},
        {"appName", "N"}},
       "K,A,AK,B,C,N"},
      {"the bundle identifier's spellings in order",
       {{"apiKey", "K"},
        {"appIdentifier", "6"},
        {"app_identifier", "5"},
        {"bundleId", "4"},
        {"bundle_id", "3"},
        {"iosBundleId", " "}},
       "K,,,3,-,-"},
      {"numbers and booleans as text",
       {{"apiKey", 42}, {"appId", 1.5}, {"appApiKey", true}, {"appName", 100000.0}},
       "42,1.5,true,com.host,-,100000.0"},
      {"collections and data have no text",
       {{"company_api_key", json::Array{"x"}}, {"api_key", Bytes{"x"}}, {"apiKey", "K"}},
       "K,,,com.host,-,-"},
      {"nested, and then only nested",
       {{"app_id", "outer"}, {"company_api_key", "outer"}, {"transmission", Object{{"apiKey", "K"}}}},
       "K,,,com.host,-,-"},
      {"a transmission that is no dictionary", {{"apiKey", "K"}, {"transmission", "on"}}, "K,,,com.host,-,-"},
  };
  for (const Row& row : rows) {
    const auto found = hostCredentials(row.list, "com.host");
    ASSERT_TRUE(found) << row.name;
    EXPECT_EQ(found->companyApiKey + "," + found->appID + "," + found->appApiKey + "," + found->iosBundleID +
                  "," + found->companyID.value_or("-") + "," + found->appName.value_or("-"),
              row.expected)
        << row.name;
  }
}

TEST(HostCredentials, WithoutACompanyKeyThereAreNone) {
  EXPECT_FALSE(hostCredentials({}, "com.host"));
  EXPECT_FALSE(hostCredentials({{"app_id", "A"}, {"api_key", " \n"}}, "com.host"));
  EXPECT_FALSE(hostCredentials({{"apiKey", "outer"}, {"transmission", Object{}}}, "com.host"));
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
