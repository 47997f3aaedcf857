#pragma once

#include <string_view>

#include "orlan/base/Error.hpp"

/// The errors of files that people hand to the phone: one line that names the file and, where there is one,
/// the place in it. Code -1.
namespace orlan::linuxphone::errors {

[[nodiscard]] Error propertyList(std::string_view what);  // domain "PropertyList"
[[nodiscard]] Error track(std::string_view what);         // domain "Track"

}  // namespace orlan::linuxphone::errors
