#include "tools/orlan/backend/Files.hpp"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "orlan/base/text.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

namespace orlan::devbackend {
namespace {

Unexpected<Error> failed(const std::string& path, std::string_view why) {
  return Unexpected(Error{"orlan backend", -1, fmt::format("{}: {}", text::escapedControls(path), why)});
}

}  // namespace

Result<std::string> readFile(const std::string& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) return failed(path, "is a directory");
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string content{std::istreambuf_iterator<char>(file), {}};
  if (file.bad() || !file.is_open()) {
    return failed(path, fmt::format("cannot be read: {}", std::generic_category().message(errno)));
  }
  return content;
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
