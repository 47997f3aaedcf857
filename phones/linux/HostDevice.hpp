#pragma once

#include <map>
#include <optional>
#include <string>

#include "orlan/platform/DeviceInfo.hpp"
#include "orlan/platform/RandomSource.hpp"

namespace orlan::linuxphone {

/// What this machine says of itself, read once.
class HostDevice final : public DeviceInfo {
 public:
  /// The vendor identifier is made at random on the first run and kept in `identifierFile`; where it cannot
  /// be kept there is none, since it would change from run to run.
  HostDevice(const std::string& identifierFile, RandomSource& random);

  [[nodiscard]] std::optional<std::string> vendorIdentifier() const override { return identifier_; }
  [[nodiscard]] std::string systemVersion() const override { return systemVersion_; }  // of the kernel
  [[nodiscard]] std::string model() const override { return model_; }                  // "x86_64"
  [[nodiscard]] std::string name() const override { return name_; }                    // the host's name
  [[nodiscard]] std::string localeIdentifier() const override { return locale_; }

 private:
  std::optional<std::string> identifier_;
  std::string systemVersion_;
  std::string model_;
  std::string name_;
  std::string locale_;
};

/// "en_GB" of "en_GB.UTF-8@euro"; "en_US" where the locale names no language ("C", "POSIX", nothing).
[[nodiscard]] std::string localeIdentifier(std::string_view posixLocale);

struct BundleSettings {
  std::optional<std::string> identifier;
  json::Object info;                                                  // such as "CFBundleName"
  std::string directory;                                              // holds NAME.plist; may be empty
  std::map<std::string, std::string, std::less<>> propertyListFiles;  // by name; before the directory's
};

/// The host application's package, as the host describes it. Property lists are read anew each time.
class HostBundle final : public Bundle {
 public:
  explicit HostBundle(BundleSettings settings) : settings_(std::move(settings)) {}

  [[nodiscard]] std::optional<std::string> identifier() const override { return settings_.identifier; }
  [[nodiscard]] json::Value info(std::string_view key) const override;
  [[nodiscard]] std::optional<json::Object> propertyList(std::string_view name) const override;

 private:
  const BundleSettings settings_;
};

}  // namespace orlan::linuxphone
