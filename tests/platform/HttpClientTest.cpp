#include <gtest/gtest.h>

#include "orlan/platform/HttpClient.hpp"

namespace orlan {
namespace {

TEST(UrlErrors, CarryTheirCodes) {
  const std::pair<Error, std::int64_t> rows[] = {
      {urlErrors::cancelled(), -999},          {urlErrors::badURL(), -1000},
      {urlErrors::timedOut(), -1001},          {urlErrors::cannotConnectToHost(), -1004},
      {urlErrors::badServerResponse(), -1011}, {urlErrors::other("why"), -1}};
  for (const auto& [error, code] : rows) {
    EXPECT_EQ(error.domain, "URLError");
    EXPECT_EQ(error.code, code);
  }
}

TEST(StatusPhrase, IsThereForEveryNumber) {
  const std::pair<int, std::string_view> rows[] = {{200, "ok"},
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
                                                   {-404, "unknown status"}};
  for (const auto& [status, phrase] : rows) EXPECT_EQ(statusPhrase(status), phrase) << status;
}

}  // namespace
}  // namespace orlan
