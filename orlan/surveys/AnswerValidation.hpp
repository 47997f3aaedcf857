#pragma once

#include <cstddef>
#include <span>

#include "orlan/surveys/Survey.hpp"

namespace orlan {

class Logger;

/// True when `answer` may not be sent. Any thread. By its type, an answer is valid with
///   boolean        "true", "false", "yes" or "no", in any case
///   number         a whole decimal number (optional sign, ASCII digits, 64-bit range, no blanks)
///   openEnded      something besides Unicode white space and line breaks
///   rating         a number from 1 to 5
///   choice types   at least one selection; which, and whether the question has it, is not looked at
/// and never with a type that does not exist. Value types ignore `choice`, choice types ignore `value`.
[[nodiscard]] bool isInvalid(const SurveyAnswer& answer);

/// How many of `answers` may not be sent. Logs an error for each whose type does not exist, because then it
/// is the host that is wrong rather than the person who answered.
[[nodiscard]] std::size_t countInvalid(std::span<const SurveyAnswer> answers, Logger& logger);

}  // namespace orlan
