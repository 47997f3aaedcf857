#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orlan/platform/DeviceInfo.hpp"
#include "orlan/platform/KeyValueStore.hpp"
#include "orlan/platform/RandomSource.hpp"

namespace orlan {

/// Who this device is: the rules by which the stored identity is read, and what stands in for what is not
/// there. Any thread.
class DeviceIdentity {
 public:
  DeviceIdentity(const KeyValueStore& store, const DeviceInfo& device, RandomSource& random);

  /// What activities and surveys name the device by: the backend's identifier, else the vendor's, else
  /// "unknown".
  [[nodiscard]] std::string registeredId() const;

  /// The vendor's identifier, in upper case however the phone writes it, else "unknown".
  [[nodiscard]] std::string vendorId() const;

  /// What the device record names the device by: the vendor's identifier, else a random one at each call.
  [[nodiscard]] std::string vendorIdOrRandom() const;

  /// The backend's identifier, else as `vendorIdOrRandom`.
  [[nodiscard]] std::string deviceId() const;

  /// The backend's own identifier of the device, else "0".
  [[nodiscard]] std::string orlanId() const;

  /// The key that the device was registered with, else empty.
  [[nodiscard]] std::string apiKey() const;

  /// Whether registration has succeeded, in this process or an earlier one.
  [[nodiscard]] bool isRegistered() const;

  /// That key, once the device is registered with one that is not empty.
  [[nodiscard]] std::optional<std::string> registeredApiKey() const;

  /// The segmentation tags as stored, joined with ","; and as a list, empty pieces dropped.
  [[nodiscard]] std::string segmentsText() const;
  [[nodiscard]] std::vector<std::string> segments() const;

  /// As stored, else empty.
  [[nodiscard]] std::string correlationId() const;

 private:
  [[nodiscard]] std::optional<std::string> vendor() const;

  const KeyValueStore& store_;
  const DeviceInfo& device_;
  RandomSource& random_;
};

}  // namespace orlan
