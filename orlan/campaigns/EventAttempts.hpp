#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "orlan/campaigns/ReliabilityEvents.hpp"
#include "orlan/platform/KeyValueStore.hpp"
#include "orlan/platform/RandomSource.hpp"

namespace orlan::reliability {

/// The pending and failed events and the attempts with them, kept in the phone's store as JSON arrays in
/// binary values. Belongs to one queue.
class EventAttempts {
 public:
  using Timer = std::uint64_t;
  /// Asks for `retry(timer, event)` to be called after a while.
  using StartTimer = std::function<void(Timer timer, Duration delay, PendingEvent event)>;

  EventAttempts(RandomSource& random, KeyValueStore& store, StartTimer startTimer);

  /// A list that is missing or damaged is no list: the one in memory stays.
  void loadPending();
  void loadFailed();

  /// Takes an event, keeps it, and attempts all.
  void add(PendingEvent event);

  /// One attempt with each pending event, in order. What waits for a retry is attempted too, and the retry
  /// stays due beside those that may follow from it.
  void process();

  /// A timer has fired: one more attempt, unless the event ended while this was its latest timer.
  void retry(Timer timer, const PendingEvent& event);

 private:
  void attempt(const PendingEvent& event);
  void tryAgain(const PendingEvent& event, Duration delay);
  void giveUp(const PendingEvent& event);
  void finish(const PendingEvent& event);
  void savePending();
  void saveFailed();

  RandomSource& random_;
  KeyValueStore& store_;
  StartTimer startTimer_;
  std::vector<PendingEvent> pendingEvents_;

  // Failed events are never pruned, so the text of each is made once. A JSON array, and what it lacks yet.
  std::string failures_ = "[]";
  std::vector<FailedEvent> lastFailures_;

  std::map<std::string, Timer> retryTimers_;  // the latest of each event; only that one ends with the event
  std::set<Timer> due_;                       // all that may still fire
  Timer lastTimer_ = 0;
};

}  // namespace orlan::reliability
