#include <gtest/gtest.h>

#include <string>

#include "phones/common/ApplicationModel.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

TEST(ApplicationModel, RaisesWhatLiesOnTheWay) {
  using enum ApplicationState;
  constexpr const char* names[] = {"didEnterBackground", "willEnterForeground", "didBecomeActive",
                                   "willResignActive"};
  sim::World world;
  sim::SimulatedPhone phone{world};
  phone::ApplicationModel& application = phone.application();
  std::string heard;
  SubscriptionBag bag;
  for (const auto signal : {ApplicationSignal::didEnterBackground, ApplicationSignal::willEnterForeground,
                            ApplicationSignal::didBecomeActive, ApplicationSignal::willResignActive}) {
    bag.add(application.observe(signal, [&, signal] {
      heard += names[static_cast<int>(signal)] +
               ("/" + std::to_string(static_cast<int>(application.state()))) + " ";
    }));
  }
  const struct {
    ApplicationState from, to;
    const char* signals;  // each with the state that its handlers see: 0 active, 1 inactive, 2 background
  } rows[] = {
      {active, active, ""},
      {active, inactive, "willResignActive/1 "},
      {active, background, "willResignActive/1 didEnterBackground/2 "},
      {inactive, active, "didBecomeActive/0 "},
      {inactive, background, "didEnterBackground/2 "},
      {background, active, "willEnterForeground/2 didBecomeActive/0 "},
      {background, inactive, "willEnterForeground/2 "},
      {background, background, ""},
  };
  for (const auto& row : rows) {
    application.moveTo(row.from);
    heard.clear();
    application.moveTo(row.to);
    EXPECT_EQ(heard, row.signals) << static_cast<int>(row.from) << " to " << static_cast<int>(row.to);
  }
  application.raise(ApplicationSignal::didBecomeActive);  // alone: the state stays
  EXPECT_EQ(heard, "didBecomeActive/2 ");
}

}  // namespace
}  // namespace orlan
