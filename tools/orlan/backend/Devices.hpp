#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

namespace orlan::devbackend {

struct Identity {
  std::string deviceId;
  std::string orlanId;

  friend bool operator==(const Identity&, const Identity&) = default;
};

/// Who registered. A device gets the same identity each time, also when it comes back under the identifier
/// that it was given, and keeps an identity that an earlier backend gave it. Any thread.
class Devices {
 public:
  /// `postedDevice` and `postedOrlan` are "device_id" and "orlan_id" of the device record ("0": none yet).
  Identity identify(std::string_view postedDevice, std::string_view postedOrlan);

 private:
  std::mutex mutex_;
  std::map<std::string, std::string, std::less<>> known_;  // device identifier -> backend's own
  std::int64_t next_ = 1001;
};

}  // namespace orlan::devbackend
