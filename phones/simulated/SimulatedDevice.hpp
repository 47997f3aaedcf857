#pragma once

#include <map>
#include <optional>
#include <string>

#include "orlan/platform/Console.hpp"
#include "orlan/platform/DeviceInfo.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::sim {

/// What a simulated phone says of itself and of its application.
struct DeviceSettings {
  std::optional<std::string> vendorIdentifier = "00000000-0000-4000-8000-000000000001";
  std::string systemVersion = "17.0";
  std::string model = "Phone";
  std::string name = "Simulated phone";
  std::string locale = "en_GB";
  std::optional<std::string> bundleIdentifier = "com.example.host";
  json::Object info = {{"CFBundleName", "Host"}, {"CFBundleShortVersionString", "1.0"}};
  std::map<std::string, json::Object, std::less<>> propertyLists;  // by name, without ".plist"
};

class SimulatedDevice final : public DeviceInfo, public Bundle {
 public:
  explicit SimulatedDevice(DeviceSettings settings);

  [[nodiscard]] std::optional<std::string> vendorIdentifier() const override {
    return settings_.vendorIdentifier;
  }
  [[nodiscard]] std::string systemVersion() const override { return settings_.systemVersion; }
  [[nodiscard]] std::string model() const override { return settings_.model; }
  [[nodiscard]] std::string name() const override { return settings_.name; }
  [[nodiscard]] std::string localeIdentifier() const override { return settings_.locale; }

  [[nodiscard]] std::optional<std::string> identifier() const override { return settings_.bundleIdentifier; }
  [[nodiscard]] json::Value info(std::string_view key) const override;
  [[nodiscard]] std::optional<json::Object> propertyList(std::string_view name) const override;

 private:
  const DeviceSettings settings_;
};

/// A console and a system log that only the observer sees.
class SimulatedOutput final : public Console, public SystemLog {
 public:
  explicit SimulatedOutput(phone::PhoneObserver& observer) : observer_(observer) {}

  void print(const ConsoleLines& lines) override { observer_.consoleLines(lines); }
  void write(std::string_view message) override { observer_.systemLog(message); }

 private:
  phone::PhoneObserver& observer_;
};

}  // namespace orlan::sim
