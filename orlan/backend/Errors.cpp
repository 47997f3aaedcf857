#include "orlan/backend/Errors.hpp"

#include <fmt/core.h>

#include "orlan/base/text.hpp"

namespace orlan::backendErrors {

Error unusableBaseUrl(std::string_view found, std::string_view expected) {
  return {"Config", -1,
          fmt::format("not a usable base URL: expected {}, found \"{}\"", expected,
                      text::escapedControls(found))};
}

}  // namespace orlan::backendErrors
