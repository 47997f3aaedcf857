#include "tools/orlan/simulate/Item.hpp"

#include <algorithm>
#include <cmath>

#include "orlan/base/text.hpp"
#include "phones/linux/IsoTime.hpp"
#include "tools/orlan/simulate/spelling.hpp"

namespace orlan::simulate {
namespace {

constexpr std::size_t longestShown = 60;  // characters of a value in a message

// Beyond this the clock's microseconds would run out; about 3000 years.
constexpr double longestTime = 1e11;

std::string shown(const json::Value& value) {
  if (value.array() != nullptr || value.object() != nullptr) return std::string(json::kindName(value));
  const std::string text = json::print(value);
  const std::string_view start = text::prefix(text, longestShown);
  return start.size() == text.size() ? text : std::string(start) + "…";
}

/// 3 and 3.0, as JSON does not tell them apart.
std::optional<std::int64_t> wholeNumber(const json::Value& value) {
  if (const std::int64_t* whole = value.integer()) return *whole;
  const double* real = value.real();
  if (real == nullptr || std::trunc(*real) != *real || std::fabs(*real) >= 9e15) return std::nullopt;
  return static_cast<std::int64_t>(*real);
}

std::string quoted(std::string_view word) {
  return json::print(json::Value(word));
}

}  // namespace

void Mistake::note(std::string_view path, std::string_view what) {
  if (text_) return;
  const std::string_view where = path.empty() ? std::string_view("the scenario") : path;
  text_ = std::string(where) + ": " + std::string(what);
}

const json::Value& Item::value() const {
  static const json::Value nothing;
  return value_ == nullptr ? nothing : *value_;
}

void Item::expected(std::string_view what) const {
  mistaken("expected " + std::string(what) + ", found " + (value_ == nullptr ? "nothing" : shown(*value_)));
}

void Item::expectedWord(std::span<const std::string_view> names) const {
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) list += i + 1 == names.size() ? " or " : ", ";
    list += quoted(names[i]);
  }
  expected(list);
}

bool Item::boolean() const {
  if (const bool* flag = value().boolean()) return *flag;
  expected("true or false");
  return false;
}

std::string Item::string() const {
  if (const std::string* text = value().string()) return *text;
  expected("a string");
  return {};
}

std::int64_t Item::integer() const {
  if (const auto whole = wholeNumber(value())) return *whole;
  expected("an integer");
  return 0;
}

std::int64_t Item::integer(std::int64_t min, std::int64_t max) const {
  const auto whole = wholeNumber(value());
  if (whole && *whole >= min && *whole <= max) return *whole;
  expected("an integer from " + std::to_string(min) + " to " + std::to_string(max));
  return min;
}

double Item::number() const {
  if (const auto number = value().number()) return *number;
  expected("a number");
  return 0.0;
}

double Item::positive() const {
  if (const auto number = value().number(); number && *number > 0.0) return *number;
  expected("a number above 0");
  return 1.0;
}

Duration Item::time() const {
  if (const auto number = value().number(); number && *number >= 0.0 && *number <= longestTime) {
    return fromSeconds(*number);
  }
  expected("a time in seconds from 0 on");
  return {};
}

std::vector<Item> Item::elements() const {
  std::vector<Item> items;
  const json::Array* array = value().array();
  if (array == nullptr) {
    expected("an array");
    return items;
  }
  items.reserve(array->size());
  for (std::size_t i = 0; i < array->size(); ++i) {
    items.emplace_back(&(*array)[i], path_ + "[" + std::to_string(i) + "]", *mistake_);
  }
  return items;
}

std::vector<std::string> Item::strings() const {
  std::vector<std::string> texts;
  for (const Item& element : elements()) texts.push_back(element.string());
  return texts;
}

std::vector<std::pair<std::string, Item>> Item::entries() const {
  std::vector<std::pair<std::string, Item>> all;
  const json::Object* object = value().object();
  if (object == nullptr) {
    expected("an object");
    return all;
  }
  const Members named(*this);
  for (const auto& [key, entry] : *object) all.emplace_back(key, named[key]);
  return all;
}

Members Item::members(std::span<const std::string_view> known) const {
  const json::Object* object = value().object();
  if (object == nullptr) {
    expected("an object");
    return Members(*this);
  }
  for (const auto& [key, entry] : *object) {
    if (std::find(known.begin(), known.end(), key) != known.end()) continue;
    Members(*this)[key].mistaken("unknown key, did you mean " + quoted(nearest(key, known)) + "?");
  }
  return Members(*this);
}

Item Members::operator[](std::string_view key) const {
  const json::Object* object = owner_.value().object();
  const std::string& base = owner_.path();
  return {object == nullptr ? nullptr : object->find(key),
          base.empty() ? std::string(key) : base + "." + std::string(key), *owner_.mistake_};
}

std::string Members::string(std::string_view key, std::string fallback) const {
  into(fallback, key, &Item::string);
  return fallback;
}

bool Members::boolean(std::string_view key, bool fallback) const {
  into(fallback, key, &Item::boolean);
  return fallback;
}

void Members::excludes(std::string_view key, std::span<const std::string_view> others) const {
  if (!has(key)) return;
  for (const auto other : others) {
    if (const Item item = (*this)[other]; item.isThere()) item.mistaken("does not go with " + quoted(key));
  }
}

TimePoint Members::dateTime(std::string_view key) const {
  const Item item = (*this)[key];
  const std::string* text = item.value().string();
  if (text != nullptr && text->ends_with('Z')) {
    if (const auto time = linuxphone::parseIsoTime(*text)) return *time;
  }
  item.expected(R"(a date and time in UTC such as "2026-01-01T00:00:00Z")");
  return {};
}

}  // namespace orlan::simulate
