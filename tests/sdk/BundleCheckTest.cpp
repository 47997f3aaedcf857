#include <gtest/gtest.h>

#include "orlan/sdk/BundleCheck.hpp"

namespace orlan {
namespace {

TEST(BundleCheck, CompleteCredentialsMustBelongToTheHost) {
  const auto complete = [](std::string bundle) {
    TransmissionAppCredentials credentials;
    credentials.companyApiKey = "K";
    credentials.appID = "A";
    credentials.appApiKey = "AK";
    credentials.iosBundleID = std::move(bundle);
    return credentials;
  };
  const auto incomplete = [&] {
    auto credentials = complete("com.other");
    credentials.appID = "";
    return credentials;
  };
  struct Row {
    const char* name;
    std::optional<TransmissionAppCredentials> credentials;
    std::optional<std::string> host;
    const char* problem;  // empty: passes
  };
  const Row rows[] = {
      {"no credentials", std::nullopt, "com.host", ""},
      {"incomplete", incomplete(), "com.host", ""},
      {"the same", complete("com.host"), "com.host", ""},
      {"white space on either side", complete(" com.host\n"), "\tcom.host ", ""},
      {"only blanks", complete("   "), "com.host",
       "OrlanConfig is missing ios_bundle_id for app-scoped credentials."},
      {"host unknown", complete("com.host"), std::nullopt, "Unable to read host app bundle identifier."},
      {"another", complete(" X "), " Y ", "OrlanConfig ios_bundle_id mismatch. Configured=X, Actual=Y."},
      {"letter case counts", complete("com.Host"), "com.host",
       "OrlanConfig ios_bundle_id mismatch. Configured=com.Host, Actual=com.host."},
  };
  for (const Row& row : rows) {
    const auto result = checkBundle(row.credentials, row.host);
    if (*row.problem == '\0') {
      EXPECT_TRUE(result) << row.name;
    } else {
      ASSERT_FALSE(result) << row.name;
      EXPECT_EQ(result.error(), (Error{"OrlanPlugin", -1, row.problem})) << row.name;
    }
  }
}

}  // namespace
}  // namespace orlan
