#include "orlan/campaigns/LocationTrackingReliability.hpp"

#include <map>
#include <utility>

#include "orlan/base/Lifetime.hpp"
#include "orlan/base/Subscription.hpp"
#include "orlan/campaigns/Detection.hpp"
#include "orlan/campaigns/EventAttempts.hpp"

namespace orlan {

using reliability::EventAttempts;

struct LocationTrackingReliability::Parts {
  Parts(MainLoop& mainLoop, Queues& queues, RandomSource& random, KeyValueStore& store)
      : main(mainLoop),
        attempts(random, store,
                 [this](EventAttempts::Timer timer, Duration delay, PendingEvent event) {
                   startTimer(timer, delay, std::move(event));
                 }),
        reliabilityQueue(queues.make("com.orlan.reliability")) {}

  void startTimer(EventAttempts::Timer timer, Duration delay, PendingEvent event);
  void fire(EventAttempts::Timer timer, const PendingEvent& event);

  MainLoop& main;

  // The queue's.
  AccuracyHistory locationAccuracyHistory;
  EventAttempts attempts;

  // The main thread's.
  std::map<EventAttempts::Timer, Subscription> timers;

  Subject<ReliabilityStatus> reliabilityStatusSubject;
  Lifetime lifetime;
  std::unique_ptr<SerialQueue> reliabilityQueue;  // last: what runs on it uses all the rest, so it ends first
};

void LocationTrackingReliability::Parts::startTimer(EventAttempts::Timer timer, Duration delay,
                                                    PendingEvent event) {
  main.async([this, alive = lifetime.token(), timer, delay, event = std::move(event)] {
    if (!alive) return;
    timers[timer] = main.after(delay, [this, timer, event] { fire(timer, event); });
  });
}

void LocationTrackingReliability::Parts::fire(EventAttempts::Timer timer, const PendingEvent& event) {
  const Turn turn = main.enter();
  reliabilityQueue->async([this, timer, event] { attempts.retry(timer, event); });
  timers.erase(timer);  // last: `event` belongs to the timer
}

LocationTrackingReliability::LocationTrackingReliability(MainLoop& main, Queues& queues, Clock& clock,
                                                         RandomSource& random, KeyValueStore& store,
                                                         Logger& logger)
    : clock_(clock),
      random_(random),
      logger_(logger),
      parts_(std::make_unique<Parts>(main, queues, random, store)) {}

LocationTrackingReliability::~LocationTrackingReliability() = default;

void LocationTrackingReliability::updateLocation(const Location& fix) {
  parts_->reliabilityQueue->async([&parts = *parts_, accuracy = fix.horizontalAccuracy] {
    parts.reliabilityStatusSubject.send(statusForMeanAccuracy(parts.locationAccuracyHistory.add(accuracy)));
  });
}

std::vector<GeofenceResult> LocationTrackingReliability::detectGeofences(const Location& location,
                                                                         const PolygonSet& polygons) {
  return orlan::detectGeofences(location, polygons, logger_);
}

void LocationTrackingReliability::addPendingEvent(const std::string& eventType, const json::Object& data,
                                                  EventPriority priority) {
  PendingEvent event{randomUuid(random_), eventType, reliability::texts(data), clock_.now(), 0, priority};
  parts_->reliabilityQueue->async(
      [&parts = *parts_, event = std::move(event)] { parts.attempts.add(event); });
}

void LocationTrackingReliability::loadPendingEvents() {
  parts_->reliabilityQueue->async([&parts = *parts_] { parts.attempts.loadPending(); });
}

void LocationTrackingReliability::loadFailedEvents() {
  parts_->reliabilityQueue->async([&parts = *parts_] { parts.attempts.loadFailed(); });
}

void LocationTrackingReliability::processPendingEvents() {
  parts_->reliabilityQueue->async([&parts = *parts_] { parts.attempts.process(); });
}

Publisher<ReliabilityStatus>& LocationTrackingReliability::reliabilityStatusSubject() {
  return parts_->reliabilityStatusSubject;
}

}  // namespace orlan
