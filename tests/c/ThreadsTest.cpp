// A host with threads: its network answers from threads of its own, and queues are the library's.
#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

#include "orlan/c/Phone.hpp"
#include "orlan/c/orlan.h"

namespace {

using Counter = std::atomic<int>;

constexpr auto count = [](void* counter, auto...) { ++*static_cast<Counter*>(counter); };

/// A main loop of the thread that made it; what is late is not its concern.
class ThreadedPhone {
 public:
  ThreadedPhone() {
    const orlan_loop_functions loop{sizeof loop, this, [](void* self, orlan_id task) { of(self).post(task); },
                                    [](void* self, std::int64_t delay, orlan_id task) {
                                      if (delay <= 0) of(self).post(task);
                                    }};
    orlan_http_functions http{sizeof http, this};
    http.send = [](void* self, orlan_id call, const orlan_http_request* request) {
      of(self).answer(call, std::string(request->url.data).find("registerd") != std::string::npos);
    };
    orlan_phone_parts parts{sizeof parts, &loop};
    parts.http = &http;
    EXPECT_EQ(orlan_phone_new(&parts, &handle), ORLAN_OK) << orlan_last_problem();
  }

  /// At most ten seconds.
  bool runUntil(const Counter& counter, int value) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (counter < value) {
      std::unique_lock lock(mutex_);
      if (!changed_.wait_until(lock, limit, [&] { return !tasks_.empty(); })) return false;
      const orlan_id task = tasks_.front();
      tasks_.pop_front();
      lock.unlock();
      orlan_phone_run(handle, task);
    }
    return true;
  }

  void joinNetwork() {
    for (auto& each : network_) each.join();
  }

  orlan_phone* handle = nullptr;

 private:
  static ThreadedPhone& of(void* self) { return *static_cast<ThreadedPhone*>(self); }
  void post(orlan_id task) {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(task);
    changed_.notify_one();
  }
  void answer(orlan_id call, bool registers) {
    const std::lock_guard lock(mutex_);
    network_.emplace_back([phone = handle, call, registers] {
      orlan_http_reply reply{sizeof reply, 200};
      reply.body = orlan_str(registers ? R"({"data":{"device_id":"D1","orlan_id":"O1"}})"
                                       : R"({"configuration":{"privacyText":"P"}})");
      orlan_phone_http_reply(phone, call, &reply);
    });
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<orlan_id> tasks_;
  std::vector<std::thread> network_;
};

TEST(ThreadedHost, AnswersFromAnyThreadReachTheMainThreadAndLateOnesNobody) {
  ThreadedPhone phone;
  ASSERT_EQ(orlan_install(phone.handle, nullptr), ORLAN_OK);
  Counter started = 0;
  Counter answers = 0;
  const orlan_plugin_delegate delegate{sizeof delegate, &started, count, nullptr};
  ASSERT_EQ(orlan_start_with_api_key(orlan_str("KEY"), ORLAN_STAGING, nullptr, 0, &delegate), ORLAN_OK);
  ASSERT_TRUE(phone.runUntil(started, 1));
  std::thread logging([] {
    for (int i = 0; i < 100; ++i) orlan_log(ORLAN_LOG_INFO, orlan_str("from elsewhere"));
  });
  for (int i = 0; i < 20; ++i) ASSERT_EQ(orlan_refresh_privacy_text(count, &answers), ORLAN_OK);
  EXPECT_TRUE(phone.runUntil(answers, 20));
  logging.join();

  // The library and its phone end while answers are on their way.
  for (int i = 0; i < 20; ++i) ASSERT_EQ(orlan_refresh_privacy_text(count, &answers), ORLAN_OK);
  EXPECT_EQ(orlan_uninstall(), ORLAN_OK);
  EXPECT_EQ(answers, 40) << "each completion once, with or without its answer";
  EXPECT_EQ(orlan_phone_free(phone.handle), ORLAN_OK);
  phone.joinNetwork();
}

TEST(ThreadedHost, FreeingAPhoneWaitsForThoseInside) {
  struct Host {
    orlan_phone* handle = nullptr;
    orlan_id call = 0;
    std::atomic<bool> inside = false;
    std::thread::id goneOn;
  } host;
  const orlan_loop_functions loop{sizeof loop, nullptr, [](auto...) {}, [](auto...) {}};
  const auto stayUntilItIsFreed = [](void* context, orlan_id, orlan_id) {
    auto& self = *static_cast<Host*>(context);
    self.inside = true;
    while (orlan_phone_answer(self.handle, 1, 0, nullptr) == ORLAN_UNKNOWN) std::this_thread::yield();
  };
  const orlan_queue_functions queues{
      sizeof queues, &host, stayUntilItIsFreed, nullptr,
      [](void* context, orlan_id) { static_cast<Host*>(context)->goneOn = std::this_thread::get_id(); }};
  const orlan_http_functions http{
      sizeof http, &host,
      [](void* self, orlan_id call, const orlan_http_request*) { static_cast<Host*>(self)->call = call; }};
  orlan_phone_parts parts{sizeof parts, &loop, &queues};
  parts.http = &http;
  ASSERT_EQ(orlan_phone_new(&parts, &host.handle), ORLAN_OK);
  const auto request =
      orlan::c::phoneOf(host.handle)->platform().http.send({"GET", "https://api.example/"}, [](const auto&) {
      });
  std::thread network(
      [&] { EXPECT_EQ(orlan_phone_http_failed(host.handle, host.call, 0, orlan_str("late")), ORLAN_OK); });
  while (!host.inside) std::this_thread::yield();
  EXPECT_EQ(orlan_phone_free(host.handle), ORLAN_OK);
  EXPECT_EQ(host.goneOn, std::this_thread::get_id());
  network.join();
}

}  // namespace
