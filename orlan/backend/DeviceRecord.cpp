#include "orlan/backend/DeviceRecord.hpp"

#include <string_view>
#include <utility>

namespace orlan {
namespace {

std::string infoText(const Bundle& bundle, std::string_view key, std::string_view otherwise) {
  const auto value = bundle.info(key);
  return value.string() ? *value.string() : std::string(otherwise);
}

}  // namespace

DeviceRecords::DeviceRecords(const DeviceIdentity& identity, const DeviceInfo& device, const Bundle& bundle)
    : identity_(identity), device_(device), bundle_(bundle) {}

DeviceRecord DeviceRecords::forRegistration(const std::string& apiKey, const std::string& segmentations,
                                            const std::string& token) const {
  auto record = common(apiKey, token);
  record.deviceID = identity_.vendorIdOrRandom();
  record.segmentations = segmentations;
  return record;
}

DeviceRecord DeviceRecords::forSync(const std::string& apiKey, const std::string& token) const {
  auto record = common(apiKey, token);
  record.deviceID = identity_.deviceId();
  record.segmentations = identity_.segmentsText();
  record.orlanID = identity_.orlanId();
  return record;
}

DeviceRecord DeviceRecords::common(const std::string& apiKey, const std::string& token) const {
  DeviceRecord record;
  record.appName = infoText(bundle_, "CFBundleName", "Unknown");
  record.apiKey = apiKey;
  record.sdkVersion = infoText(bundle_, "CFBundleShortVersionString", "0");
  record.osVersion = device_.systemVersion();
  record.deviceModel = device_.model();
  record.deviceName = device_.name();
  record.country = device_.localeIdentifier();
  record.language = record.country;
  record.correlationID = identity_.correlationId();
  record.deviceToken = token;
  return record;
}

HttpRequest deviceRecordRequest(std::string url, const DeviceRecord& record) {
  HttpRequest request{.method = "POST", .url = std::move(url), .body = json::print(json::encode(record))};
  request.addHeader("Content-Type", "application/json");
  request.addHeader("Accept", "application/json");
  request.addHeader("ApiKey", record.apiKey);
  return request;
}

}  // namespace orlan
