#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The names under which the operating system watches campaign areas; they outlive the process.
namespace orlan::regionIdentifier {

/// "camp_12_7" for campaign 12 at location 7.
[[nodiscard]] std::string of(std::int64_t campaignId, std::int64_t locationId);

/// 12 from "camp_12_7": the second of the pieces between underscores, if it is an integer.
[[nodiscard]] std::optional<std::int64_t> campaignId(std::string_view identifier);

}  // namespace orlan::regionIdentifier
