#include "orlan/campaigns/EventAttempts.hpp"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "orlan/campaigns/RetryPolicy.hpp"

namespace orlan::reliability {
namespace {

constexpr std::string_view pendingKey = "Orlan_PendingEvents";
constexpr std::string_view failedKey = "Orlan_FailedEvents";

template <class Event>
std::optional<std::vector<Event>> load(const KeyValueStore& store, std::string_view key) {
  const auto bytes = store.bytes(key);
  if (!bytes) return std::nullopt;
  auto events = json::decodeText<std::vector<Event>>(*bytes);
  return events ? std::optional(std::move(*events)) : std::nullopt;
}

}  // namespace

EventAttempts::EventAttempts(RandomSource& random, KeyValueStore& store, StartTimer startTimer)
    : random_(random), store_(store), startTimer_(std::move(startTimer)) {}

void EventAttempts::loadPending() {
  if (auto events = load<PendingEvent>(store_, pendingKey)) pendingEvents_ = std::move(*events);
}

void EventAttempts::loadFailed() {
  auto events = load<FailedEvent>(store_, failedKey);
  if (!events) return;
  failures_ = "[]";
  lastFailures_ = std::move(*events);
}

void EventAttempts::add(PendingEvent event) {
  pendingEvents_.push_back(std::move(event));
  savePending();
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
  lastFailures_.push_back({event.id, event.eventType, event.data, event.timestamp,
                           "Max retry attempts exceeded", event.retryCount});
  finish(event);
  saveFailed();
}

void EventAttempts::finish(const PendingEvent& event) {
  std::erase_if(pendingEvents_, [&](const PendingEvent& pending) { return pending.id == event.id; });
  if (const auto timer = retryTimers_.find(event.id); timer != retryTimers_.end()) {
    due_.erase(timer->second);
    retryTimers_.erase(timer);
  }
  savePending();
}

// A list that holds an event without a form as JSON is not written.

void EventAttempts::savePending() {
  if (auto text = json::encodeText(pendingEvents_)) store_.set(pendingKey, Bytes{std::move(*text)});
}

void EventAttempts::saveFailed() {
  auto event = lastFailures_.begin();
  for (; event != lastFailures_.end(); ++event) {
    const auto text = json::encodeText(*event);
    if (!text) break;
    failures_.pop_back();
    if (failures_.size() > 1) failures_ += ',';
    failures_ += *text + ']';
  }
  lastFailures_.erase(lastFailures_.begin(), event);
  if (lastFailures_.empty()) store_.set(failedKey, Bytes{failures_});
}

}  // namespace orlan::reliability
