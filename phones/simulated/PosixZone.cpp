#include "phones/simulated/PosixZone.hpp"

#include <algorithm>

#include "orlan/base/ascii.hpp"

namespace orlan::sim {

using std::chrono::seconds;

/// Takes the text apart from left to right; the first thing that does not fit ends it.
class PosixZoneParser {
 public:
  explicit PosixZoneParser(std::string_view text) : rest_(text) {}

  std::optional<PosixZone> parse() {
    PosixZone zone;
    if (!name() || !offset(zone.standard_)) return std::nullopt;
    zone.standard_ = -zone.standard_;  // POSIX counts westwards
    if (rest_.empty()) return zone;
    zone.hasDaylight_ = true;
    if (!name()) return std::nullopt;
    zone.daylight_ = zone.standard_ + std::chrono::hours(1);
    if (!rest_.starts_with(',')) {
      if (!offset(zone.daylight_)) return std::nullopt;
      zone.daylight_ = -zone.daylight_;
    }
    if (!rule(zone.start_) || !rule(zone.end_) || !rest_.empty()) return std::nullopt;
    return zone;
  }

 private:
  bool take(char c) {
    if (!rest_.starts_with(c)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool name() {
    const bool quoted = take('<');
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const auto end = std::min(quoted ? rest_.find('>') : rest_.find_first_not_of(letters), rest_.size());
    rest_.remove_prefix(end);
    return end >= 3 && (!quoted || take('>'));
  }

  bool number(int& out, int least, int most) {
    int value = 0;
    std::size_t digits = 0;
    for (; digits < rest_.size() && digits < 4 && ascii::isDigit(rest_[digits]); ++digits) {
      value = 10 * value + (rest_[digits] - '0');
    }
    rest_.remove_prefix(digits);
    out = value;
    return digits > 0 && value >= least && value <= most;
  }

  /// [+-]hh[:mm[:ss]]
  bool offset(seconds& out) {
    const bool negative = take('-');
    if (!negative) take('+');
    int hours = 0;
    int minutes = 0;
    int secs = 0;
    if (!number(hours, 0, 167)) return false;
    if (take(':') && !number(minutes, 0, 59)) return false;
    if (take(':') && !number(secs, 0, 59)) return false;
    out = std::chrono::hours(hours) + std::chrono::minutes(minutes) + seconds(secs);
    if (negative) out = -out;
    return true;
  }

  /// ,Mm.w.d[/time] or ,Jn[/time] or ,n[/time]
  bool rule(PosixZone::Rule& out) {
    using Kind = PosixZone::Rule::Kind;
    if (!take(',')) return false;
    if (take('M')) {
      out.kind = Kind::weekdayOfMonth;
      const bool fits = number(out.month, 1, 12) && take('.') && number(out.week, 1, 5) && take('.') &&
                        number(out.day, 0, 6);
      if (!fits) return false;
    } else if (take('J')) {
      out.kind = Kind::dayOfYearWithoutLeapDay;
      if (!number(out.day, 1, 365)) return false;
    } else {
      out.kind = Kind::dayOfYear;
      if (!number(out.day, 0, 365)) return false;
    }
    return !take('/') || offset(out.time);
  }

  std::string_view rest_;
};

std::optional<PosixZone> PosixZone::parse(std::string_view text) {
  return PosixZoneParser(text).parse();
}

std::int64_t PosixZone::Rule::in(std::chrono::year year) const {
  using namespace std::chrono;
  sys_days date = year / January / 1;
  if (kind == Kind::weekdayOfMonth) {
    const auto of = year / std::chrono::month(static_cast<unsigned>(month));
    const weekday wanted(static_cast<unsigned>(this->day));
    date = week == 5 ? sys_days(of / wanted[last]) : sys_days(of / wanted[static_cast<unsigned>(week)]);
  } else if (kind == Kind::dayOfYear) {
    date += days(this->day);
  } else {
    const bool pastLeapDay = year.is_leap() && this->day >= 60;
    date += days(this->day - (pastLeapDay ? 0 : 1));
  }
  return seconds(date.time_since_epoch()).count() + time.count();
}

seconds PosixZone::offsetAt(std::int64_t time) const {
  if (!hasDaylight_) return standard_;
  using namespace std::chrono;
  const auto localDay = floor<days>(sys_seconds(seconds(time) + standard_));
  const year year = year_month_day(localDay).year();
  const std::int64_t start = start_.in(year)-standard_.count();
  const std::int64_t end = end_.in(year)-daylight_.count();
  // South of the equator daylight saving is what surrounds the time between the two rules.
  const bool inside = start < end ? time >= start && time < end : time >= start || time < end;
  return inside ? daylight_ : standard_;
}

}  // namespace orlan::sim
