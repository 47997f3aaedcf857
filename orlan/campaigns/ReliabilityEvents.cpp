#include "orlan/campaigns/ReliabilityEvents.hpp"

#include "orlan/base/text.hpp"

namespace orlan::reliability {

bool SecondsSince2001::decode(json::Node node, TimePoint& time, json::Failure& failure) {
  const auto seconds = node.number();
  if (!seconds) return failure.expected("a number", node);
  time = fromSecondsSince2001(*seconds);
  return true;
}

std::map<std::string, std::string> texts(const json::Object& data) {
  std::map<std::string, std::string> result;
  for (const auto& [key, value] : data) {
    if (const std::string* string = value.string()) {
      result[key] = *string;
    } else if (const double* real = value.real()) {
      result[key] = text::fromDouble(*real);
    } else {
      result[key] = json::describe(value);
    }
  }
  return result;
}

}  // namespace orlan::reliability
