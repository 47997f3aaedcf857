#include <gmock/gmock.h>

#include "orlan/sdk/Runtime.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using test::SimulatedHost;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(Runtime, NothingComesToLifeBeforeItsFirstUse) {
  SimulatedHost host;
  OrlanServices& services = host.services();
  host.world.runFor(1h);
  EXPECT_THAT(host.seen.lines, IsEmpty());
  (void)*services.geofence;
  EXPECT_EQ(services.plugin.ifBuilt(), nullptr);
  EXPECT_EQ(services.api.ifBuilt(), nullptr);
  EXPECT_EQ(services.reliability.ifBuilt(), nullptr);
  EXPECT_EQ(services.foregroundMonitor.ifBuilt(), nullptr);
  EXPECT_EQ(services.locationPermission.ifBuilt(), nullptr);
}

TEST(Runtime, TheInnermostScopeIsCurrent) {
  SimulatedHost outer;
  EXPECT_EQ(&OrlanPlugin::shared(), &outer.plugin());
  {
    SimulatedHost inner;
    EXPECT_EQ(inner.phone.files().content("orlan-sdk.log"), std::nullopt);
    EXPECT_EQ(&Logger::shared(), &inner.services().logger);
    EXPECT_EQ(inner.phone.files().content("orlan-sdk.log"), "") << "the first use opens the log";
    EXPECT_EQ(&OrlanPlugin::shared(), &inner.plugin());
    EXPECT_EQ(&GeofenceService::shared(), &*inner.services().geofence);
  }
  EXPECT_EQ(&OrlanPlugin::shared(), &outer.plugin());
}

TEST(Runtime, TwoHostsInOneProcessDoNotMeet) {
  SimulatedHost anna;
  SimulatedHost bela;
  anna.start("ANNA");
  bela.start("BELA");
  EXPECT_EQ(anna.plugin().storedApiKey(), "ANNA");
  EXPECT_EQ(anna.phone.store().string("Orlan.APIKey"), "ANNA");
  EXPECT_EQ(bela.phone.store().string("Orlan.APIKey"), "BELA");
}

TEST(Runtime, WhatIsPendingDiesWithIt) {
  SimulatedHost host;
  host.plugin().start("KEY", Config::Environment::staging, {}, host.delegate);
  host.quit();  // a request is on its way, and turns of the main loop are posted
  host.seen.lines.clear();
  host.world.runFor(1h);
  host.phone.moveTo({51.5, -0.12});
  host.phone.application().moveTo(ApplicationState::background);
  EXPECT_THAT(host.seen.lines, IsEmpty());
}

TEST(Runtime, AProcessHasOnePhoneAtATime) {
  sim::World world;
  sim::SimulatedPhone first(world);
  sim::SimulatedPhone second(world);
  ASSERT_TRUE(Runtime::install(first.platform()));
  const auto refused = Runtime::install(second.platform());
  EXPECT_FALSE(refused);
  EXPECT_THAT(refused.error().description, HasSubstr("a phone is installed already"));
  EXPECT_EQ(OrlanPlugin::shared().storedApiKey(), "");
  Runtime::uninstall();
  Runtime::uninstall();
  EXPECT_TRUE(Runtime::install(second.platform()));
  Runtime::uninstall();
}

// In a process of its own, because that ends.
TEST(RuntimeDeathTest, WithoutAPhoneTheProcessSaysWhatToCall) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH((void)OrlanPlugin::shared(), "Call orlan::Runtime::install before the first use");
}

}  // namespace
}  // namespace orlan
