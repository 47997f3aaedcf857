#include "orlan/backend/Errors.hpp"

#include <fmt/core.h>

#include "orlan/base/text.hpp"

namespace orlan::backendErrors {

Error unusableBaseUrl(std::string_view found, std::string_view expected) {
  return {"Config", -1,
          fmt::format("not a usable base URL: expected {}, found \"{}\"", expected,
                      text::escapedControls(found))};
}

Error invalidUrl(std::string_view url) {
  return {"URL", -1, fmt::format("Invalid URL: {}", url)};
}

Error notSerializable() {
  return {"JSON serialization failed", -1, "Failed to serialize JSON body"};
}

Error invalidResponse() {
  return {"Invalid response", -1, "Invalid response"};
}

Error refused(int status) {
  return {"Invalid response", status, fmt::format("Failed with status code: {}", status)};
}

Error noData() {
  return {"No data", -1, "No data received"};
}

Error surveyRefused(int status) {
  return {"OrlanSDK", status, fmt::format("Survey submission failed with status {}", status)};
}

}  // namespace orlan::backendErrors
