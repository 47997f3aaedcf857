#include "phones/linux/EventLoop.hpp"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <utility>

#include "phones/linux/TimedTasks.hpp"

namespace orlan::linuxphone {

struct EventLoop::Pending {
  TimedTasks tasks;
  FileDescriptor wakeUp{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};

  void wake() const {
    const std::uint64_t one = 1;
    // A full counter means that the loop is awake already.
    [[maybe_unused]] const auto written = ::write(wakeUp.get(), &one, sizeof one);
  }
  void calm() const {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto got = ::read(wakeUp.get(), &count, sizeof count);
  }
};

struct EventLoop::Watch {
  int fd;
  std::function<void()> handler;
  bool live = true;
};

EventLoop::EventLoop(const TimeSource& time) : time_(time), pending_(std::make_shared<Pending>()) {}

EventLoop::~EventLoop() {
  runPosted();
}

void EventLoop::runPosted() {
  assertCurrent();
  while (const auto task = pending_->tasks.takePosted()) task->run();
}

bool EventLoop::isCurrent() const {
  return std::this_thread::get_id() == thread_;
}

void EventLoop::async(std::function<void()> task) {
  auto posted = std::make_shared<TimedTasks::Task>();
  posted->run = std::move(task);
  posted->isPosted = true;
  pending_->tasks.add(posted, time_.monotonicNow());
  if (!isCurrent()) pending_->wake();
}

Subscription EventLoop::after(Duration delay, std::function<void()> task) {
  return start(delay, Duration(0), std::move(task));
}

Subscription EventLoop::every(Duration interval, std::function<void()> task) {
  assert(interval > Duration(0));
  const Duration step = std::max(interval, Duration(1));
  return start(step, step, std::move(task));
}

Subscription EventLoop::start(Duration delay, Duration interval, std::function<void()> task) {
  auto timer = std::make_shared<TimedTasks::Task>();
  timer->run = std::move(task);
  timer->interval = interval;
  const Duration now = time_.monotonicNow();
  const Duration longest = Duration::max() - now;
  pending_->tasks.add(timer, now + std::clamp(delay, Duration(0), longest));
  if (!isCurrent()) pending_->wake();
  return Subscription::onCancel([pending = std::weak_ptr<Pending>(pending_), timer] {
    if (const auto held = pending.lock()) held->tasks.cancel(*timer);
  });
}

Subscription EventLoop::watch(int fd, std::function<void()> handler) {
  assertCurrent();
  auto watch = std::make_shared<Watch>(Watch{fd, std::move(handler)});
  watches_.push_back(watch);
  return Subscription::onCancel([watch] { watch->live = false; });
}

void EventLoop::run() {
  assertCurrent();
  while (!stopping_) turn(std::nullopt);
  stopping_ = false;
}

bool EventLoop::runUntil(const std::function<bool()>& isDone, std::chrono::milliseconds limit) {
  assertCurrent();
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!isDone()) {
    const auto left = end - std::chrono::steady_clock::now();
    if (stopping_ || left <= std::chrono::nanoseconds(0)) return false;
    turn(left);
  }
  return true;
}

void EventLoop::stop() {
  stopping_ = true;
  pending_->wake();
}

void EventLoop::turn(std::optional<std::chrono::nanoseconds> longestSleep) {
  sleepAndServe(longestSleep);
  runDue();
}

// What is due now and not what becomes due meanwhile: a task that posts itself anew must not keep the loop
// from its watched files.
void EventLoop::runDue() {
  const Duration now = time_.monotonicNow();
  while (!stopping_) {
    const auto task = pending_->tasks.takeDue(now);
    if (!task) return;
    if (task->live) task->run();
  }
}

std::optional<std::chrono::nanoseconds> EventLoop::sleepUntilNext() const {
  const auto next = pending_->tasks.nextDeadline();
  if (!next) return std::nullopt;
  return time_.realTime(*next - time_.monotonicNow());
}

void EventLoop::sleepAndServe(std::optional<std::chrono::nanoseconds> longest) {
  std::erase_if(watches_, [](const auto& watch) { return !watch->live; });
  const auto watched = watches_;  // handlers may watch and end watching
  std::vector<pollfd> files{{pending_->wakeUp.get(), POLLIN, 0}};
  for (const auto& watch : watched) files.push_back({watch->fd, POLLIN, 0});

  auto sleep = sleepUntilNext();
  if (longest) sleep = std::min(sleep.value_or(*longest), *longest);
  timespec timeout{};
  if (sleep) {
    const auto whole = std::chrono::floor<std::chrono::seconds>(*sleep);
    timeout = {whole.count(), (*sleep - whole).count()};
  }
  if (ppoll(files.data(), files.size(), sleep ? &timeout : nullptr, nullptr) <= 0) return;

  if (files[0].revents != 0) pending_->calm();
  for (std::size_t i = 0; i < watched.size(); ++i) {
    if (files[i + 1].revents != 0 && watched[i]->live) watched[i]->handler();
  }
}

}  // namespace orlan::linuxphone
