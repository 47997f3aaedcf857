#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orlan/platform/Platform.hpp"
#include "phones/common/ApplicationModel.hpp"
#include "phones/common/LocalNotificationCenter.hpp"

namespace orlan {

template <class Phone>
class NotificationContract : public ::testing::Test {
 protected:
  using Lines = std::vector<std::string>;

  /// Tells everything in the order in which it happened.
  struct Story : phone::PhoneObserver {
    void notificationScheduled(const NotificationRequest& r) override {
      lines.push_back("scheduled " + r.identifier);
    }
    void notificationRefused(const NotificationRequest& r, const Error& why) override {
      lines.push_back("refused " + r.identifier + ": " + why.description);
    }
    void notificationPresented(const NotificationRequest& r, std::uint32_t options) override {
      lines.push_back("presented " + r.content.title + " " + std::to_string(options));
    }
    void notificationDelivered(const NotificationRequest& r) override {
      lines.push_back("delivered " + r.content.title);
    }
    void notificationTapped(const NotificationResponse& r) override {
      lines.push_back("tapped " + r.request.identifier + " " + r.actionIdentifier);
    }
    Lines lines;
  };
  struct Delegate : NotificationCenterDelegate {
    explicit Delegate(Lines& to) : lines(to) {}
    void willPresent(const NotificationRequest& r, std::function<void(std::uint32_t)> completion) override {
      lines.push_back("asked " + r.content.title);
      if (answerLater) {
        later = std::move(completion);
      } else {
        completion(18);
        completion(4);  // once is enough
      }
    }
    void didReceive(const NotificationResponse& r, std::function<void()> completion) override {
      lines.push_back("received " + r.request.identifier);
      completion();
    }
    Lines& lines;
    bool answerLater = false;
    std::function<void(std::uint32_t)> later;
  };

  void SetUp() override { phone.observe(story); }

  static NotificationRequest request(const std::string& identifier, const std::string& title,
                                     int milliseconds) {
    NotificationRequest made;
    made.identifier = identifier;
    made.content.title = title;
    made.delay = std::chrono::milliseconds(milliseconds);
    return made;
  }
  void add(NotificationRequest request) {
    center.add(std::move(request), [this](Result<void> result) {
      story.lines.push_back(result ? "done" : "failed: " + result.error().description);
    });
  }
  [[nodiscard]] Lines told() { return std::exchange(story.lines, {}); }

  Phone phone;
  Story story;
  NotificationCenter& center = phone.platform().notifications;
  std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>(story.lines);
};
TYPED_TEST_SUITE_P(NotificationContract);

TYPED_TEST_P(NotificationContract, SchedulingIsAnsweredOnTheNextTurn) {
  this->add(this->request("a", "A", 3'600'000));
  EXPECT_EQ(this->told(), (std::vector<std::string>{"scheduled a"}));
  this->phone.settle();
  EXPECT_EQ(this->told(), (std::vector<std::string>{"done"}));
  this->phone.notifications().setRefusal(Error{"Test", 1, "the disk is full"});
  this->add(this->request("b", "B", 0));
  this->phone.settle();
  EXPECT_EQ(this->told(),
            (std::vector<std::string>{"refused b: the disk is full", "failed: the disk is full"}));
}

TYPED_TEST_P(NotificationContract, WhatIsDueIsPresentedInFrontAndDeliveredBehind) {
  this->center.setDelegate(this->delegate);
  this->add(this->request("a", "in front", 1));
  ASSERT_TRUE(this->phone.runUntil([&] { return this->story.lines.size() == 4; }));
  EXPECT_EQ(this->told(),
            (std::vector<std::string>{"scheduled a", "done", "asked in front", "presented in front 18"}));
  for (const auto state : {ApplicationState::inactive, ApplicationState::background}) {
    this->phone.application().moveTo(state);
    this->add(this->request("b", "behind", 1));
    ASSERT_TRUE(this->phone.runUntil([&] { return this->story.lines.size() == 3; }));
    EXPECT_EQ(this->told(), (std::vector<std::string>{"scheduled b", "done", "delivered behind"}));
  }
}

TYPED_TEST_P(NotificationContract, AKnownIdentifierReplaces) {
  this->phone.application().moveTo(ApplicationState::background);
  this->add(this->request("same", "old", 5));
  this->add(this->request("same", "new", 10));
  this->add(this->request("other", "other", 1));
  this->phone.pass(std::chrono::milliseconds(20));
  EXPECT_EQ(this->told(),
            (std::vector<std::string>{"scheduled same", "scheduled same", "scheduled other", "done", "done",
                                      "done", "delivered other", "delivered new"}));
}

TYPED_TEST_P(NotificationContract, TheDelegateIsHeldWeaklyAndTheLastOneCounts) {
  const auto other = std::make_shared<typename TestFixture::Delegate>(this->story.lines);
  this->center.setDelegate(other);
  this->center.setDelegate(this->delegate);
  EXPECT_EQ(this->center.delegate(), this->delegate);
  this->delegate.reset();
  EXPECT_EQ(this->center.delegate(), nullptr);
  this->phone.notifications().present(this->request("a", "unheard", 0));
  this->phone.notifications().tap({this->request("b", "", 0)});
  EXPECT_EQ(this->told(), (std::vector<std::string>{"delivered unheard", "tapped b default"}));
}

TYPED_TEST_P(NotificationContract, WhatArrivesFromOutsideReachesTheDelegate) {
  this->center.setDelegate(this->delegate);
  this->delegate->answerLater = true;
  this->phone.notifications().present(this->request("a", "outside", 0));
  EXPECT_EQ(this->told(), (std::vector<std::string>{"asked outside"}));
  this->delegate->later(19);
  this->phone.notifications().tap({this->request("a", "outside", 0), "open"});
  EXPECT_EQ(this->told(), (std::vector<std::string>{"presented outside 19", "tapped a open", "received a"}));
}

TYPED_TEST_P(NotificationContract, ThePersonIsAskedOnce) {
  std::vector<std::string> answers;
  const auto ask = [&] {
    this->center.requestAuthorization(
        7, [&](Result<bool> granted) { answers.push_back(*granted ? "yes" : "no"); });
    this->center.authorizationStatus(
        [&](NotificationAuthorization status) { answers.push_back(std::to_string(rawValue(status))); });
    EXPECT_TRUE(answers.empty());
    EXPECT_TRUE(this->phone.runUntil([&] { return answers.size() == 2; }));
    return std::exchange(answers, {});
  };
  EXPECT_EQ(ask(), (std::vector<std::string>{"yes", "2"}));
  this->phone.notifications().setAuthorization(NotificationAuthorization::denied);
  EXPECT_EQ(ask(), (std::vector<std::string>{"no", "1"}));
  this->phone.notifications().setAuthorization(NotificationAuthorization::provisional);
  EXPECT_EQ(ask(), (std::vector<std::string>{"yes", "3"}));
}

REGISTER_TYPED_TEST_SUITE_P(NotificationContract, SchedulingIsAnsweredOnTheNextTurn,
                            WhatIsDueIsPresentedInFrontAndDeliveredBehind, AKnownIdentifierReplaces,
                            TheDelegateIsHeldWeaklyAndTheLastOneCounts,
                            WhatArrivesFromOutsideReachesTheDelegate, ThePersonIsAskedOnce);

}  // namespace orlan
