#include "phones/simulated/TimeZone.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace orlan::sim {

using std::chrono::seconds;

namespace {

Unexpected<Error> unusable(std::string what) {
  return Unexpected(Error{"TimeZone", -1, std::move(what)});
}

std::int64_t bigEndian(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint64_t value = (bytes[at] & 0x80) != 0 ? ~std::uint64_t{0} : 0;
  for (std::size_t i = 0; i < size; ++i) value = (value << 8) | static_cast<unsigned char>(bytes[at + i]);
  return static_cast<std::int64_t>(value);
}

/// The counts in a zone file's header, and how long the block behind it is.
struct Header {
  static constexpr std::size_t size = 44;
  std::int64_t utIndicators, standardIndicators, leapSeconds, changes, types, names;

  static std::optional<Header> read(std::string_view bytes) {
    if (bytes.size() < size || !bytes.starts_with("TZif") || bytes[4] < '2') return std::nullopt;
    const auto count = [&](std::size_t index) { return bigEndian(bytes, 20 + 4 * index, 4); };
    const Header header{count(0), count(1), count(2), count(3), count(4), count(5)};
    for (std::size_t i = 0; i < 6; ++i) {
      if (count(i) < 0 || count(i) > 100'000) return std::nullopt;
    }
    return header;
  }

  [[nodiscard]] std::size_t blockSize(std::int64_t timeSize) const {
    return static_cast<std::size_t>(changes * (timeSize + 1) + types * 6 + names +
                                    leapSeconds * (timeSize + 4) + standardIndicators + utIndicators);
  }
};

/// "+2", "-0330", "+05:30"; positive east.
std::optional<seconds> fixedOffset(std::string_view text) {
  if (text.empty() || (text.front() != '+' && text.front() != '-')) return std::nullopt;
  std::string digits(text.substr(1));
  const auto colon = digits.find(':');
  if (colon != std::string::npos) {
    if (colon == 0 || colon > 2 || digits.size() != colon + 3) return std::nullopt;
    digits.erase(colon, 1);
  }
  if (digits.empty() || digits.size() > 4) return std::nullopt;
  if (digits.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  const int number = std::stoi(digits);
  const int hours = digits.size() > 2 ? number / 100 : number;
  const int minutes = digits.size() > 2 ? number % 100 : 0;
  if (hours > 18 || minutes > 59) return std::nullopt;
  const seconds east = std::chrono::hours(hours) + std::chrono::minutes(minutes);
  return text.front() == '-' ? -east : east;
}

/// A name that stays inside the zone data's directory.
bool isZoneName(std::string_view name) {
  constexpr std::string_view allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_+-/";
  return !name.empty() && name.front() != '/' && name.find_first_not_of(allowed) == std::string_view::npos;
}

std::string zoneDirectory() {
  const char* chosen = std::getenv("TZDIR");
  return chosen && *chosen ? chosen : "/usr/share/zoneinfo";
}

/// Empty when there is no such plain file, or none of a sensible size.
std::string contents(const std::filesystem::path& path) {
  constexpr std::uintmax_t most = 1 << 20;
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) return {};
  const auto size = std::filesystem::file_size(path, ignored);
  if (ignored || size > most) return {};
  std::string bytes(static_cast<std::size_t>(size), '\0');
  std::ifstream file(path, std::ios::binary);
  if (!file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) return {};
  return bytes;
}

}  // namespace

TimeZone TimeZone::fixed(seconds eastOfUtc) {
  auto zone = std::make_shared<Zone>();
  zone->first = eastOfUtc;
  TimeZone result;
  result.zone_ = std::move(zone);
  return result;
}

Result<TimeZone> TimeZone::named(std::string_view name) {
  std::string_view offset = name;
  for (const std::string_view utc : {"UTC", "GMT", "Z"}) {
    if (name == utc) return TimeZone();
    if (name.starts_with(utc) && utc != "Z") offset = name.substr(utc.size());
  }
  if (const auto east = fixedOffset(offset)) return fixed(*east);
  if (!isZoneName(name)) return unusable("\"" + std::string(name) + "\" is not the name of a time zone");

  const std::string bytes = contents(zoneDirectory() + "/" + std::string(name));
  if (bytes.empty()) return unusable("this machine has no time zone \"" + std::string(name) + "\"");
  auto zone = fromZoneFile(bytes);
  if (!zone) return unusable("time zone \"" + std::string(name) + "\": " + zone.error().description);
  return zone;
}

Result<TimeZone> TimeZone::fromZoneFile(std::string_view bytes) {
  // The first block repeats the second with 32-bit times, for readers of old.
  const auto old = Header::read(bytes);
  if (!old) return unusable("not a compiled zone file of version 2 or later");
  bytes.remove_prefix(std::min(bytes.size(), Header::size + old->blockSize(4)));
  const auto header = Header::read(bytes);
  if (!header || bytes.size() < Header::size + header->blockSize(8) || header->types == 0) {
    return unusable("the zone file is cut short");
  }
  bytes.remove_prefix(Header::size);

  const auto changes = static_cast<std::size_t>(header->changes);
  const std::size_t typesAt = changes * 9;
  const auto offsetOf = [&](std::size_t type) { return seconds(bigEndian(bytes, typesAt + 6 * type, 4)); };
  auto zone = std::make_shared<Zone>();
  zone->first = offsetOf(0);
  for (std::size_t i = 0; i < changes; ++i) {
    const auto type = static_cast<unsigned char>(bytes[changes * 8 + i]);
    if (type >= header->types) return unusable("the zone file contradicts itself");
    zone->changes.push_back({bigEndian(bytes, 8 * i, 8), offsetOf(type)});
  }
  std::string_view footer = bytes.substr(header->blockSize(8));
  if (footer.size() > 2 && footer.front() == '\n') {
    footer = footer.substr(1, footer.find('\n', 1) - 1);
    const auto rules = PosixZone::parse(footer);
    if (!rules) return unusable("the zone file ends with rules that nobody knows");
    zone->afterwards = *rules;
    zone->hasAfterwards = true;
  }
  TimeZone result;
  result.zone_ = std::move(zone);
  return result;
}

seconds TimeZone::offsetAt(TimePoint time) const {
  if (!zone_) return seconds::zero();
  const std::int64_t at = std::chrono::floor<seconds>(time).time_since_epoch().count();
  const auto& changes = zone_->changes;
  const auto next = std::upper_bound(changes.begin(), changes.end(), at,
                                     [](std::int64_t t, const Change& change) { return t < change.at; });
  if (next == changes.end() && zone_->hasAfterwards) return zone_->afterwards.offsetAt(at);
  return next == changes.begin() ? zone_->first : std::prev(next)->offset;
}

}  // namespace orlan::sim
