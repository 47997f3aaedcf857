#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <type_traits>
#include <utility>

namespace orlan {

/// The raw values of an enumeration, said once: specialise with
///
///     template <> struct RawValues<Environment> {
///       static constexpr std::array table{std::pair{Environment::development,
///       std::string_view("development")}, …};
///     };
///
/// The order of the table is the order of `allCases`. Raw values are string views or integers. The JSON form
/// of such an enumeration is its raw value (`Fields.hpp`).
template <class E>
struct RawValues;

template <class E>
concept RawRepresentable = requires {
  RawValues<E>::table;
};

template <RawRepresentable E>
using RawValue = std::remove_cvref_t<decltype(RawValues<E>::table[0].second)>;

template <RawRepresentable E>
[[nodiscard]] constexpr RawValue<E> rawValue(E value) {
  for (const auto& [name, raw] : RawValues<E>::table) {
    if (name == value) return raw;
  }
  return {};
}

/// The case with that raw value; nothing for any other.
template <RawRepresentable E, class Raw>
[[nodiscard]] constexpr std::optional<E> fromRawValue(const Raw& raw) {
  for (const auto& [name, known] : RawValues<E>::table) {
    if (known == raw) return name;
  }
  return std::nullopt;
}

template <RawRepresentable E>
[[nodiscard]] constexpr auto allCases() {
  constexpr std::size_t count = RawValues<E>::table.size();
  std::array<E, count> cases{};
  for (std::size_t i = 0; i < count; ++i) cases[i] = RawValues<E>::table[i].first;
  return cases;
}

}  // namespace orlan
