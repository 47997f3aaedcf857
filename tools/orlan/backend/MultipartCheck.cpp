#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "tools/orlan/backend/BodyChecks.hpp"
#include "tools/orlan/backend/ValueForms.hpp"

namespace orlan::devbackend {
namespace {

constexpr std::string_view typePrefix = "multipart/form-data; boundary=";
constexpr std::array<std::string_view, 8> partNames{"device_registered_id",
                                                    "curated_notification_id",
                                                    "location_id",
                                                    "type",
                                                    "activity",
                                                    "time",
                                                    "latitude",
                                                    "longitude"};
constexpr std::array<std::string_view, 3> types{"notification", "location", "geofence"};
constexpr std::array<std::string_view, 7> activities{
    "cta_engagement",  "notification_sent", "notification_delivered", "media_viewed",
    "location_update", "geofence_exit",     "geofence_entry"};

template <std::size_t N>
std::optional<std::string> oneOf(std::string_view value, const std::array<std::string_view, N>& known) {
  if (std::find(known.begin(), known.end(), value) != known.end()) return std::nullopt;
  return fmt::format("expected one of {}, found {}", fmt::join(known, ", "), excerpt(value));
}

std::optional<std::string> valueProblem(std::string_view name, std::string_view value) {
  if (name == "device_registered_id") {
    return value.empty() ? std::optional<std::string>("empty") : std::nullopt;
  }
  if (name == "type") return oneOf(value, types);
  if (name == "activity") return oneOf(value, activities);
  if (name == "latitude") return degreesProblem(value, 90.0);
  if (name == "longitude") return degreesProblem(value, 180.0);
  if (name == "time") {
    if (isDateTime(value)) return std::nullopt;
    return fmt::format("expected yyyy-MM-dd HH:mm:ss, found {}", excerpt(value));
  }
  if (isPlainInteger(value)) return std::nullopt;
  return fmt::format("expected a decimal integer, found {}", excerpt(value));
}

/// Walks along a body that must hold certain bytes at certain places, and stops at the first that it does
/// not: past it there is no telling what belongs to what.
class Walk {
 public:
  Walk(std::string_view body, Problems& problems) : body_(body), problems_(problems) {}

  bool expect(std::string_view bytes, std::string_view where) {
    const auto found = body_.substr(at_, bytes.size());
    if (found == bytes) {
      at_ += bytes.size();
      return true;
    }
    const auto differ = std::mismatch(bytes.begin(), bytes.end(), found.begin(), found.end()).first;
    const auto same = static_cast<std::size_t>(differ - bytes.begin());
    // Shown from the beginning of the line that went wrong, so that a person can read it.
    const auto lineEnd = same == 0 ? std::string_view::npos : bytes.rfind('\n', same - 1);
    const auto line = lineEnd == std::string_view::npos ? 0 : lineEnd + 1;
    problems_.push_back(fmt::format("body at byte {}, {}: expected {}, found {}", at_ + same, where,
                                    excerpt(bytes.substr(line), 80),
                                    excerpt(body_.substr(at_ + line, bytes.size() - line + 20), 80)));
    return false;
  }

  std::optional<std::string_view> upTo(std::string_view bytes, std::string_view where) {
    const auto end = body_.find(bytes, at_);
    if (end == std::string_view::npos) {
      problems_.push_back(
          fmt::format("body at byte {}, {}: not ended by {}", at_, where, excerpt(bytes, 80)));
      return std::nullopt;
    }
    const auto value = body_.substr(at_, end - at_);
    at_ = end;
    return value;
  }

  void expectEnd() {
    if (at_ == body_.size()) return;
    problems_.push_back(fmt::format("body at byte {}: {} bytes behind the closing line: {}", at_,
                                    body_.size() - at_, excerpt(body_.substr(at_))));
  }

 private:
  std::string_view body_;
  std::size_t at_ = 0;
  Problems& problems_;
};

bool checkPart(Walk& walk, std::string_view delimiter, std::string_view name, Problems& problems) {
  const auto where = fmt::format("part {}", name);
  const auto lead = fmt::format("{}\r\nContent-Disposition: form-data; name=\"{}\"\r\n\r\n", delimiter, name);
  if (!walk.expect(lead, where)) return false;
  const auto value = walk.upTo(fmt::format("\r\n{}", delimiter), where);
  if (!value) return false;
  if (const auto problem = valueProblem(name, *value)) {
    problems.push_back(fmt::format("{}: {}", where, *problem));
  }
  return walk.expect("\r\n", where);
}

}  // namespace

std::string boundaryOf(const Request& request) {
  const auto* type = findHeader(request, "Content-Type");
  if (type == nullptr || !type->starts_with(typePrefix)) return {};
  return type->substr(typePrefix.size());
}

void checkActivityUpload(const Request& request, Problems& problems) {
  const auto* type = findHeader(request, "Content-Type");
  if (type == nullptr) return;  // the header check has said so
  const auto boundary = boundaryOf(request);
  if (boundary.empty()) {
    problems.push_back(
        fmt::format("header Content-Type: expected \"{}…\", found {}", typePrefix, excerpt(*type)));
    return;
  }
  constexpr std::string_view prefix = "Boundary-";
  if (!boundary.starts_with(prefix) || !isUuid(std::string_view(boundary).substr(prefix.size()))) {
    problems.push_back(
        fmt::format("header Content-Type: expected a boundary of \"{}\" and an upper-case UUID, found {}",
                    prefix, excerpt(boundary)));
  }
  const auto delimiter = fmt::format("--{}", boundary);
  Walk walk(request.body, problems);
  for (const auto name : partNames) {
    if (!checkPart(walk, delimiter, name, problems)) return;
  }
  if (walk.expect(fmt::format("{}--\r\n", delimiter), "closing line")) walk.expectEnd();
}

}  // namespace orlan::devbackend
