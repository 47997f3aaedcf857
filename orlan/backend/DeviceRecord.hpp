#pragma once

#include <string>

#include "orlan/backend/calls.hpp"
#include "orlan/base/Fields.hpp"
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

/// The record from what phone, host and store say at this moment: for a device that the backend does not know
/// yet, and for one that has its identity.
[[nodiscard]] DeviceRecord registrationRecord(const calls::Context& with, const std::string& apiKey,
                                              const std::string& segmentations, const std::string& token);
[[nodiscard]] DeviceRecord syncRecord(const calls::Context& with, const std::string& apiKey,
                                      const std::string& token);

/// The request that carries a device record as `body`; its key is also the one in the header.
[[nodiscard]] HttpRequest deviceRecordRequest(std::string url, const DeviceRecord& record, std::string body);

}  // namespace orlan
