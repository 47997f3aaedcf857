#include <gtest/gtest.h>

#include <limits>

#include "tools/orlan/simulate/Transcript.hpp"

namespace orlan::simulate {
namespace {

using namespace std::chrono_literals;

class TranscriptTest : public ::testing::Test {
 protected:
  std::string taken() { return std::exchange(text, {}); }
  Transcript make(std::set<std::string, std::less<>> only) {
    return Transcript([this](std::string_view line) { text += line; }, std::move(only),
                      [this] { return now; });
  }

  Duration now = 1'234'567us;
  std::string text;
  Transcript transcript = make({});
};

TEST_F(TranscriptTest, TimesHaveThreeDecimals) {
  transcript.remoteRegistration();
  EXPECT_EQ(taken(), "{\"at\":1.235,\"event\":\"remote-registration\"}\n");
  now = 0us;
  transcript.systemLog("a\nb");
  EXPECT_EQ(taken(), "{\"at\":0.000,\"event\":\"system-log\",\"message\":\"a\\nb\"}\n");
}

TEST_F(TranscriptTest, RequestsShowTheirBodyInTheFormThatHoldsIt) {
  HttpRequest request{"POST", "https://x", {{"A", "1"}, {"A", "2"}}, std::nullopt, 60s};
  const std::string head =
      R"({"at":1.235,"event":"request","id":7,"method":"POST","url":"https://x","headers":[["A","1"],["A","2"]],)";
  const std::pair<std::optional<std::string>, const char*> rows[] = {
      {std::nullopt, R"("body":null)"},
      {"", R"("body":"")"},
      {"é", R"("body":"é")"},
      {"\xff\xfe", R"("bodyBase64":"//4=")"},
  };
  for (const auto& [body, form] : rows) {
    request.body = body;
    transcript.request(7, request);
    EXPECT_EQ(taken(), head + form + ",\"timeout\":60.0}\n");
  }
}

TEST_F(TranscriptTest, ResponsesSayTheStatusOrTheFault) {
  const std::pair<Result<HttpReply>, const char*> rows[] = {
      {HttpReply{204, {}, {}}, R"("status":204)"},
      {HttpReply{}, R"("error":"notHTTP")"},
      {Unexpected(urlErrors::timedOut()), R"("error":"timeout")"},
      {Unexpected(urlErrors::cannotConnectToHost()), R"("error":"unreachable")"},
      {Unexpected(urlErrors::cancelled()), R"("error":"cancelled")"},
      {Unexpected(urlErrors::other("the dog ate it")), R"("error":"the dog ate it")"},
  };
  for (const auto& [result, form] : rows) {
    transcript.response(1, result);
    EXPECT_EQ(taken(), "{\"at\":1.235,\"event\":\"response\",\"id\":1," + std::string(form) + "}\n");
  }
}

TEST_F(TranscriptTest, ValuesThatJsonCannotHoldAreTexts) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  transcript.region(phone::RegionAction::start,
                    {"r", {{infinity, -infinity}, std::numeric_limits<double>::quiet_NaN()}});
  EXPECT_EQ(taken(),
            R"({"at":1.235,"event":"region","action":"start","identifier":"r","latitude":"Infinity",)"
            "\"longitude\":\"-Infinity\",\"radius\":\"NaN\"}\n");
  transcript.storeWritten("k", Bytes{"hi"});
  EXPECT_EQ(taken(), "{\"at\":1.235,\"event\":\"store\",\"key\":\"k\",\"value\":{\"base64\":\"aGk=\"}}\n");
}

TEST_F(TranscriptTest, OnlyTheChosenEventsAreWrittenUntilTheEnd) {
  Transcript chosen = make({"store"});
  chosen.consoleLine("INFO", "x");
  chosen.fileRemoved("f");
  chosen.storeRemoved("k");
  {
    const Transcript::Silence silence(chosen);
    chosen.storeRemoved("k");
  }
  chosen.ended(3);
  chosen.storeRemoved("k");
  EXPECT_EQ(taken(),
            "{\"at\":1.235,\"event\":\"store\",\"key\":\"k\",\"removed\":true}\n"
            "{\"at\":1.235,\"event\":\"end\",\"steps\":3}\n");
}

}  // namespace
}  // namespace orlan::simulate
