#pragma once

#include <cassert>
#include <type_traits>
#include <utility>
#include <variant>

#include "orlan/base/Error.hpp"

namespace orlan {

/// Wraps an error on its way into a `Result`: `return Unexpected(errors::noData());`
template <class E>
class Unexpected {
 public:
  explicit Unexpected(E error) : error_(std::move(error)) {}
  [[nodiscard]] const E& error() const& { return error_; }
  [[nodiscard]] E&& error() && { return std::move(error_); }

 private:
  E error_;
};

/// A value or an error. Member names are those of the standard's `expected`, so that it can take this one's
/// place once every toolchain has it. Reading the side that is not there is a programming mistake (asserted).
template <class T, class E = Error>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}  // NOLINT implicit
  Result(Unexpected<E> error)
      : state_(std::in_place_index<1>, std::move(error).error()) {}  // NOLINT implicit

  [[nodiscard]] bool has_value() const { return state_.index() == 0; }
  explicit operator bool() const { return has_value(); }

  [[nodiscard]] const T& value() const& { return *get(); }
  [[nodiscard]] T& value() & { return *get(); }
  [[nodiscard]] T&& value() && { return std::move(*get()); }
  [[nodiscard]] const T& operator*() const& { return *get(); }
  [[nodiscard]] T& operator*() & { return *get(); }
  [[nodiscard]] T&& operator*() && { return std::move(*get()); }
  const T* operator->() const { return get(); }
  T* operator->() { return get(); }

  [[nodiscard]] const E& error() const {
    assert(!has_value());
    return *std::get_if<1>(&state_);
  }

  template <class U>
  [[nodiscard]] T value_or(U&& other) const& {
    return has_value() ? **this : static_cast<T>(std::forward<U>(other));
  }

 private:
  const T* get() const {
    assert(has_value());
    return std::get_if<0>(&state_);
  }
  T* get() {
    assert(has_value());
    return std::get_if<0>(&state_);
  }

  std::variant<T, E> state_;
};

/// Success without a value, or an error.
template <class E>
class [[nodiscard]] Result<void, E> {
 public:
  Result() = default;
  Result(Unexpected<E> error)
      : state_(std::in_place_index<1>, std::move(error).error()) {}  // NOLINT implicit

  [[nodiscard]] bool has_value() const { return state_.index() == 0; }
  explicit operator bool() const { return has_value(); }

  [[nodiscard]] const E& error() const {
    assert(!has_value());
    return *std::get_if<1>(&state_);
  }

 private:
  std::variant<std::monostate, E> state_;
};

}  // namespace orlan
