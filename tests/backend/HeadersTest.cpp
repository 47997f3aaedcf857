#include <gtest/gtest.h>

#include "orlan/backend/Credentials.hpp"

namespace orlan {
namespace {

using Headers = std::vector<HttpHeader>;

TransmissionAppCredentials complete() {
  return {.companyApiKey = "company",
          .appID = "app",
          .appApiKey = "secret",
          .iosBundleID = "com.example.host",
          .includeLegacyApiKeyHeader = false};
}

Headers headersOf(const TransmissionAppCredentials& credentials) {
  HttpRequest request;
  request.addHeader("Accept", "application/json");
  addTransmissionHeaders(request, credentials);
  return request.headers;
}

TEST(TransmissionHeaders, CompleteCredentialsGoOutInFixedOrderWithTheLegacyHeaderLast) {
  Headers expected{
      {"Accept", "application/json"}, {"x-company-api-key", "company"},         {"x-app-id", "app"},
      {"x-app-api-key", "secret"},    {"x-app-identifier", "com.example.host"}, {"x-platform", "ios"}};
  auto credentials = complete();
  EXPECT_EQ(headersOf(credentials), expected);
  credentials.includeLegacyApiKeyHeader = true;
  expected.emplace_back("x-api-key", "company");
  EXPECT_EQ(headersOf(credentials), expected);
}

TEST(TransmissionHeaders, AnyMissingPartLeavesOnlyTheLegacyHeader) {
  struct Row {
    const char* name;
    std::string TransmissionAppCredentials::*part;
    const char* key;
  };
  for (const auto& [name, part, key] : {Row{"company key", &TransmissionAppCredentials::companyApiKey, ""},
                                        {"app id", &TransmissionAppCredentials::appID, "company"},
                                        {"app key", &TransmissionAppCredentials::appApiKey, "company"},
                                        {"bundle", &TransmissionAppCredentials::iosBundleID, "company"}}) {
    auto credentials = complete();
    credentials.*part = "";
    EXPECT_FALSE(credentials.isComplete()) << name;
    EXPECT_EQ(headersOf(credentials), (Headers{{"Accept", "application/json"}, {"x-api-key", key}})) << name;
  }
}

TEST(EffectiveCredentials, FallbackKeyStandsInForWhatIsNotConfigured) {
  const auto legacy = effectiveCredentials(std::nullopt, "stored", "com.example.host");
  EXPECT_EQ(legacy,
            (TransmissionAppCredentials{.companyApiKey = "stored", .iosBundleID = "com.example.host"}));
  EXPECT_TRUE(legacy.includeLegacyApiKeyHeader);

  EXPECT_EQ(headersOf(effectiveCredentials(std::nullopt, "", "")),
            (Headers{{"Accept", "application/json"}, {"x-api-key", ""}}));

  auto keyless = complete();
  keyless.companyApiKey = "";
  auto expected = keyless;
  expected.companyApiKey = "stored";
  EXPECT_EQ(effectiveCredentials(keyless, "stored", "other"), expected);
  EXPECT_EQ(effectiveCredentials(complete(), "stored", "other"), complete());
}

}  // namespace
}  // namespace orlan
