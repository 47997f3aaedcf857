#pragma once

#include <mutex>

#include "orlan/base/json.hpp"
#include "orlan/c/phone.h"
#include "orlan/platform/Clock.hpp"
#include "orlan/platform/Console.hpp"
#include "orlan/platform/DeviceInfo.hpp"
#include "orlan/platform/RandomSource.hpp"

/// The small parts of the host's phone.
namespace orlan::c {

class TableClock final : public Clock {
 public:
  explicit TableClock(const orlan_clock_functions& table) : table_(table) {}
  [[nodiscard]] TimePoint now() const override;
  [[nodiscard]] std::chrono::seconds offsetFromUtc(TimePoint time) const override;

 private:
  const orlan_clock_functions table_;
};

class TableRandom final : public RandomSource {
 public:
  explicit TableRandom(const orlan_random_functions& table) : table_(table) {}
  [[nodiscard]] std::uint64_t next() override;

 private:
  const orlan_random_functions table_;
};

class TableDevice final : public DeviceInfo {
 public:
  explicit TableDevice(const orlan_device& given);
  [[nodiscard]] std::optional<std::string> vendorIdentifier() const override { return vendorIdentifier_; }
  [[nodiscard]] std::string systemVersion() const override { return systemVersion_; }
  [[nodiscard]] std::string model() const override { return model_; }
  [[nodiscard]] std::string name() const override { return name_; }
  [[nodiscard]] std::string localeIdentifier() const override { return locale_; }

 private:
  const std::optional<std::string> vendorIdentifier_;
  const std::string systemVersion_;
  const std::string model_;
  const std::string name_;
  const std::string locale_;
};

class TableBundle final : public Bundle {
 public:
  explicit TableBundle(const orlan_bundle& given);
  [[nodiscard]] std::optional<std::string> identifier() const override { return identifier_; }
  [[nodiscard]] json::Value info(std::string_view key) const override;
  [[nodiscard]] std::optional<json::Object> propertyList(std::string_view name) const override;

 private:
  const std::optional<std::string> identifier_;
  const json::Object info_;
  const json::Object propertyLists_;
};

class TableLog final : public Console, public SystemLog {
 public:
  explicit TableLog(const orlan_log_functions& table) : table_(table) {}
  void print(const ConsoleLines& lines) override;
  void write(std::string_view message) override;

 private:
  const orlan_log_functions table_;
  std::mutex printing_;
};

}  // namespace orlan::c
