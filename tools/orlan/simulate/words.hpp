#pragma once

#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/HttpClient.hpp"
#include "phones/common/PhoneObserver.hpp"

/// The words that scenarios and transcripts have for things of the phone and the library.
namespace orlan::simulate {

[[nodiscard]] std::string_view nameOf(ApplicationState state);
[[nodiscard]] std::string_view nameOf(ApplicationSignal signal);
[[nodiscard]] std::string_view nameOf(phone::RegionAction action);

/// Why a request brought no status: "timeout", "unreachable", "cancelled", "notHTTP", or the fault's own
/// words.
[[nodiscard]] std::string faultName(const Result<HttpReply>& result);

}  // namespace orlan::simulate
