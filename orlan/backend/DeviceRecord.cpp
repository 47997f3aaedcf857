#include "orlan/backend/DeviceRecord.hpp"

#include <string_view>
#include <utility>

namespace orlan {
namespace {

std::string infoText(const Bundle& bundle, std::string_view key, std::string_view otherwise) {
  const auto value = bundle.info(key);
  return value.string() ? *value.string() : std::string(otherwise);
}

DeviceRecord common(const calls::Context& with, const std::string& apiKey, const std::string& token) {
  const auto& device = with.phone.device;
  DeviceRecord record;
  record.appName = infoText(with.phone.bundle, "CFBundleName", "Unknown");
  record.apiKey = apiKey;
  record.sdkVersion = infoText(with.phone.bundle, "CFBundleShortVersionString", "0");
  record.osVersion = device.systemVersion();
  record.deviceModel = device.model();
  record.deviceName = device.name();
  record.country = device.localeIdentifier();
  record.language = record.country;
  record.correlationID = with.identity.correlationId();
  record.deviceToken = token;
  return record;
}

}  // namespace

DeviceRecord registrationRecord(const calls::Context& with, const std::string& apiKey,
                                const std::string& segmentations, const std::string& token) {
  auto record = common(with, apiKey, token);
  record.deviceID = with.identity.vendorIdOrRandom();
  record.segmentations = segmentations;
  return record;
}

DeviceRecord syncRecord(const calls::Context& with, const std::string& apiKey, const std::string& token) {
  auto record = common(with, apiKey, token);
  record.deviceID = with.identity.deviceId();
  record.segmentations = with.identity.segmentsText();
  record.orlanID = with.identity.orlanId();
  return record;
}

HttpRequest deviceRecordRequest(std::string url, const DeviceRecord& record, std::string body) {
  HttpRequest request{.method = "POST", .url = std::move(url), .body = std::move(body)};
  request.addHeader("Content-Type", "application/json");
  request.addHeader("Accept", "application/json");
  request.addHeader("ApiKey", record.apiKey);
  return request;
}

}  // namespace orlan
