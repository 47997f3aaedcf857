#pragma once

#include <string_view>

#include "orlan/base/Error.hpp"

/// The errors that the backend client makes itself; transport faults are the phone's (`urlErrors`).
namespace orlan::backendErrors {

/// A base URL that endpoint paths cannot be put behind; `expected` is the form it should have.
[[nodiscard]] Error unusableBaseUrl(std::string_view found, std::string_view expected);

}  // namespace orlan::backendErrors
