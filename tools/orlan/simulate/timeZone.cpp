#include "tools/orlan/simulate/timeZone.hpp"

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

#include "phones/linux/disk.hpp"

namespace orlan::simulate {
namespace {

using std::chrono::seconds;

std::optional<int> oneOrTwoDigits(std::string_view text) {
  const bool fits = text.size() == 1 || text.size() == 2;
  if (!fits || text.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  return std::stoi(std::string(text));
}

/// "+2", "-0330", "+05:30"; positive east.
std::optional<seconds> fixedOffset(std::string_view text) {
  if (!text.starts_with('+') && !text.starts_with('-')) return std::nullopt;
  std::string_view hours = text.substr(1);
  std::string_view minutes = "0";
  if (hours.size() > 2) {
    minutes = hours.substr(hours.size() - 2);
    hours.remove_suffix(hours[hours.size() - 3] == ':' ? 3 : 2);
  }
  const auto h = oneOrTwoDigits(hours);
  const auto m = oneOrTwoDigits(minutes);
  if (!h || !m || *h > 18 || *m > 59) return std::nullopt;
  const seconds offset = std::chrono::hours(*h) + std::chrono::minutes(*m);
  return text.front() == '-' ? -offset : offset;
}

/// Of a compiled zone; empty when the machine has none of that name. Names cannot lead out of the zone data.
std::string zoneFile(std::string_view name) {
  constexpr std::string_view allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_+-/";
  if (name.find_first_not_of(allowed) != std::string_view::npos) return {};
  const char* chosen = std::getenv("TZDIR");
  const std::string directory = chosen != nullptr && *chosen != '\0' ? chosen : "/usr/share/zoneinfo";
  std::string path = directory + "/" + std::string(name);
  const auto bytes = linuxphone::disk::read(path);
  return bytes && bytes->starts_with("TZif") ? path : std::string();
}

/// The process's zone is another one, as long as an object of this kind lives.
class OtherZone {
 public:
  explicit OtherZone(const std::string& file) {
    if (const char* own = std::getenv("TZ")) own_ = own;
    ::setenv("TZ", (":" + file).c_str(), 1);
    ::tzset();
  }
  ~OtherZone() {
    if (own_) {
      ::setenv("TZ", own_->c_str(), 1);
    } else {
      ::unsetenv("TZ");
    }
    ::tzset();
  }
  OtherZone(const OtherZone&) = delete;
  OtherZone& operator=(const OtherZone&) = delete;

 private:
  std::optional<std::string> own_;
};

seconds offsetIn(const std::string& file, TimePoint time) {
  const OtherZone zone(file);
  const std::time_t at = std::chrono::floor<seconds>(time).time_since_epoch().count();
  std::tm local{};
  return seconds(::localtime_r(&at, &local) == nullptr ? 0 : local.tm_gmtoff);
}

}  // namespace

Result<sim::UtcOffset> timeZone(std::string_view name) {
  if (name == "UTC" || name == "GMT" || name == "Z") return sim::UtcOffset();
  const bool named = name.starts_with("UTC") || name.starts_with("GMT");
  const std::string_view offset = name.substr(named ? 3 : 0);
  if (const auto east = fixedOffset(offset)) return sim::UtcOffset([east](TimePoint) { return *east; });
  if (const std::string file = zoneFile(name); !file.empty()) {
    return sim::UtcOffset([file](TimePoint time) { return offsetIn(file, time); });
  }
  return Unexpected(Error{"TimeZone", -1, "this machine has no time zone \"" + std::string(name) + "\""});
}

}  // namespace orlan::simulate
