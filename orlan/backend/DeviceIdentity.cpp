#include "orlan/backend/DeviceIdentity.hpp"

#include "orlan/backend/StoreKeys.hpp"
#include "orlan/base/text.hpp"

namespace orlan {

DeviceIdentity::DeviceIdentity(const KeyValueStore& store, const DeviceInfo& device, RandomSource& random)
    : store_(store), device_(device), random_(random) {}

std::string DeviceIdentity::registeredId() const {
  auto stored = store_.string(storeKeys::deviceID);
  return stored ? *stored : vendorId();
}

std::string DeviceIdentity::vendorId() const {
  return vendor().value_or("unknown");
}

std::string DeviceIdentity::vendorIdOrRandom() const {
  auto identifier = vendor();
  return identifier ? *identifier : randomUuid(random_);
}

std::optional<std::string> DeviceIdentity::vendor() const {
  auto identifier = device_.vendorIdentifier();
  return identifier ? std::optional(text::upper(*identifier)) : std::nullopt;
}

std::string DeviceIdentity::deviceId() const {
  auto stored = store_.string(storeKeys::deviceID);
  return stored ? *stored : vendorIdOrRandom();
}

std::string DeviceIdentity::orlanId() const {
  return store_.string(storeKeys::orlanID).value_or("0");
}

std::string DeviceIdentity::apiKey() const {
  return store_.string(storeKeys::apiKey).value_or("");
}

bool DeviceIdentity::isRegistered() const {
  return store_.boolean(storeKeys::deviceRegistered);
}

std::optional<std::string> DeviceIdentity::registeredApiKey() const {
  auto key = apiKey();
  if (key.empty() || !isRegistered()) return std::nullopt;
  return key;
}

std::string DeviceIdentity::segmentsText() const {
  return store_.string(storeKeys::segments).value_or("");
}

std::vector<std::string> DeviceIdentity::segments() const {
  return text::split(segmentsText(), ',');
}

std::string DeviceIdentity::correlationId() const {
  return store_.string(storeKeys::correlationID).value_or("");
}

}  // namespace orlan
