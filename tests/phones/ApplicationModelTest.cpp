#include <gtest/gtest.h>

#include <string>

#include "phones/common/ApplicationModel.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

TEST(ApplicationModel, RaisesWhatLiesOnTheWay) {
  using enum ApplicationState;
  using Signal = ApplicationSignal;
  sim::World world;
  sim::SimulatedPhone phone{world};
  phone::ApplicationModel& application = phone.application();
  std::string heard;
  SubscriptionBag bag;
  const auto note = [&](Signal signal, const std::string& name) {
    bag.add(application.observe(signal, [&heard, &application, name] {
      heard += name + std::to_string(static_cast<int>(application.state())) + " ";
    }));
  };
  note(Signal::didEnterBackground, "background/");
  note(Signal::willEnterForeground, "foreground/");
  note(Signal::didBecomeActive, "active/");
  note(Signal::willResignActive, "resign/");
  const struct {
    ApplicationState from, to;
    const char* signals;  // each with the state that its handlers see: 0 active, 1 inactive, 2 background
  } rows[] = {
      {active, active, ""},
      {active, inactive, "resign/1 "},
      {active, background, "resign/1 background/2 "},
      {inactive, active, "active/0 "},
      {inactive, background, "background/2 "},
      {background, active, "foreground/2 active/0 "},
      {background, inactive, "foreground/2 "},
      {background, background, ""},
  };
  for (const auto& row : rows) {
    application.moveTo(row.from);
    heard.clear();
    application.moveTo(row.to);
    EXPECT_EQ(heard, row.signals) << static_cast<int>(row.from) << " to " << static_cast<int>(row.to);
  }
  application.raise(Signal::didBecomeActive);  // alone: the state stays
  EXPECT_EQ(heard, "active/2 ");
}

}  // namespace
}  // namespace orlan
