#include <gtest/gtest.h>

#include <set>
#include <string>

#include "orlan/backend/Config.hpp"

namespace orlan {
namespace {

using Environment = Config::Environment;

TEST(BaseUrls, TheBuiltInOnesAreEightDifferentOnesOfTheRightShape) {
  auto urls = BaseUrls::builtIn();
  std::set<std::string> different;
  for (const auto environment : allCases<Environment>()) {
    EXPECT_TRUE(urls.setPlatform(environment, urls.platformUrl(environment)));
    EXPECT_TRUE(urls.setTransmission(environment, urls.transmissionUrl(environment)));
    different.insert({urls.platformUrl(environment), urls.transmissionUrl(environment)});
  }
  EXPECT_EQ(different.size(), 8u);
}

TEST(BaseUrls, TransmissionAddressesKeepThePathSoThatOnlyNightlyDoublesASlash) {
  const std::pair<Environment, std::string> rows[] = {{Environment::development, ""},
                                                      {Environment::nightly, "/api/"},
                                                      {Environment::staging, "/api"},
                                                      {Environment::production, ""}};
  for (const auto& [environment, right] : rows) {
    for (const std::string path : {"", "/", "/api", "/api/"}) {
      auto urls = BaseUrls::builtIn();
      EXPECT_EQ(urls.setTransmission(environment, "https://host.example" + path).has_value(), path == right);
    }
  }
}

TEST(BaseUrls, OnlyASecureSchemeAHostAndAPortMakeAnAddress) {
  const std::pair<std::string, bool> rows[] = {
      {"https://host.example:8443", true},  {"http://127.0.0.1:8080", true},
      {"http://host.example", false},       {"//host.example", false},
      {"https://host.example/", false},     {"https://host.example?x", false},
      {"https://user@host.example", false}, {"https://[::1", false}};
  for (const auto& [url, usable] : rows) {
    auto urls = BaseUrls::builtIn();
    EXPECT_EQ(urls.setPlatform(Environment::staging, url).has_value(), usable) << url;
    EXPECT_EQ(urls.platformUrl(Environment::staging) == url, usable) << url;
  }
  auto urls = BaseUrls::builtIn();
  EXPECT_EQ(urls.setTransmission(Environment::staging, "https://host.example\n/api").error(),
            (Error{"Config", -1,
                   "not a usable base URL: expected https://HOST[:PORT]/api, found "
                   "\"https://host.example\\n/api\""}));
}

}  // namespace
}  // namespace orlan
