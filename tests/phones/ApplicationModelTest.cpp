#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "phones/common/ApplicationModel.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

constexpr const char* signalNames[] = {"didEnterBackground", "willEnterForeground", "didBecomeActive",
                                       "willResignActive"};

struct ApplicationModelTest : ::testing::Test {
  /// Writes down each signal with the state that its handlers saw.
  Subscription note(ApplicationSignal signal, const std::string& who = "") {
    return application.observe(signal, [this, signal, who] {
      heard += who + signalNames[static_cast<int>(signal)] + "/" +
               std::to_string(static_cast<int>(application.state())) + " ";
    });
  }

  sim::World world;
  sim::SimulatedPhone phone{world};
  phone::ApplicationModel& application = phone.application();
  std::string heard;
};

TEST_F(ApplicationModelTest, RaisesWhatLiesOnTheWay) {
  using enum ApplicationState;
  SubscriptionBag bag;
  for (const auto signal : {ApplicationSignal::didEnterBackground, ApplicationSignal::willEnterForeground,
                            ApplicationSignal::didBecomeActive, ApplicationSignal::willResignActive}) {
    bag.add(note(signal));
  }
  const struct {
    ApplicationState from, to;
    const char* signals;  // each with the state then: 0 active, 1 inactive, 2 background
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
    EXPECT_EQ(application.state(), row.to);
  }
}

TEST_F(ApplicationModelTest, HandlersRunInOrderUntilTheirHandleEnds) {
  const auto signal = ApplicationSignal::didBecomeActive;
  auto first = note(signal, "1:");
  const auto second = note(signal, "2:");
  Subscription itself;
  itself = application.observe(signal, [&] { itself.cancel(), first.cancel(), heard += "last "; });
  application.raise(signal);
  application.raise(signal);  // alone: the state stays
  EXPECT_EQ(heard, "1:didBecomeActive/0 2:didBecomeActive/0 last 2:didBecomeActive/0 ");
}

}  // namespace
}  // namespace orlan
