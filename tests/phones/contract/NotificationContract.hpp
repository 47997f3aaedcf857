#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "orlan/platform/Platform.hpp"
#include "phones/common/ApplicationModel.hpp"
#include "phones/common/LocalNotificationCenter.hpp"

namespace orlan {

template <class Phone>
class NotificationContract : public ::testing::Test {
 protected:
  /// Tells everything in the order in which it happened.
  struct Story : phone::PhoneObserver {
    void notificationScheduled(const NotificationRequest& r) override { tell("scheduled " + r.identifier); }
    void notificationRefused(const NotificationRequest& r, const Error&) override {
      tell("refused " + r.identifier);
    }
    void notificationPresented(const NotificationRequest& r, std::uint32_t options) override {
      tell("presented " + r.content.title + " " + std::to_string(options));
    }
    void notificationDelivered(const NotificationRequest& r) override {
      tell("delivered " + r.content.title);
    }
    void notificationTapped(const NotificationResponse& r) override {
      tell("tapped " + r.request.identifier + " " + r.actionIdentifier);
    }
    void tell(const std::string& what) { text += (text.empty() ? "" : ", ") + what; }
    std::string text;
  };
  struct Delegate : NotificationCenterDelegate {
    explicit Delegate(Story& to) : story(to) {}
    void willPresent(const NotificationRequest& r, std::function<void(std::uint32_t)> completion) override {
      story.tell("asked " + r.content.title);
      answer = std::move(completion);
    }
    void didReceive(const NotificationResponse& r, std::function<void()> completion) override {
      story.tell("received " + r.request.identifier);
      completion();
    }
    Story& story;
    std::function<void(std::uint32_t)> answer;
  };

  void SetUp() override { phone.observe(story); }

  static NotificationRequest request(const std::string& identifier, const std::string& title) {
    NotificationRequest made;
    made.identifier = identifier;
    made.content.title = title;
    return made;
  }
  void add(const std::string& identifier, const std::string& title, Duration delay) {
    NotificationRequest made = request(identifier, title);
    made.delay = delay;
    center.add(std::move(made), [this](Result<void> result) {
      story.tell(result ? "done" : "failed: " + result.error().description);
    });
  }
  [[nodiscard]] std::string told() { return std::exchange(story.text, {}); }
  void runUntilTold(const std::string& last) {
    EXPECT_TRUE(phone.runUntil([&] { return story.text.ends_with(last); })) << story.text;
  }

  Phone phone;
  Story story;
  NotificationCenter& center = phone.platform().notifications;
  std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>(story);
};
TYPED_TEST_SUITE_P(NotificationContract);

TYPED_TEST_P(NotificationContract, SchedulingIsAnsweredOnTheNextTurn) {
  this->add("a", "A", std::chrono::hours(1));
  EXPECT_EQ(this->told(), "scheduled a");
  this->phone.settle();
  EXPECT_EQ(this->told(), "done");
  this->phone.notifications().setRefusal(Error{"Test", 1, "the disk is full"});
  this->add("b", "B", Duration(0));
  this->phone.settle();
  EXPECT_EQ(this->told(), "refused b, failed: the disk is full");
}

TYPED_TEST_P(NotificationContract, WhatIsDueIsPresentedInFrontAndDeliveredBehind) {
  this->center.setDelegate(this->delegate);
  this->add("a", "in front", std::chrono::milliseconds(1));
  this->runUntilTold("asked in front");
  for (const std::uint32_t options : {18, 4}) this->delegate->answer(options);  // once is enough
  EXPECT_EQ(this->told(), "scheduled a, done, asked in front, presented in front 18");
  for (const auto state : {ApplicationState::inactive, ApplicationState::background}) {
    this->phone.application().moveTo(state);
    this->add("b", "behind", std::chrono::milliseconds(1));
    this->runUntilTold("delivered behind");
    EXPECT_EQ(this->told(), "scheduled b, done, delivered behind");
  }
}

TYPED_TEST_P(NotificationContract, AKnownIdentifierReplaces) {
  using std::chrono::milliseconds;
  this->phone.application().moveTo(ApplicationState::background);
  this->add("same", "old", milliseconds(5));
  this->add("same", "new", milliseconds(10));
  this->add("other", "other", milliseconds(1));
  this->phone.pass(milliseconds(20));
  EXPECT_EQ(
      this->told(),
      "scheduled same, scheduled same, scheduled other, done, done, done, delivered other, delivered new");
}

TYPED_TEST_P(NotificationContract, WhatArrivesFromOutsideIsTheLastDelegatesWhileItLives) {
  const auto replaced = std::make_shared<typename TestFixture::Delegate>(this->story);
  this->center.setDelegate(replaced);
  this->center.setDelegate(this->delegate);
  EXPECT_EQ(this->center.delegate(), this->delegate);
  const NotificationRequest request = this->request("a", "outside");
  for (const char* expected :
       {"asked outside, tapped a open, received a", "delivered outside, tapped a open"}) {
    this->phone.notifications().present(request);
    this->phone.notifications().tap({request, "open"});
    EXPECT_EQ(this->told(), expected);
    this->delegate.reset();
  }
  EXPECT_EQ(this->center.delegate(), nullptr);
}

TYPED_TEST_P(NotificationContract, ThePersonIsAskedOnce) {
  const auto ask = [&] {
    this->center.requestAuthorization(
        7, [&](Result<bool> granted) { this->story.tell(*granted ? "yes" : "no"); });
    this->center.authorizationStatus(
        [&](NotificationAuthorization status) { this->story.tell(std::to_string(rawValue(status))); });
    EXPECT_EQ(this->told(), "");
    this->phone.settle();
    return this->told();
  };
  EXPECT_EQ(ask(), "yes, 2");
  this->phone.notifications().setAuthorization(NotificationAuthorization::denied);
  EXPECT_EQ(ask(), "no, 1");
  this->phone.notifications().setAuthorization(NotificationAuthorization::provisional);
  EXPECT_EQ(ask(), "yes, 3");
}

REGISTER_TYPED_TEST_SUITE_P(NotificationContract, SchedulingIsAnsweredOnTheNextTurn,
                            WhatIsDueIsPresentedInFrontAndDeliveredBehind, AKnownIdentifierReplaces,
                            WhatArrivesFromOutsideIsTheLastDelegatesWhileItLives, ThePersonIsAskedOnce);

}  // namespace orlan
