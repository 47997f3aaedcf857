#include <algorithm>
#include <utility>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Values.hpp"
#include "phones/c/TableStorage.hpp"

namespace orlan::c {
namespace {

std::optional<json::Value> from(const orlan_value& value) {
  switch (value.kind) {
    case ORLAN_VALUE_BOOLEAN:
      return value.boolean;
    case ORLAN_VALUE_INTEGER:
      return value.integer;
    case ORLAN_VALUE_REAL:
      return value.real;
    case ORLAN_VALUE_TEXT:
      return std::string(bytes(value.text, "value"));
    case ORLAN_VALUE_BYTES:
      return Bytes{std::string(bytes(value.text, "value"))};
    default:
      return std::nullopt;
  }
}

/// Nothing for a kind that no store keeps.
std::optional<orlan_value> to(const json::Value& value) {
  orlan_value out{};
  if (const auto* boolean = value.boolean()) {
    out.kind = ORLAN_VALUE_BOOLEAN;
    out.boolean = *boolean;
  } else if (const auto* integer = value.integer()) {
    out.kind = ORLAN_VALUE_INTEGER;
    out.integer = *integer;
  } else if (const auto* real = value.real()) {
    out.kind = ORLAN_VALUE_REAL;
    out.real = *real;
  } else if (const auto* string = value.string()) {
    out.kind = ORLAN_VALUE_TEXT;
    out.text = lent(*string);
  } else if (const auto* data = value.bytes()) {
    out.kind = ORLAN_VALUE_BYTES;
    out.text = lent(data->data);
  } else {
    return std::nullopt;
  }
  return out;
}

}  // namespace

TableStore::TableStore(const orlan_store_functions& table) : table_(table) {
  const int there =
      (table.get != nullptr) + (table.set != nullptr) + (table.remove != nullptr) + (table.list != nullptr);
  if (there != 0 && there != 4) throw Misuse{ORLAN_INVALID_ARGUMENT, "store: all four functions are needed"};
}

std::optional<json::Value> TableStore::get(std::string_view key) const {
  if (table_.get == nullptr) {
    const std::lock_guard lock(mutex_);
    const auto found = memory_.find(key);
    return found == memory_.end() ? std::nullopt : std::optional(found->second);
  }
  orlan_answer answer;
  const std::string name(key);
  ask(table_.get, table_.context, lent(name), &answer);
  return std::move(answer.value);
}

void TableStore::set(std::string_view key, json::Value value) {
  const std::string name(key);
  const auto stored = to(value);
  if (!stored) return;
  if (table_.set != nullptr) {
    ask(table_.set, table_.context, lent(name), &*stored);
    return;
  }
  const std::lock_guard lock(mutex_);
  memory_.insert_or_assign(name, std::move(value));
}

void TableStore::remove(std::string_view key) {
  const std::string name(key);
  if (table_.remove != nullptr) {
    ask(table_.remove, table_.context, lent(name));
    return;
  }
  const std::lock_guard lock(mutex_);
  memory_.erase(name);
}

json::Object TableStore::contents() const {
  if (table_.list == nullptr) {
    const std::lock_guard lock(mutex_);
    return json::Object(std::vector<json::Object::Member>(memory_.begin(), memory_.end()));
  }
  orlan_answer answer;
  ask(table_.list, table_.context, &answer);
  std::sort(answer.entries.begin(), answer.entries.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  return json::Object(std::move(answer.entries));
}

}  // namespace orlan::c

using namespace orlan::c;

void orlan_answer_value(orlan_answer* answer, const orlan_value* value) {
  if (answer == nullptr || value == nullptr) return;
  guarded(__func__, [&] { answer->value = from(*value); });
}

void orlan_answer_entry(orlan_answer* answer, orlan_string key, const orlan_value* value) {
  if (answer == nullptr || value == nullptr) return;
  guarded(__func__, [&] {
    if (auto taken = from(*value)) answer->entries.emplace_back(bytes(key, "key"), std::move(*taken));
  });
}
