#pragma once

#include "orlan/surveys/Survey.hpp"

namespace orlan {

class Logger;

/// Whether `answer` may be sent. Any thread. By its type, an answer is valid with
///   boolean        "true", "false", "yes" or "no", in any case
///   number         a whole decimal number (optional sign, ASCII digits, 64-bit range, no blanks)
///   openEnded      something besides Unicode white space and line breaks
///   rating         a number from 1 to 5
///   choice types   at least one selection; which, and whether the question has it, is not looked at
/// and never with a type that does not exist. Value types ignore `choice`, choice types ignore `value`.
[[nodiscard]] bool isValid(const SurveyAnswer& answer);

/// The same asked before answers are sent: true when `answer` may not be. Logs an error when its type does
/// not exist, because then it is the host that is wrong rather than the person who answered. Any thread.
[[nodiscard]] bool isInvalid(const SurveyAnswer& answer, Logger& logger);

}  // namespace orlan
