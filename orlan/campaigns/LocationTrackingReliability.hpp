#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orlan/base/Subject.hpp"
#include "orlan/base/json.hpp"
#include "orlan/campaigns/GeofenceResult.hpp"
#include "orlan/campaigns/PolygonSet.hpp"
#include "orlan/campaigns/ReliabilityEvents.hpp"
#include "orlan/campaigns/ReliabilityStatus.hpp"
#include "orlan/platform/Clock.hpp"
#include "orlan/platform/KeyValueStore.hpp"
#include "orlan/platform/Location.hpp"
#include "orlan/platform/RandomSource.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

class Logger;

/// Decides where a fix is, keeps an eye on how good the fixes are, and records notable events until an
/// attempt with them succeeds. An attempt contacts nobody: its outcome is drawn at random, half and half.
/// Three failed ones, 5 s and 10 s apart, and the event is kept as failed for good.
///
/// Any thread may call. All bookkeeping runs on the queue "com.orlan.reliability", in the order of the calls,
/// which return at once. Created and destroyed on the main thread; retries that are due later die with it,
/// but pending events are kept in the phone's store for the next start.
class LocationTrackingReliability {
 public:
  using PendingEvent = reliability::PendingEvent;
  using FailedEvent = reliability::FailedEvent;
  using EventPriority = reliability::EventPriority;
  using ReliabilityStatus = orlan::ReliabilityStatus;

  LocationTrackingReliability(MainLoop& main, Queues& queues, Clock& clock, RandomSource& random,
                              KeyValueStore& store, Logger& logger);
  ~LocationTrackingReliability();
  LocationTrackingReliability(const LocationTrackingReliability&) = delete;
  LocationTrackingReliability& operator=(const LocationTrackingReliability&) = delete;

  /// The process's, for as long as the library is installed; made at first use.
  static LocationTrackingReliability& shared();

  /// Takes note of a fix and emits the status.
  void updateLocation(const Location& fix);

  /// One result a polygon, in the set's order; on the caller's thread. See `Detection.hpp`.
  [[nodiscard]] std::vector<GeofenceResult> detectGeofences(const Location& location,
                                                            const PolygonSet& polygons);

  /// Records an event and attempts all that are pending. Values become texts.
  void addPendingEvent(const std::string& eventType, const json::Object& data, EventPriority priority);

  /// Takes the stored lists in the place of those in memory; a list that is missing or damaged changes
  /// nothing.
  void loadPendingEvents();
  void loadFailedEvents();

  /// Attempts all pending events: the urgent first, then the normal, then the low; within each the older
  /// first.
  void processPendingEvents();

  /// Emits after every fix, on the queue.
  [[nodiscard]] Publisher<ReliabilityStatus>& reliabilityStatusSubject();

 private:
  struct Parts;

  Clock& clock_;
  RandomSource& random_;
  Logger& logger_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace orlan
