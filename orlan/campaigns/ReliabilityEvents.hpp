#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <utility>

#include "orlan/base/Enumeration.hpp"
#include "orlan/base/Fields.hpp"
#include "orlan/base/Time.hpp"

/// The events that the reliability store keeps, and their form in the phone's store.
namespace orlan::reliability {

/// An event awaiting a successful attempt.
struct PendingEvent {
  enum class EventPriority { low, normal, high, critical };

  std::string id;  // upper-case UUID
  std::string eventType;
  std::map<std::string, std::string> data;
  TimePoint timestamp;
  std::int64_t retryCount = 0;
  EventPriority priority = EventPriority::normal;

  friend bool operator==(const PendingEvent&, const PendingEvent&) = default;
};

/// An event given up.
struct FailedEvent {
  std::string id;
  std::string eventType;
  std::map<std::string, std::string> data;
  TimePoint timestamp;  // of the recording, not of the failure
  std::string error;
  std::int64_t retryCount = 0;

  friend bool operator==(const FailedEvent&, const FailedEvent&) = default;
};

using EventPriority = PendingEvent::EventPriority;

/// Each value as a text: texts as they are, numbers in decimal, others as a person would read them.
[[nodiscard]] std::map<std::string, std::string> texts(const json::Object& data);

/// A time as the number of seconds since 2001.
struct SecondsSince2001 {
  static bool decode(json::Node node, TimePoint& time, json::Failure& failure);
  static json::Value encode(const TimePoint& time) { return secondsSince2001(time); }
};

}  // namespace orlan::reliability

namespace orlan {

template <>
struct RawValues<reliability::EventPriority> {
  using P = reliability::EventPriority;
  static constexpr std::array table{std::pair{P::low, std::int64_t{0}}, std::pair{P::normal, std::int64_t{1}},
                                    std::pair{P::high, std::int64_t{2}},
                                    std::pair{P::critical, std::int64_t{3}}};
};

template <>
struct Fields<reliability::PendingEvent> {
  using R = reliability::PendingEvent;
  static constexpr std::tuple list{field("id", &R::id),
                                   field("eventType", &R::eventType),
                                   field("data", &R::data),
                                   field("timestamp", &R::timestamp, reliability::SecondsSince2001{}),
                                   field("retryCount", &R::retryCount),
                                   field("priority", &R::priority)};
};

template <>
struct Fields<reliability::FailedEvent> {
  using R = reliability::FailedEvent;
  static constexpr std::tuple list{
      field("id", &R::id),       field("eventType", &R::eventType),
      field("data", &R::data),   field("timestamp", &R::timestamp, reliability::SecondsSince2001{}),
      field("error", &R::error), field("retryCount", &R::retryCount)};
};

}  // namespace orlan
