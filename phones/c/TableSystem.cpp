#include "phones/c/TableSystem.hpp"

#include <ctime>
#include <random>
#include <string>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Values.hpp"

namespace orlan::c {

TimePoint TableClock::now() const {
  if (table_.now != nullptr) return TimePoint(Duration(ask(table_.now, table_.context)));
  return std::chrono::floor<Duration>(std::chrono::system_clock::now());
}

std::chrono::seconds TableClock::offsetFromUtc(TimePoint time) const {
  if (table_.offset_from_utc != nullptr) {
    return std::chrono::seconds(
        ask(table_.offset_from_utc, table_.context, std::int64_t{time.time_since_epoch().count()}));
  }
  const std::time_t seconds = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
  std::tm local{};
  if (localtime_r(&seconds, &local) == nullptr) return std::chrono::seconds(0);
  return std::chrono::seconds(local.tm_gmtoff);
}

std::uint64_t TableRandom::next() {
  if (table_.next != nullptr) return ask(table_.next, table_.context);
  std::random_device system;
  return std::uint64_t{system()} << 32U | system();
}

TableDevice::TableDevice(const orlan_device& given)
    : vendorIdentifier_(optionalText(given.vendor_identifier, "vendor_identifier")),
      systemVersion_(text(given.system_version, "system_version")),
      model_(text(given.model, "model")),
      name_(text(given.name, "name")),
      locale_(text(given.locale, "locale")) {}

TableBundle::TableBundle(const orlan_bundle& given)
    : identifier_(optionalText(given.identifier, "bundle.identifier")),
      info_(jsonObject(given.info, "bundle.info")),
      propertyLists_(jsonObject(given.property_lists, "bundle.property_lists")) {}

json::Value TableBundle::info(std::string_view key) const {
  const json::Value* const found = info_.find(key);
  return found != nullptr ? *found : json::Value();
}

std::optional<json::Object> TableBundle::propertyList(std::string_view name) const {
  const json::Value* const found = propertyLists_.find(name);
  if (found == nullptr || found->object() == nullptr) return std::nullopt;
  return *found->object();
}

void TableLog::print(const ConsoleLines& lines) {
  if (table_.print == nullptr) return;
  const std::string level(lines.level);
  std::string message;
  std::string whole;
  const std::lock_guard lock(printing_);
  lines.forEach([&](const ConsoleLine& line) {
    message = line.message;
    whole = line.text;
    ask(table_.print, table_.context, lent(level), lent(message), lent(whole));
  });
}

void TableLog::write(std::string_view message) {
  const std::string text(message);
  ask(table_.system_log, table_.context, lent(text));
}

}  // namespace orlan::c
