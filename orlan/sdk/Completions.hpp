#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "orlan/base/Result.hpp"

namespace orlan {

/// Hears how an operation ended: once, with a value or an error. May be empty when nobody wants to know; may
/// call back into the library.
template <class T>
using Completion = std::function<void(const Result<T>&)>;

/// The same for hosts behind a language bridge: exactly one of value and error is there.
template <class T>
using BridgedCompletion = std::function<void(const std::optional<T>&, const std::optional<Error>&)>;

/// For operations that only succeed or fail: true without an error, or false with one.
using BridgedOutcome = std::function<void(bool, const std::optional<Error>&)>;

template <class T>
[[nodiscard]] Completion<T> fromBridged(BridgedCompletion<T> completion) {
  if (!completion) return {};
  return [completion = std::move(completion)](const Result<T>& result) {
    if (result) {
      completion(*result, std::nullopt);
    } else {
      completion(std::nullopt, result.error());
    }
  };
}

[[nodiscard]] inline Completion<bool> fromBridged(BridgedOutcome completion) {
  if (!completion) return {};
  return [completion = std::move(completion)](const Result<bool>& result) {
    completion(result.has_value(), result ? std::nullopt : std::optional(result.error()));
  };
}

}  // namespace orlan
