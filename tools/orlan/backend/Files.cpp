#include "tools/orlan/backend/Files.hpp"

#include <fmt/format.h>

#include "orlan/base/text.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::devbackend {
namespace {

Unexpected<Error> failed(const std::string& path, std::string_view why) {
  return Unexpected(Error{"orlan backend", -1, fmt::format("{}: {}", text::escapedControls(path), why)});
}

}  // namespace

Result<std::string> readFile(const std::string& path) {
  auto content = linuxphone::disk::read(path);
  if (!content) return failed(path, fmt::format("cannot be read: {}", content.error().message()));
  return std::move(content).value();
}

Result<std::string> readCampaigns(const std::string& path) {
  auto content = readFile(path);
  if (!content) return content;
  if (content->empty()) return failed(path, "is empty, expected an answer to /check-geofence");
  if (const auto decoded = NewGeofenceResponse::decode(*content); !decoded) {
    return failed(path, decoded.error().description);
  }
  return content;
}

}  // namespace orlan::devbackend
