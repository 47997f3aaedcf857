#pragma once

#include <string>

#include "orlan/base/Result.hpp"

namespace orlan::devbackend {

/// The bytes of a file; the error names it and says why it could not be read.
[[nodiscard]] Result<std::string> readFile(const std::string& path);

/// The bytes of a file that must be an answer to /check-geofence. The error names the file and the place in
/// it (`campaigns.json: geoCampaign[3].locations: expected an array, found a string`).
[[nodiscard]] Result<std::string> readCampaigns(const std::string& path);

}  // namespace orlan::devbackend
