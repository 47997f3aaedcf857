#include <gtest/gtest.h>

#include "orlan/platform/httpRules.hpp"
#include "phones/common/storageRules.hpp"

namespace orlan::phone {
namespace {

TEST(HttpRules, TakesUrlsApart) {
  const struct {
    const char* text;
    const char* host;  // null: no URL
    const char* path;
  } rows[] = {
      {"https://api.example", "api.example", ""},
      {"https://api.example/a//b?c=d#e", "api.example", "/a//b?c=d#e"},
      {"HTTPS://API.example:443?x", "API.example", "?x"},
      {"https://[::1]:8443/x", "::1", "/x"},
      {"https://a.example/x:y@z", "a.example", "/x:y@z"},
      {"https://api.example/%zz", "api.example", "/%zz"},
      {"", nullptr, nullptr},
      {"api.example/path", nullptr, nullptr},
      {"ftp://api.example/", nullptr, nullptr},
      {"https:/api.example/", nullptr, nullptr},
      {"https://", nullptr, nullptr},
      {"https:///path", nullptr, nullptr},
      {"https://:443/", nullptr, nullptr},
      {"https://api.example:/", nullptr, nullptr},
      {"https://api.example:65536/", nullptr, nullptr},
      {"https://api.example:+1/", nullptr, nullptr},
      {"https://key@api.example/", nullptr, nullptr},
      {"https://[::1/x", nullptr, nullptr},
      {"https://[api.example]/", nullptr, nullptr},
      {"https://api.example/a b", nullptr, nullptr},
      {"https://api.example/a\nb", nullptr, nullptr},
      {"https://api.example/\x7f", nullptr, nullptr},
      {"https://bücher.example/", nullptr, nullptr},
  };
  for (const auto& row : rows) {
    const auto parts = parseUrl(row.text);
    ASSERT_EQ(parts.has_value(), row.host != nullptr) << row.text;
    if (!parts) continue;
    EXPECT_EQ(parts->host, row.host) << row.text;
    EXPECT_EQ(parts->path, row.path) << row.text;
  }
}

TEST(HttpRules, PlainHttpStaysAtHome) {
  for (const char* text : {"http://localhost/", "http://LOCALHOST:80/", "http://127.0.0.1/",
                           "http://127.255.0.9/", "http://[::1]/", "https://anywhere.example/"}) {
    EXPECT_TRUE(isAcceptableUrl(text)) << text;
  }
  for (const char* text : {"http://anywhere.example/", "http://localhost.example/",
                           "http://127.0.0.1.example/", "http://127.0.0/", "http://127..0.0.1/",
                           "http://127.0.0.256/", "http://128.0.0.1/", "http://[::2]/"}) {
    EXPECT_FALSE(isAcceptableUrl(text)) << text;
  }
}

TEST(HttpRules, RefusesWhatWouldLeaveItsLine) {
  const auto request = [](std::string method, std::vector<HttpHeader> headers) {
    return HttpRequest{std::move(method), "https://api.example/", std::move(headers)};
  };
  EXPECT_FALSE(refusal(request("POST", {{"X-Empty", ""}, {"X-Text", "tab\tand é"}})));
  for (const char bad : {'\r', '\n', '\0', '\x1b', '\x7f'}) {
    EXPECT_TRUE(refusal(request("GET", {{"X", std::string("a") + bad}}))) << int(bad);
    EXPECT_TRUE(refusal(request("GET", {{std::string("a") + bad, "x"}}))) << int(bad);
    EXPECT_TRUE(refusal(request(std::string("GET") + bad, {}))) << int(bad);
  }
  EXPECT_TRUE(refusal(request("GET", {{"", "x"}})));
  EXPECT_TRUE(refusal(request("GET", {{"a:b", "x"}})));
  EXPECT_TRUE(refusal(request("", {})));
}

TEST(StorageRules, OnlyPlainFilesInsideTheDirectoryHaveAName) {
  const auto name = [](std::string_view path) {
    return nameInside("/phone/caches", path).value_or("(none)");
  };
  EXPECT_EQ(name("/phone/caches/orlan-sdk.log"), "orlan-sdk.log");
  EXPECT_EQ(name("/phone/caches/..."), "...");
  for (const std::string_view path :
       {"/phone/caches", "/phone/caches/", "/phone/caches/.", "/phone/caches/..", "/phone/caches/a/b",
        "/phone/cachesX/a", "/phone/caches2", "phone/caches/a", "", "/"}) {
    EXPECT_EQ(name(path), "(none)") << path;
  }
  EXPECT_EQ(name(std::string_view("/phone/caches/a\0b", 17)), "(none)");
}

}  // namespace
}  // namespace orlan::phone
