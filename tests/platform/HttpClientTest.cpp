#include <gtest/gtest.h>

#include <algorithm>

#include "orlan/platform/HttpClient.hpp"

namespace orlan {
namespace {

TEST(UrlErrors, CarryTheirCodesAndWords) {
  struct Row {
    Error error;
    std::int64_t code;
  };
  const Row rows[] = {{urlErrors::cancelled(), -999},          {urlErrors::badURL(), -1000},
                      {urlErrors::timedOut(), -1001},          {urlErrors::cannotConnectToHost(), -1004},
                      {urlErrors::badServerResponse(), -1011}, {urlErrors::other("The line is dead."), -1}};
  for (const Row& row : rows) {
    EXPECT_EQ(row.error.domain, "URLError");
    EXPECT_EQ(row.error.code, row.code);
    EXPECT_TRUE(row.error.description.ends_with('.')) << row.error.description;
  }
  EXPECT_EQ(urlErrors::other("The line is dead.").description, "The line is dead.");
}

TEST(StatusPhrase, IsThereForEveryNumber) {
  struct Row {
    int status;
    std::string_view phrase;
  };
  const Row rows[] = {{200, "ok"},
                      {204, "no content"},
                      {404, "not found"},
                      {500, "internal server error"},
                      {511, "network authentication required"},
                      {199, "informational"},
                      {299, "success"},
                      {399, "redirected"},
                      {499, "client error"},
                      {599, "server error"},
                      {600, "unknown status"},
                      {99, "unknown status"},
                      {0, "unknown status"},
                      {-404, "unknown status"},
                      {1000, "unknown status"}};
  for (const Row& row : rows) EXPECT_EQ(statusPhrase(row.status), row.phrase) << row.status;
  for (int status = -1000; status <= 1000; ++status) {
    const std::string_view phrase = statusPhrase(status);
    EXPECT_FALSE(phrase.empty()) << status;
    EXPECT_TRUE(std::none_of(phrase.begin(), phrase.end(), [](char c) { return c >= 'A' && c <= 'Z'; }))
        << phrase;
  }
}

}  // namespace
}  // namespace orlan
