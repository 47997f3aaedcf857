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
class Outcome {
 public:
  Outcome(orlan_outcome_completion completion, void* context) : completion_(completion), context_(context) {}
  ~Outcome() {
    if (!called_ && std::uncaught_exceptions() == exceptions_) tell(false, endedEarly());
  }
  Outcome(const Outcome&) = delete;
  Outcome& operator=(const Outcome&) = delete;

  void tell(bool succeeded, const std::optional<Error>& error);
  [[nodiscard]] static Error endedEarly();

 private:
  orlan_outcome_completion completion_;
  void* context_;
  bool called_ = false;
  const int exceptions_ = std::uncaught_exceptions();
};

/// The same with a text.
class TextOutcome {
 public:
  TextOutcome(orlan_text_completion completion, void* context) : completion_(completion), context_(context) {}
  ~TextOutcome() {
    if (!called_ && std::uncaught_exceptions() == exceptions_) tell(std::nullopt, Outcome::endedEarly());
  }
  TextOutcome(const TextOutcome&) = delete;
  TextOutcome& operator=(const TextOutcome&) = delete;

  void tell(const std::optional<std::string>& value, const std::optional<Error>& error);

 private:
  orlan_text_completion completion_;
  void* context_;
  bool called_ = false;
  const int exceptions_ = std::uncaught_exceptions();
};

/// Empty for NULL, so that nothing is kept for nobody.
[[nodiscard]] BridgedOutcome outcome(orlan_outcome_completion completion, void* context);

/// `toText` makes the text of a value.
template <class T, class ToText>
[[nodiscard]] BridgedCompletion<T> textOutcome(orlan_text_completion completion, void* context,
                                               ToText toText) {
  if (completion == nullptr) return {};
  return [told = std::make_shared<TextOutcome>(completion, context), toText](
             const std::optional<T>& value, const std::optional<Error>& error) {
    told->tell(value ? std::optional<std::string>(toText(*value)) : std::nullopt, error);
  };
}

}  // namespace orlan::c
