#include "orlan/campaigns/EventAttempts.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "orlan/campaigns/RetryPolicy.hpp"

namespace orlan::reliability {

EventAttempts::EventAttempts(RandomSource& random, KeyValueStore& store, StartTimer startTimer)
    : random_(random), store_(store), startTimer_(std::move(startTimer)) {}

void EventAttempts::loadPending() {
  if (auto stored = store_.pending()) pendingEvents_ = std::move(*stored);
}

void EventAttempts::loadFailed() {
  if (auto stored = store_.failed()) failedEvents_ = std::move(*stored);
}

void EventAttempts::add(PendingEvent event) {
  pendingEvents_.push_back(std::move(event));
  store_.savePending(pendingEvents_);
  process();
}

void EventAttempts::process() {
  sortForProcessing(pendingEvents_);
  for (int pass = 0; pass < 3; ++pass) {
    // A copy: attempts remove events from the list.
    std::vector<PendingEvent> events;
    std::copy_if(pendingEvents_.begin(), pendingEvents_.end(), std::back_inserter(events),
                 [&](const PendingEvent& event) { return passOf(event.priority) == pass; });
    for (const PendingEvent& event : events) attempt(event);
  }
}

void EventAttempts::retry(Timer timer, const PendingEvent& event) {
  if (due_.erase(timer) > 0) attempt(event);
}

void EventAttempts::attempt(const PendingEvent& event) {
  const bool succeeds = (random_.next() & 1) != 0;
  if (succeeds) return finish(event);
  if (const auto retry = afterFailure(event.retryCount)) {
    PendingEvent again = event;
    again.retryCount = retry->retryCount;
    return tryAgain(again, retry->delay);
  }
  giveUp(event);
}

void EventAttempts::tryAgain(const PendingEvent& event, Duration delay) {
  const Timer timer = ++lastTimer_;
  due_.insert(timer);
  retryTimers_[event.id] = timer;
  startTimer_(timer, delay, event);
}

void EventAttempts::giveUp(const PendingEvent& event) {
  failedEvents_.push_back({event.id, event.eventType, event.data, event.timestamp,
                           "Max retry attempts exceeded", event.retryCount});
  finish(event);
  store_.saveFailed(failedEvents_);
}

void EventAttempts::finish(const PendingEvent& event) {
  std::erase_if(pendingEvents_, [&](const PendingEvent& pending) { return pending.id == event.id; });
  if (const auto timer = retryTimers_.find(event.id); timer != retryTimers_.end()) {
    due_.erase(timer->second);
    retryTimers_.erase(timer);
  }
  store_.savePending(pendingEvents_);
}

}  // namespace orlan::reliability
