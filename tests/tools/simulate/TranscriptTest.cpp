// What no scenario shows; tests/scenarios shows the rest.
#include <gtest/gtest.h>

#include <limits>

#include "tools/orlan/simulate/Transcript.hpp"

namespace orlan::simulate {
namespace {

using namespace std::chrono_literals;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Transcript, WritesWhatJsonCannotHoldAsText) {
  const struct {
    std::function<void(Transcript&)> happens;
    const char* members;
  } rows[] = {
      {[](Transcript& t) { t.systemLog("a\nb \u00e9"); }, R"("event":"system-log","message":"a\nb é")"},
      {[](Transcript& t) {
         t.request(7, {"POST", "u", {{"A", "1"}, {"A", "2"}}, "\xff\xfe", 60s});
       },
       R"("event":"request","id":7,"method":"POST","url":"u","headers":[["A","1"],["A","2"]],"bodyBase64":"//4=","timeout":60.0)"},
      {[](Transcript& t) { t.response(1, Unexpected(urlErrors::cancelled())); },
       R"("event":"response","id":1,"error":"cancelled")"},
      {[](Transcript& t) { t.response(1, Unexpected(urlErrors::other("the dog ate it"))); },
       R"("event":"response","id":1,"error":"the dog ate it")"},
      {[](Transcript& t) {
         t.region(phone::RegionAction::start, {"r", {{infinity, -infinity}, nan}});
       },
       R"("event":"region","action":"start","identifier":"r","latitude":"Infinity","longitude":"-Infinity","radius":"NaN")"},
      {[](Transcript& t) { t.storeWritten("k", Bytes{"hi"}); },
       R"("event":"store","key":"k","value":{"base64":"aGk="})"},
  };
  for (const auto& row : rows) {
    std::string text;
    Transcript transcript([&](std::string_view line) { text += line; }, {}, [] { return 1'234'567us; });
    row.happens(transcript);
    EXPECT_EQ(text, "{\"at\":1.235," + std::string(row.members) + "}\n");
    transcript.ended(3);
    text.clear();
    row.happens(transcript);
    EXPECT_EQ(text, "") << "behind the end";
  }
}

}  // namespace
}  // namespace orlan::simulate
