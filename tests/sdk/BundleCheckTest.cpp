#include <gtest/gtest.h>

#include "orlan/sdk/BundleCheck.hpp"

namespace orlan {
namespace {

TEST(BundleCheck, CompleteCredentialsMustBelongToTheHost) {
  TransmissionAppCredentials credentials{.companyApiKey = "K", .appID = "A", .appApiKey = "AK"};
  struct Row {
    const char* configured;
    std::optional<std::string> host;
    const char* problem;
  };
  for (const auto& [configured, host, problem] :
       {Row{"com.host", "com.host", ""}, Row{" com.host\n", "\tcom.host ", ""},
        Row{"   ", "com.host", "OrlanConfig is missing ios_bundle_id for app-scoped credentials."},
        Row{"com.host", std::nullopt, "Unable to read host app bundle identifier."},
        Row{" X ", " x ", "OrlanConfig ios_bundle_id mismatch. Configured=X, Actual=x."}}) {
    credentials.iosBundleID = configured;
    const auto result = checkBundle(credentials, host);
    EXPECT_EQ(result ? std::string() : result.error().description, problem) << configured;
  }
  EXPECT_TRUE(checkBundle(std::nullopt, "com.host"));
  credentials.appID = "";
  EXPECT_TRUE(checkBundle(credentials, "com.host")) << "incomplete, so they are not used";
}

}  // namespace
}  // namespace orlan
