#include <algorithm>
#include <cctype>

#include "orlan/base/text.hpp"
#include "phones/linux/PropertyList.hpp"
#include "tools/orlan/simulate/keys.hpp"
#include "tools/orlan/simulate/readers.hpp"
#include "tools/orlan/simulate/timeZone.hpp"

namespace orlan::simulate {
namespace {

constexpr std::string_view uuidForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";

Error centreError(std::string description) {
  return {"NotificationCenter", -1, std::move(description)};
}

std::optional<std::string> readVendorIdentifier(const Item& item) {
  if (item.isNull()) return std::nullopt;
  const std::string text = item.string();
  const bool isUuid =
      std::equal(uuidForm.begin(), uuidForm.end(), text.begin(), text.end(), [](char wanted, char found) {
        return wanted == 'x' ? std::isxdigit(static_cast<unsigned char>(found)) != 0 : wanted == found;
      });
  if (!isUuid) item.expected("a UUID or null");
  return text::upper(text);
}

/// The content of OrlanConfig.plist. A file that is there but damaged is the library's affair.
std::optional<json::Object> readPropertyList(const Item& item, const Files& files) {
  const json::Object* content = item.value().object();
  if (content == nullptr) {
    item.expected("an object");
    return std::nullopt;
  }
  const json::Value* path = content->size() == 1 ? content->find("file") : nullptr;
  if (path == nullptr || path->string() == nullptr) return *content;

  const auto bytes = files.read(*path->string());
  if (!bytes) {
    item.mistaken("cannot read " + json::print(*path) + ": " + bytes.error().description);
    return std::nullopt;
  }
  const auto list = linuxphone::parsePropertyList(*bytes);
  return list ? std::optional(*list) : std::nullopt;
}

void readBundle(const Item& item, sim::DeviceSettings& device) {
  const Members bundle = item.members(keys::bundle);
  if (const Item identifier = bundle["identifier"]; identifier.isNull()) {
    device.bundleIdentifier.reset();
  } else if (identifier.isThere()) {
    device.bundleIdentifier = identifier.string();
  }
  if (!bundle.has("info")) return;
  for (const auto& [key, value] : bundle["info"].entries()) device.info.set(key, value.value());
}

void readDescription(const Members& device, const Files& files, sim::DeviceSettings& settings) {
  device.into(settings.vendorIdentifier, "vendorIdentifier", readVendorIdentifier);
  device.into(settings.systemVersion, "systemVersion", &Item::string);
  device.into(settings.model, "model", &Item::string);
  device.into(settings.name, "name", &Item::string);
  device.into(settings.locale, "locale", &Item::string);
  if (device.has("bundle")) readBundle(device["bundle"], settings);
  if (const Item plist = device["plist"]; plist.isThere()) {
    if (auto content = readPropertyList(plist, files)) {
      settings.propertyLists.emplace("OrlanConfig", std::move(*content));
    }
  }
}

sim::UtcOffset readTimeZone(const Item& item) {
  auto zone = timeZone(item.string());
  if (!zone) item.mistaken(zone.error().description);
  return zone ? std::move(*zone) : sim::UtcOffset();
}

phone::LocationSettings readLocation(const Members& device, TimePoint start) {
  phone::LocationSettings settings;
  device.into(settings.authorization, "locationAuthorization", readLocationAuthorization);
  device.into(settings.afterRequest, "locationAuthorizationAfterRequest", readLocationAuthorization);
  device.into(settings.regionEvents, "regions", [](const Item& regions) {
    return regions.oneOf<phone::RegionEvents>(
        {{"automatic", phone::RegionEvents::automatic}, {"manual", phone::RegionEvents::manual}});
  });
  device.into(settings.position, "position", [start](const Item& position) {
    const Fix fix = readFix(position.members(keys::fix));
    return Location{fix.coordinate, fix.accuracy, start};
  });
  return settings;
}

Result<bool> readGrant(const Item& item) {
  if (item.value().object() == nullptr) {
    if (item.value().boolean() == nullptr) item.expected(R"(true, false or {"error": …})");
    return item.value().boolean() != nullptr && *item.value().boolean();
  }
  return Unexpected(centreError(item.members({"error"})["error"].string()));
}

phone::NotificationSettings readNotifications(const Members& device) {
  phone::NotificationSettings settings;
  device.into(settings.authorization, "notificationAuthorization", readNotificationAuthorization);
  device.into(settings.answer, "grantNotifications", readGrant);
  device.into(settings.refusal, "notificationFailure",
              [](const Item& failure) { return centreError(failure.string()); });
  return settings;
}

}  // namespace

sim::PhoneSettings readDevice(const Item& item, TimePoint start, const Files& files) {
  sim::PhoneSettings phone;
  if (!item.isThere()) return phone;
  const Members device = item.members(keys::device);
  readDescription(device, files, phone.device);
  device.into(phone.offsetFromUtc, "timeZone", readTimeZone);
  device.into(phone.application, "application", readApplicationState);
  phone.location = readLocation(device, start);
  phone.notifications = readNotifications(device);
  if (const Item store = device["store"]; store.isThere()) {
    for (const auto& [key, value] : store.entries()) phone.store.set(key, readStorable(value));
  }
  if (const Item caches = device["files"]; caches.isThere()) {
    for (const auto& [name, content] : caches.entries()) {
      checkFileName(name, content);
      phone.files[name] = content.string();
    }
  }
  return phone;
}

}  // namespace orlan::simulate
