#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "orlan/platform/KeyValueStore.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::sim {

/// A key-value store in memory. Any thread.
class SimulatedStore final : public KeyValueStore {
 public:
  SimulatedStore(phone::PhoneObserver& observer, const json::Object& initial);

  [[nodiscard]] std::optional<json::Value> get(std::string_view key) const override;
  void set(std::string_view key, json::Value value) override;
  void remove(std::string_view key) override;
  [[nodiscard]] json::Object contents() const override;

  /// Somebody else than the application changes the store: nobody is told. Null removes.
  void change(std::string_view key, json::Value value);

 private:
  phone::PhoneObserver& observer_;
  mutable std::mutex mutex_;
  std::map<std::string, json::Value, std::less<>> values_;
};

}  // namespace orlan::sim
