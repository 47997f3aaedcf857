// Any JSON as the user info of a tapped notification, anything else as the text of its questions: handled
// once and published once.
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Input.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "orlan/surveys/SurveyFields.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

struct House {
  House() { phone.http().answer("POST", "/api/activities", {sim::HttpAnswer::reply(200, "ok")}); }

  sim::World world;
  sim::SimulatedPhone phone{world};
  Runtime runtime{phone.platform()};
};

NotificationResponse tapped(std::string_view bytes) {
  NotificationResponse response;
  auto& content = response.request.content;
  content.title = content.body = response.request.identifier = bytes.substr(0, 64);
  auto parsed = json::parse(bytes);
  const auto* info = parsed ? parsed->object() : nullptr;
  content.userInfo = info ? *info : json::Object{{"questions", std::string(bytes)}};
  return response;
}

void check(std::string_view bytes) {
  House house;  // a fresh one: what an earlier input left behind must not count
  OrlanServices& services = house.runtime.services();
  NotificationManager& manager = *services.notificationManager;
  int published = 0;
  const auto hearing = manager.publisher().subscribe([&](const OrlanNotificationDetails&) { ++published; });
  bool completed = false;
  const auto response = tapped(bytes);
  services.notificationPermission->didReceive(response, [&] { completed = true; });
  house.world.settle();

  fuzz::require(completed && published == 1, "handled and published once");
  const auto latest = manager.latest();
  fuzz::require(latest && latest->headline() == response.request.content.title, "the record is the latest");
  if (!latest->questions()) return;
  const auto again =
      json::decodeText<std::vector<SurveyQuestion>>(json::encodeText(*latest->questions()).value_or(""));
  fuzz::require(again && *again == *latest->questions(), "questions survive their JSON form");
}

}  // namespace
}  // namespace orlan

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orlan::check({reinterpret_cast<const char*>(data), size});
  return 0;
}
