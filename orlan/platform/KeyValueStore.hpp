#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/json.hpp"

namespace orlan {

/// Small persistent state by key; survives the process. Holds strings, booleans, integers, doubles and bytes,
/// each read back with the type it was written with. Any thread. A write that the phone cannot keep is
/// dropped silently and the old value stays; what `get` shows is what was kept.
class KeyValueStore {
 public:
  virtual ~KeyValueStore() = default;

  [[nodiscard]] virtual std::optional<json::Value> get(std::string_view key) const = 0;
  virtual void set(std::string_view key, json::Value value) = 0;
  virtual void remove(std::string_view key) = 0;

  /// Everything in the store, sorted by key.
  [[nodiscard]] virtual json::Object contents() const = 0;

  /// A value of exactly that type, else nothing.
  [[nodiscard]] std::optional<std::string> string(std::string_view key) const;
  [[nodiscard]] std::optional<std::string> bytes(std::string_view key) const;
  [[nodiscard]] std::optional<double> number(std::string_view key) const;  // integers too
  [[nodiscard]] bool boolean(std::string_view key) const;                  // false when there is none
};

}  // namespace orlan
