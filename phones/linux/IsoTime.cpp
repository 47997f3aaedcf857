#include "phones/linux/IsoTime.hpp"

#include <algorithm>
#include <ctime>
#include <string>

#include "orlan/base/text.hpp"

namespace orlan::linuxphone {
namespace {

bool take(std::string_view& text, const char* form, std::tm& fields) {
  const std::string copy(text);  // strptime wants an end
  const char* const rest = strptime(copy.c_str(), form, &fields);
  if (rest != nullptr) text.remove_prefix(static_cast<std::size_t>(rest - copy.c_str()));
  return rest != nullptr;
}

}  // namespace

std::optional<TimePoint> takeDate(std::string_view& text, const char* form) {
  std::tm fields{};
  if (!take(text, form, fields)) return std::nullopt;
  const int day = fields.tm_mday;
  const TimePoint time{std::chrono::seconds(timegm(&fields))};
  return fields.tm_mday == day ? std::optional(time)
                               : std::nullopt;  // else there is no such day in its month
}

std::optional<Duration> takeTimeOfDay(std::string_view& text, const char* form) {
  std::tm fields{};
  if (!take(text, form, fields)) return std::nullopt;
  const Duration whole = std::chrono::hours(fields.tm_hour) + std::chrono::minutes(fields.tm_min) +
                         std::chrono::seconds(fields.tm_sec);
  if (!text.starts_with('.')) return whole;
  const auto decimals = text.substr(0, std::min(text.find_first_not_of("0123456789", 1), text.size()));
  text.remove_prefix(decimals.size());
  const auto part = text::toDouble(decimals);
  return part ? std::optional(whole + fromSeconds(*part)) : std::nullopt;
}

std::optional<TimePoint> parseIsoTime(std::string_view text) {
  const auto date = takeDate(text, "%Y-%m-%d");
  if (!date || !(text.starts_with('T') || text.starts_with(' '))) return std::nullopt;
  text.remove_prefix(1);
  const auto timeOfDay = takeTimeOfDay(text, "%H:%M:%S");
  std::tm zone{};
  if (!timeOfDay || (!text.empty() && (!take(text, "%z", zone) || !text.empty()))) return std::nullopt;
  return *date + *timeOfDay - std::chrono::seconds(zone.tm_gmtoff);
}

}  // namespace orlan::linuxphone
