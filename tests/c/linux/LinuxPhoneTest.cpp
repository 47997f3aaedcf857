// The Linux phone as a host in C has it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "phones/c/linux.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct LinuxPhoneInC : ::testing::Test {
  void SetUp() override {
    std::string pattern = ::testing::TempDir() + "orlan-c-XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    home = pattern;
    orlan_linux_options options{};
    options.struct_size = sizeof options;
    options.home = orlan_str(home.c_str());
    options.silent = true;
    options.time_scale = 1000;
    options.context = this;
    options.show = [](void* self, const orlan_notification* notification) {
      auto& test = *static_cast<LinuxPhoneInC*>(self);
      test.heard.push_back("shown " + std::string(notification->title.data));
      EXPECT_EQ(orlan_linux_run(test.phone), ORLAN_BUSY);
      EXPECT_EQ(orlan_linux_tap(test.phone, notification), ORLAN_OK) << orlan_last_problem();
    };
    ASSERT_EQ(orlan_linux_phone_new(&options, &phone), ORLAN_OK) << orlan_last_problem();
    ASSERT_EQ(orlan_install(phone, nullptr), ORLAN_OK) << orlan_last_problem();
  }
  void TearDown() override {
    orlan_uninstall();
    EXPECT_EQ(orlan_phone_free(phone), ORLAN_OK) << orlan_last_problem();
    std::filesystem::remove_all(home);
  }

  std::string home;
  orlan_phone* phone = nullptr;
  std::vector<std::string> heard;
};

TEST_F(LinuxPhoneInC, ANotificationIsShownTappedAndHandled) {
  orlan_subscription* details = nullptr;
  ASSERT_EQ(orlan_subscribe_notifications(
                [](void* self, const orlan_notification_details* record) {
                  auto& test = *static_cast<LinuxPhoneInC*>(self);
                  test.heard.push_back("handled " + std::string(record->headline.data));
                  orlan_linux_stop(test.phone);
                },
                this, &details),
            ORLAN_OK);
  ASSERT_EQ(orlan_handle_notifications(), ORLAN_OK);
  ASSERT_EQ(orlan_linux_move_to(phone, ORLAN_STATE_INACTIVE), ORLAN_OK);  // it waits to be tapped
  ASSERT_EQ(orlan_send_test_notification(), ORLAN_OK);
  ASSERT_EQ(orlan_linux_run(phone), ORLAN_OK);
  ASSERT_EQ(heard.size(), 2U);
  EXPECT_THAT(heard[0], HasSubstr("shown "));
  EXPECT_EQ(heard[1], "handled " + heard[0].substr(6));
  orlan_subscription_free(details);
}

TEST_F(LinuxPhoneInC, ATrackIsWalkedToItsEnd) {
  const std::string path = home + "/walk.gpx";
  std::ofstream(path) << R"(<gpx version="1.1"><trk><trkseg>
    <trkpt lat="51.5" lon="-0.12"/><trkpt lat="51.6" lon="-0.12"/></trkseg></trk></gpx>)";
  EXPECT_EQ(orlan_linux_play(phone, orlan_str((home + "/none.gpx").c_str()), nullptr, nullptr),
            ORLAN_INVALID_ARGUMENT);
  EXPECT_THAT(orlan_last_problem(), HasSubstr("none.gpx"));
  ASSERT_EQ(orlan_linux_play(
                phone, orlan_str(path.c_str()),
                [](void* self) {
                  auto& test = *static_cast<LinuxPhoneInC*>(self);
                  test.heard.emplace_back("finished");
                  orlan_linux_stop(test.phone);
                },
                this),
            ORLAN_OK);
  ASSERT_EQ(orlan_linux_run(phone), ORLAN_OK);
  EXPECT_THAT(heard, ElementsAre("finished"));
}

TEST_F(LinuxPhoneInC, WhatIsPostedMayUninstallButNotFreeThePhoneThatRunsIt) {
  EXPECT_EQ(orlan_linux_move_to(phone, 7), ORLAN_INVALID_ARGUMENT);
  EXPECT_EQ(orlan_phone_move_to(phone, ORLAN_STATE_BACKGROUND), ORLAN_INVALID_ARGUMENT);
  EXPECT_THAT(orlan_last_problem(), HasSubstr("another kind of phone"));
  const auto task = [](void* self) {
    auto& test = *static_cast<LinuxPhoneInC*>(self);
    EXPECT_EQ(orlan_uninstall(), ORLAN_OK);
    EXPECT_EQ(orlan_phone_free(test.phone), ORLAN_BUSY);
    orlan_linux_stop(test.phone);
  };
  ASSERT_EQ(orlan_linux_post(phone, 0, task, this), ORLAN_OK);
  ASSERT_EQ(orlan_linux_run(phone), ORLAN_OK);
}

}  // namespace
