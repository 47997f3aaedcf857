#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/json.hpp"

namespace orlan {

/// What the phone says of itself. Any thread.
class DeviceInfo {
 public:
  virtual ~DeviceInfo() = default;

  /// UUID, in either case, that stays the same for all applications of one vendor on this device; may be
  /// absent.
  [[nodiscard]] virtual std::optional<std::string> vendorIdentifier() const = 0;
  [[nodiscard]] virtual std::string systemVersion() const = 0;
  [[nodiscard]] virtual std::string model() const = 0;
  [[nodiscard]] virtual std::string name() const = 0;
  [[nodiscard]] virtual std::string localeIdentifier() const = 0;  // such as "en_GB"
};

/// The host application's package. Any thread.
class Bundle {
 public:
  virtual ~Bundle() = default;

  [[nodiscard]] virtual std::optional<std::string> identifier() const = 0;

  /// An entry of the package's information such as "CFBundleName"; null when there is none.
  [[nodiscard]] virtual json::Value info(std::string_view key) const = 0;

  /// The dictionary in the property list `name`.plist of the package; nothing when the file is missing,
  /// unreadable, damaged or no dictionary.
  [[nodiscard]] virtual std::optional<json::Object> propertyList(std::string_view name) const = 0;
};

}  // namespace orlan
