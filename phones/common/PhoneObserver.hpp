#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "orlan/base/Error.hpp"
#include "orlan/base/Result.hpp"
#include "orlan/base/json.hpp"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/Circle.hpp"
#include "orlan/platform/Console.hpp"
#include "orlan/platform/HttpClient.hpp"
#include "orlan/platform/Location.hpp"
#include "orlan/platform/NotificationCenter.hpp"

namespace orlan::phone {

/// 1, 2, … for the requests of one phone, in the order of sending.
using RequestId = std::uint64_t;

enum class RegionAction { start, stop, enter, exit };

/// What the outside world sees of a phone: the seam for transcripts, terminals and reports. Methods one does
/// not need keep their empty bodies.
///
/// Order. What the application does (a request, a write, a notification scheduled, updates started) is told
/// inside the call that does it, after it took effect. What happens to the application (a signal, a region
/// crossed, a response) is told just before the application hears of it, so that consequences follow causes.
/// `presented` is told when the application has answered, because only then is it known how.
///
/// Threads. Everything under "main thread" comes on the main thread. The rest comes on the thread that
/// logs, writes or sends; on the simulated phone all of it is one thread. Calls from several threads may
/// overlap. No lock of the phone is held during a call, but the observer must not call back into the phone.
/// The observer outlives the phone's use of it.
class PhoneObserver {
 public:
  virtual ~PhoneObserver() = default;

  // Any thread.
  virtual void consoleLines(const ConsoleLines&) {}
  virtual void systemLog(std::string_view /*message*/) {}
  /// Not for a request that is refused before anything is sent (`refusal`); that has no response either.
  virtual void request(RequestId, const HttpRequest&) {}
  /// Not for a request whose handle was destroyed first.
  virtual void response(RequestId, const Result<HttpReply>&) {}
  /// Every write that was kept, also of the value that was there.
  virtual void storeWritten(std::string_view /*key*/, const json::Value& /*value*/) {}
  /// Only what was there.
  virtual void storeRemoved(std::string_view /*key*/) {}
  /// A file of the caches directory was replaced as a whole; appending is not told.
  virtual void fileWritten(std::string_view /*name*/, std::size_t /*size*/) {}
  virtual void fileRemoved(std::string_view /*name*/) {}

  // Main thread: notifications.
  virtual void notificationScheduled(const NotificationRequest&) {}
  virtual void notificationRefused(const NotificationRequest&, const Error& /*why*/) {}
  /// It came up while the application was in front, which wants it shown so (`notificationOptions` bits).
  virtual void notificationPresented(const NotificationRequest&, std::uint32_t /*options*/) {}
  /// It came up with nobody in the application to ask.
  virtual void notificationDelivered(const NotificationRequest&) {}
  virtual void notificationTapped(const NotificationResponse&) {}

  // Main thread: location. Every call that starts or stops something is told, also when it changes nothing.
  /// The phone itself moved (or got a fix that is not valid); told once a batch, whoever listens.
  virtual void fixes(std::span<const Location> /*batch*/) {}
  virtual void locationUpdates(std::string_view /*manager*/, bool /*running*/, double /*desiredAccuracy*/,
                               double /*distanceFilter*/) {}
  virtual void significantChanges(std::string_view /*manager*/, bool /*running*/) {}
  /// A start that was ignored and a stop of what was not monitored are not told.
  virtual void region(RegionAction, const CircularRegion&) {}

  // Main thread: the application. `state` is the one that the signal's handlers will see.
  virtual void applicationSignal(ApplicationSignal, ApplicationState /*state*/) {}
  virtual void remoteRegistration() {}
};

}  // namespace orlan::phone
