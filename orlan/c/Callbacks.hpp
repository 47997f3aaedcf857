#pragma once

#include <exception>
#include <memory>
#include <string>
#include <utility>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Values.hpp"
#include "orlan/c/types.h"
#include "orlan/sdk/Completions.hpp"

/// Completions of the host's as the services know them.
namespace orlan::c {

/// Calls a completion exactly once: with the outcome, or with an error when nobody has one any more. Not when
/// the operation itself fails to begin, which its status tells.
template <class T>
class Once {
 public:
  explicit Once(Completion<T> completion) : completion_(std::move(completion)) {}
  ~Once() {
    if (std::uncaught_exceptions() != exceptions_) return;
    tell(Unexpected(Error{ORLAN_ERROR_DOMAIN, 1, "The library ended before the answer came."}));
  }
  Once(const Once&) = delete;
  Once& operator=(const Once&) = delete;

  void tell(const Result<T>& outcome) {
    if (const auto completion = std::exchange(completion_, nullptr)) completion(outcome);
  }

 private:
  Completion<T> completion_;
  const int exceptions_ = std::uncaught_exceptions();
};

template <class T>
[[nodiscard]] Completion<T> once(Completion<T> completion) {
  return [once = std::make_shared<Once<T>>(std::move(completion))](const Result<T>& outcome) {
    once->tell(outcome);
  };
}

/// Empty for NULL, so that nothing is kept for nobody.
[[nodiscard]] inline Completion<bool> outcome(orlan_outcome_completion completion, void* context) {
  if (completion == nullptr) return {};
  return once<bool>([=](const Result<bool>& outcome) {
    const orlan_error error = outcome ? orlan_error{} : lent(outcome.error());
    call(completion, context, outcome.has_value(), outcome ? nullptr : &error);
  });
}

/// `toText` makes the text of a value.
template <class T, class ToText>
[[nodiscard]] Completion<T> textOutcome(orlan_text_completion completion, void* context, ToText toText) {
  if (completion == nullptr) return {};
  return once<T>([=](const Result<T>& outcome) {
    const std::string text = outcome ? std::string(toText(*outcome)) : std::string();
    const orlan_string value = lent(text);
    const orlan_error error = outcome ? orlan_error{} : lent(outcome.error());
    call(completion, context, outcome ? &value : nullptr, outcome ? nullptr : &error);
  });
}

}  // namespace orlan::c
