#pragma once

#include <string>

#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/base/Fields.hpp"
#include "orlan/platform/DeviceInfo.hpp"
#include "orlan/platform/HttpClient.hpp"

namespace orlan {

/// What the backend keeps of a device. Registration and push-token sync send the whole record to one
/// endpoint.
struct DeviceRecord {
  std::string appName;
  std::string apiKey;
  std::string sdkVersion;  // the host application's version
  std::string platform = "iOS";
  std::string osVersion;
  std::string deviceModel;
  std::string deviceName;
  std::string manufacturer = "Apple";
  std::string country;   // the locale identifier,
  std::string language;  // both of them
  std::string deviceID;
  std::string segmentations;  // joined with ","
  std::string correlationID;
  std::string orlanID = "0";
  std::string deviceToken;
};

template <>
struct Fields<DeviceRecord> {
  using R = DeviceRecord;
  static constexpr std::tuple list{field("app_name", &R::appName),
                                   field("api_key", &R::apiKey),
                                   field("sdk_version", &R::sdkVersion),
                                   field("platform", &R::platform),
                                   field("os_version", &R::osVersion),
                                   field("device_model", &R::deviceModel),
                                   field("device_name", &R::deviceName),
                                   field("manufacturer", &R::manufacturer),
                                   field("country", &R::country),
                                   field("language", &R::language),
                                   field("device_id", &R::deviceID),
                                   field("segmentations", &R::segmentations),
                                   field("correlation_id", &R::correlationID),
                                   field("orlan_id", &R::orlanID),
                                   field("device_token", &R::deviceToken)};
};

/// Writes device records from what phone, host and store say at that moment. Any thread.
class DeviceRecords {
 public:
  DeviceRecords(const DeviceIdentity& identity, const DeviceInfo& device, const Bundle& bundle);

  /// For a device that the backend does not know yet.
  [[nodiscard]] DeviceRecord forRegistration(const std::string& apiKey, const std::string& segmentations,
                                             const std::string& token) const;

  /// For a device that has its identity.
  [[nodiscard]] DeviceRecord forSync(const std::string& apiKey, const std::string& token) const;

 private:
  [[nodiscard]] DeviceRecord common(const std::string& apiKey, const std::string& token) const;

  const DeviceIdentity& identity_;
  const DeviceInfo& device_;
  const Bundle& bundle_;
};

/// The request that carries a device record; its key is also the one in the header.
[[nodiscard]] HttpRequest deviceRecordRequest(std::string url, const DeviceRecord& record);

}  // namespace orlan
