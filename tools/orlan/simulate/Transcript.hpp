#pragma once

#include <bitset>
#include <cstddef>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::simulate {

/// Writes down, a JSON object a line, what the outside world can see of a phone and of the library on it.
/// Times are those of the phone's virtual clock. One thread.
class Transcript final : public phone::PhoneObserver {
 public:
  using Write = std::function<void(std::string_view line)>;  // with its line break
  using Now = std::function<Duration()>;                     // since second 0

  enum class Event {
    log,
    systemLog,
    request,
    response,
    delegate,
    publish,
    result,
    notification,
    store,
    file,
    locationUpdates,
    significantChanges,
    region,
    application,
    remoteRegistration,
    end
  };

  /// The names of all events.
  static std::span<const std::string_view> eventNames();

  /// `only`: the events to keep besides "end"; empty keeps all.
  Transcript(Write write, std::set<std::string, std::less<>> only, Now now);

  /// While an object of this kind lives, nothing is written: what a step does is not news.
  class Silence {
   public:
    explicit Silence(Transcript& transcript) : transcript_(transcript) { ++transcript_.silences_; }
    ~Silence() { --transcript_.silences_; }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

   private:
    Transcript& transcript_;
  };

  /// Whether such an event would be written now; who has to make much of one asks first.
  [[nodiscard]] bool wants(Event event) const {
    return silences_ == 0 && kept_[static_cast<std::size_t>(event)];
  }

  void delegateCalled(std::string_view to, std::string_view method, json::Array arguments);
  void published(std::string_view stream, json::Value value);
  void crossed(std::string_view stream, std::string_view monitor, json::Value value);
  void result(std::size_t step, std::string_view call, json::Value value);
  void failed(std::size_t step, std::string_view call, const Error& error);
  /// The last line; nothing is written after it.
  void ended(std::size_t steps);
  /// Nothing is written any more, and no last line tells that the play went to its end.
  void abandoned() { ++silences_; }

  void consoleLines(const ConsoleLines& lines) override;
  void systemLog(std::string_view message) override;
  void request(phone::RequestId id, const HttpRequest& request) override;
  void response(phone::RequestId id, const Result<HttpReply>& result) override;
  void storeWritten(std::string_view key, const json::Value& value) override;
  void storeRemoved(std::string_view key) override;
  void fileWritten(std::string_view name, std::size_t size) override;
  void fileRemoved(std::string_view name) override;
  void notificationScheduled(const NotificationRequest& request) override;
  void notificationRefused(const NotificationRequest& request, const Error& why) override;
  void notificationPresented(const NotificationRequest& request, std::uint32_t options) override;
  void notificationDelivered(const NotificationRequest& request) override;
  void notificationTapped(const NotificationResponse& response) override;
  void locationUpdates(std::string_view manager, bool running, double desiredAccuracy,
                       double distanceFilter) override;
  void significantChanges(std::string_view manager, bool running) override;
  void region(phone::RegionAction action, const CircularRegion& region) override;
  void applicationSignal(ApplicationSignal signal, ApplicationState state) override;
  void remoteRegistration() override;

 private:
  template <class Members>
  void write(Event event, Members members);
  void notification(std::string_view action, const NotificationRequest& request,
                    const json::Object& extra = {});

  Write write_;
  std::bitset<static_cast<std::size_t>(Event::end) + 1> kept_;
  Now now_;
  int silences_ = 0;
};

}  // namespace orlan::simulate
