#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "orlan/backend/Config.hpp"

namespace orlan {
namespace {

using Environment = Config::Environment;

TEST(Config, EnvironmentsGoByTheirRawTextInDeclarationOrder) {
  const std::vector<std::string> expected{"development", "nightly", "staging", "production"};
  std::vector<std::string> found;
  for (const auto environment : allCases<Environment>()) {
    found.emplace_back(rawValue(environment));
    EXPECT_EQ(fromRawValue<Environment>(found.back()), environment);
  }
  EXPECT_EQ(found, expected);
  EXPECT_EQ(fromRawValue<Environment>("Staging"), std::nullopt);
}

TEST(Config, BridgedIntegersMapByMeaningAndAnyOtherIsStaging) {
  struct Row {
    std::int64_t raw;
    Environment expected;
  };
  for (const auto& [raw, expected] : {Row{0, Environment::development},
                                      {1, Environment::staging},
                                      {2, Environment::production},
                                      {3, Environment::nightly},
                                      {4, Environment::staging},
                                      {7, Environment::staging},
                                      {-1, Environment::staging},
                                      {std::int64_t{1} << 32, Environment::staging},
                                      {std::numeric_limits<std::int64_t>::min(), Environment::staging}}) {
    EXPECT_EQ(environmentFromBridged(raw), expected) << raw;
  }
  EXPECT_EQ(fromRawValue<OrlanEnvironment>(std::int64_t{4}), std::nullopt);
}

TEST(BaseUrls, BuiltInAddressesAreEightDifferentOnesOfTheRightShape) {
  const auto builtIn = BaseUrls::builtIn();
  auto urls = builtIn;
  std::set<std::string> different;
  for (const auto environment : allCases<Environment>()) {
    EXPECT_TRUE(urls.setPlatform(environment, builtIn.platformUrl(environment)));
    EXPECT_TRUE(urls.setTransmission(environment, builtIn.transmissionUrl(environment)));
    for (const auto& url : {builtIn.platformUrl(environment), builtIn.transmissionUrl(environment)}) {
      different.insert(url);
      EXPECT_TRUE(url.starts_with("https://")) << url;
      EXPECT_NE(url.find(".orlan.example"), std::string::npos) << url;
    }
  }
  EXPECT_EQ(different.size(), 8u);
}

TEST(BaseUrls, TransmissionAddressesKeepThePathSoThatOnlyNightlyDoublesASlash) {
  struct Row {
    Environment environment;
    std::string_view path;
  };
  const std::array rows{Row{Environment::development, ""}, Row{Environment::nightly, "/api/"},
                        Row{Environment::staging, "/api"}, Row{Environment::production, ""}};
  for (const auto& [environment, right] : rows) {
    for (const std::string_view path : {"", "/", "/api", "/api/", "/api//", "/Api", "/v1"}) {
      auto urls = BaseUrls::builtIn();
      const auto url = "https://host.example" + std::string(path);
      const auto set = urls.setTransmission(environment, url);
      EXPECT_EQ(set.has_value(), path == right) << rawValue(environment) << ' ' << url;
      EXPECT_EQ(urls.transmissionUrl(environment) == url, path == right) << url;
    }
  }
}

TEST(BaseUrls, OnlySchemeHostAndPortMakeAnAddress) {
  struct Row {
    const char* url;
    bool usable;
  };
  for (const auto& [url, usable] : {Row{"https://host.example:8443", true},
                                    {"http://127.0.0.1:8080", true},
                                    {"http://host.example", false},
                                    {"//host.example", false},
                                    {"https://host.example/", false},
                                    {"https://host.example?x", false},
                                    {"https://host.example#x", false},
                                    {"https://user@host.example", false},
                                    {"https://[::1", false}}) {
    auto urls = BaseUrls::builtIn();
    EXPECT_EQ(urls.setPlatform(Environment::staging, url).has_value(), usable) << url;
    EXPECT_EQ(urls.platformUrl(Environment::staging),
              usable ? std::string(url) : BaseUrls::builtIn().platformUrl(Environment::staging));
  }
}

TEST(BaseUrls, RefusalSaysWhatWasFoundAndExpectedInOneLine) {
  auto urls = BaseUrls::builtIn();
  const auto refused = urls.setTransmission(Environment::staging, "https://host.example\n/api");
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.error().description,
            "not a usable base URL: expected https://HOST[:PORT]/api, found \"https://host.example\\n/api\"");
}

}  // namespace
}  // namespace orlan
