#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"
#include "tools/orlan/simulate/words.hpp"

namespace orlan::simulate {

/// The first thing found wrong in a scenario; what is found after it is of no interest.
class Mistake {
 public:
  void note(std::string_view path, std::string_view what);
  [[nodiscard]] const std::optional<std::string>& text() const { return text_; }

 private:
  std::optional<std::string> text_;
};

class Members;

/// A value of the scenario together with the path on which it stands. Reading it as something that it is not
/// notes a mistake and gives a harmless value, so that readers need no branches.
class Item {
 public:
  /// A null `value` stands for a member that is not there. Value and mistake outlive the item.
  Item(const json::Value* value, std::string path, Mistake& mistake)
      : value_(value), path_(std::move(path)), mistake_(&mistake) {}

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] const json::Value& value() const;
  [[nodiscard]] bool isThere() const { return value_ != nullptr; }
  [[nodiscard]] bool isNull() const { return value_ != nullptr && value_->isNull(); }

  [[nodiscard]] bool boolean() const;
  [[nodiscard]] std::string string() const;
  [[nodiscard]] std::int64_t integer() const;
  [[nodiscard]] std::int64_t integer(std::int64_t min, std::int64_t max) const;
  [[nodiscard]] double number() const;
  [[nodiscard]] double positive() const;
  [[nodiscard]] Duration time() const;  // seconds from 0 on
  [[nodiscard]] std::vector<Item> elements() const;
  [[nodiscard]] std::vector<std::string> strings() const;

  /// All members of an object, whatever their names.
  [[nodiscard]] std::vector<std::pair<std::string, Item>> entries() const;

  /// The members of an object of which these are known; any other is a mistake.
  [[nodiscard]] Members members(std::span<const std::string_view> known) const;
  [[nodiscard]] Members members(std::initializer_list<std::string_view> known) const;

  /// The meaning of one of a few words.
  template <class T>
  [[nodiscard]] T oneOf(std::initializer_list<Word<T>> words) const {
    return oneOf<T>(std::span(words.begin(), words.size()));
  }
  template <class T>
  [[nodiscard]] T oneOf(std::span<const Word<T>> words) const {
    const std::string* word = value_ == nullptr ? nullptr : value_->string();
    std::vector<std::string_view> names;
    for (const auto& [name, meaning] : words) {
      if (word != nullptr && *word == name) return meaning;
      names.push_back(name);
    }
    expectedWord(names);
    return words.front().second;
  }

  /// Notes "expected `what`, found …".
  void expected(std::string_view what) const;
  void expectedWord(std::span<const std::string_view> names) const;
  void mistaken(std::string_view what) const { mistake_->note(path_, what); }

 private:
  friend class Members;
  const json::Value* value_;
  std::string path_;
  Mistake* mistake_;
};

/// The members of one object.
class Members {
 public:
  explicit Members(Item owner) : owner_(std::move(owner)) {}

  /// The member, there or not.
  [[nodiscard]] Item operator[](std::string_view key) const;
  [[nodiscard]] bool has(std::string_view key) const { return (*this)[key].isThere(); }
  [[nodiscard]] const Item& owner() const { return owner_; }

  /// Makes of the member, when it is there, what `read` makes of it.
  template <class T, class Read>
  void into(T& target, std::string_view key, Read read) const {
    if (const Item item = (*this)[key]; item.isThere()) target = std::invoke(read, item);
  }

  [[nodiscard]] std::string string(std::string_view key, std::string fallback) const;
  [[nodiscard]] bool boolean(std::string_view key, bool fallback) const;

  /// A mistake when `key` is there and so is one of `others`.
  void excludes(std::string_view key, std::span<const std::string_view> others) const;
  void excludes(std::string_view key, std::initializer_list<std::string_view> others) const {
    excludes(key, std::span(others.begin(), others.size()));
  }

  /// A time in UTC such as "2026-01-01T00:00:00Z", with or without decimals.
  [[nodiscard]] TimePoint dateTime(std::string_view key) const;

 private:
  Item owner_;
};

inline Members Item::members(std::initializer_list<std::string_view> known) const {
  return members(std::span(known.begin(), known.size()));
}

}  // namespace orlan::simulate
