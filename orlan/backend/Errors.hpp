#pragma once

#include <string_view>

#include "orlan/base/Error.hpp"

/// The errors that the backend client makes itself; transport faults are the phone's (`urlErrors`).
namespace orlan::backendErrors {

/// A base URL that endpoint paths cannot be put behind; `expected` is the form it should have.
[[nodiscard]] Error unusableBaseUrl(std::string_view found, std::string_view expected);

// Of segments update and configuration fetch; each is logged with its description.

/// Base URL and path do not form a URL.
[[nodiscard]] Error invalidUrl(std::string_view url);
/// The request's body cannot be written as JSON.
[[nodiscard]] Error notSerializable();
/// The peer did not speak HTTP.
[[nodiscard]] Error invalidResponse();
/// A status outside 200 to 299, which is the error's code.
[[nodiscard]] Error refused(int status);
/// An answer without the body that the call is about.
[[nodiscard]] Error noData();

/// A survey call that was answered with a status outside 200 to 299, which is the error's code.
[[nodiscard]] Error surveyRefused(int status);

}  // namespace orlan::backendErrors
