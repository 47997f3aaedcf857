#pragma once

#include <string>
#include <vector>

#include "orlan/base/json.hpp"
#include "orlan/surveys/Survey.hpp"

namespace orlan {

/// What a host behind a language bridge hands over as a list of texts: anything but an array wholly made of
/// strings is the empty list.
[[nodiscard]] std::vector<std::string> stringsFromBridged(const json::Value& value);

/// What such a host hands over as survey answers: the elements of an array that have an answer's JSON form;
/// all others are dropped.
[[nodiscard]] std::vector<SurveyAnswer> answersFromBridged(const json::Value& value);

}  // namespace orlan
