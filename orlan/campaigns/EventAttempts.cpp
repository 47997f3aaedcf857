#include "orlan/campaigns/EventAttempts.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "orlan/campaigns/RetryPolicy.hpp"

namespace orlan::reliability {
namespace {

constexpr std::string_view pendingKey = "Orlan_PendingEvents";
constexpr std::string_view failedKey = "Orlan_FailedEvents";

template <class Event>
void load(const KeyValueStore& store, std::string_view key, std::vector<Event>& events) {
  const auto bytes = store.bytes(key);
  if (!bytes) return;
  if (auto stored = json::decodeText<std::vector<Event>>(*bytes)) events = std::move(*stored);
}

/// Events that have no form as JSON change nothing in the store.
template <class Event>
void save(KeyValueStore& store, std::string_view key, const std::vector<Event>& events) {
  if (auto text = json::encodeText(events)) store.set(key, Bytes{std::move(*text)});
}

}  // namespace

EventAttempts::EventAttempts(RandomSource& random, KeyValueStore& store, StartTimer startTimer)
    : random_(random), store_(store), startTimer_(std::move(startTimer)) {}

void EventAttempts::loadPending() {
  load(store_, pendingKey, pendingEvents_);
}

void EventAttempts::loadFailed() {
  load(store_, failedKey, failedEvents_);
}

void EventAttempts::add(PendingEvent event) {
  pendingEvents_.push_back(std::move(event));
  save(store_, pendingKey, pendingEvents_);
  process();
}

void EventAttempts::process() {
  sortForProcessing(pendingEvents_);
  for (const int pass : {0, 1, 2}) {
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
  save(store_, failedKey, failedEvents_);
}

void EventAttempts::finish(const PendingEvent& event) {
  std::erase_if(pendingEvents_, [&](const PendingEvent& pending) { return pending.id == event.id; });
  if (const auto timer = retryTimers_.find(event.id); timer != retryTimers_.end()) {
    due_.erase(timer->second);
    retryTimers_.erase(timer);
  }
  save(store_, pendingKey, pendingEvents_);
}

}  // namespace orlan::reliability
