#include "phones/linux/HostDevice.hpp"

#include <sys/utsname.h>

#include <algorithm>
#include <cstdlib>

#include "phones/linux/PropertyList.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::linuxphone {
namespace {

/// Enough to know a file of ours that was neither cut off nor scribbled over.
bool isUuid(const std::string& text) {
  return text.size() == 36 && text.find_first_not_of("0123456789ABCDEF-") == std::string::npos;
}

std::optional<std::string> keptIdentifier(const std::string& file, RandomSource& random) {
  const auto kept = disk::read(file, 1024);
  if (kept && isUuid(*kept)) return *kept;
  auto fresh = randomUuid(random);
  if (!disk::replace(file, fresh)) return std::nullopt;
  return fresh;
}

/// The first of the variables that decide about messages' language, by POSIX's order.
std::string posixLocale() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}

}  // namespace

HostDevice::HostDevice(const std::string& identifierFile, RandomSource& random)
    : identifier_(keptIdentifier(identifierFile, random)),
      locale_(linuxphone::localeIdentifier(posixLocale())) {
  utsname system = {};
  if (::uname(&system) != 0) return;
  systemVersion_ = system.release;
  model_ = system.machine;
  name_ = system.nodename;
}

std::string localeIdentifier(std::string_view posixLocale) {
  const auto name = posixLocale.substr(0, posixLocale.find_first_of(".@"));
  const bool namesLanguage =
      name.size() >= 2 && name != "POSIX" &&
      std::all_of(name.begin(), name.begin() + 2, [](char c) { return c >= 'a' && c <= 'z'; });
  return std::string(namesLanguage ? name : "en_US");
}

json::Value HostBundle::info(std::string_view key) const {
  const json::Value* value = settings_.info.find(key);
  return value != nullptr ? *value : json::Value();
}

std::optional<json::Object> HostBundle::propertyList(std::string_view name) const {
  std::string path;
  if (const auto named = settings_.propertyListFiles.find(name); named != settings_.propertyListFiles.end()) {
    path = named->second;
  } else if (!settings_.directory.empty()) {
    path = settings_.directory + "/" + std::string(name) + ".plist";
  } else {
    return std::nullopt;
  }
  auto dictionary = readPropertyList(path);
  if (!dictionary) return std::nullopt;
  return std::move(*dictionary);
}

}  // namespace orlan::linuxphone
