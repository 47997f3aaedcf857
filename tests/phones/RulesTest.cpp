#include <gtest/gtest.h>

#include "orlan/platform/Url.hpp"
#include "orlan/platform/httpRules.hpp"

namespace orlan::phone {
namespace {

TEST(Url, IsTakenApartAndTakesRequestsOnlyWhereNobodyListensIn) {
  constexpr auto no = "(no URL)";
  const struct {
    std::string_view text;
    std::string_view host;
    std::string_view path;
    bool secure;
  } rows[] = {
      {"https://api.example", "api.example", "", true},
      {"https://api.example/a//b?c=d/?#e?", "api.example", "/a//b?c=d/?#e?", true},
      {"HTTPS://API-1.under_score.example:443?x", "API-1.under_score.example", "?x", true},
      {"https://a.example:1/x:y@z%2f", "a.example", "/x:y@z%2f", true},
      {"https://[2001:db8::7:8.8.8.8]:65535/x", "2001:db8::7:8.8.8.8", "/x", true},
      {"https://u:p@a.example/", "a.example", "/", false},
      {"https://@a.example/", "a.example", "/", false},
      {"http://LOCALhost:80/", "LOCALhost", "/", true},
      {"http://127.255.0.9", "127.255.0.9", "", true},
      {"http://[::1]:8080/", "::1", "/", true},
      {"http://anywhere.example/", "anywhere.example", "/", false},
      {"http://localhost.example/", "localhost.example", "/", false},
      {"http://127.0.0/", "127.0.0", "/", false},
      {"http://127.0.0.256/", "127.0.0.256", "/", false},
      {"http://128.0.0.1/", "128.0.0.1", "/", false},
      {"http://[::2]/", "::2", "/", false},
      {"file:///a.png", "", "/a.png", false},
      {"mailto:me@a.example", "", "me@a.example", false},
      {"images/a.png?b:c", "", "images/a.png?b:c", false},
      {"//a.example/b", "a.example", "/b", false},
      {"", no, {}, false},
      {"//", no, {}, false},
      {"1http://a.example", no, {}, false},
      {"https:/a.example", no, {}, false},
      {"https:///path", no, {}, false},
      {"https://:443/", no, {}, false},
      {"https://a.example:/", no, {}, false},
      {"https://a.example:0/", no, {}, false},
      {"https://a.example:65536/", no, {}, false},
      {"https://a.example:+1/", no, {}, false},
      {"https://a:b/", no, {}, false},
      {"https://a..example/", no, {}, false},
      {"https://u@v@a.example/", no, {}, false},
      {"https://u]@a.example/", no, {}, false},
      {"https://[::1", no, {}, false},
      {"https://[::1]8080", no, {}, false},
      {"https://[]", no, {}, false},
      {"https://[a.example]/", no, {}, false},
      {"https://[12345::]/", no, {}, false},
      {"https://[1::2::3]/", no, {}, false},
      {"https://[:1:2:3:4:5:6:7]/", no, {}, false},
      {"https://[1:2:3:4:5:6:7]/", no, {}, false},
      {"https://[1:2:3:4:5:6:7::8]/", no, {}, false},
      {"https://a]b/", no, {}, false},
      {"a]b", no, {}, false},
      {"https://a.example/[", no, {}, false},
      {"https://a.example/#a#b", no, {}, false},
      {"https://a.example/%2z", no, {}, false},
      {"https://a.example/a b", no, {}, false},
      {"https://a.example/\r\nX: y", no, {}, false},
      {"https://a.example/\x7f", no, {}, false},
      {"https://bücher.example/", no, {}, false},
  };
  for (const auto& row : rows) {
    const auto url = parseUrl(row.text);
    EXPECT_EQ(url ? url->host : no, row.host) << row.text;
    EXPECT_EQ(url ? url->path : "", row.path) << row.text;
    EXPECT_EQ(isSecureUrl(row.text), row.secure) << row.text;
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

}  // namespace
}  // namespace orlan::phone
