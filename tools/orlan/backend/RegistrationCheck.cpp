#include <fmt/format.h>

#include <array>

#include "tools/orlan/backend/BodyChecks.hpp"
#include "tools/orlan/backend/JsonCheck.hpp"
#include "tools/orlan/backend/ValueForms.hpp"

namespace orlan::devbackend {
namespace {

constexpr auto text = json::Kind::string;
constexpr std::array members{
    ExpectedMember{"app_name", text},       ExpectedMember{"api_key", text},
    ExpectedMember{"sdk_version", text},    ExpectedMember{"platform", text},
    ExpectedMember{"os_version", text},     ExpectedMember{"device_model", text},
    ExpectedMember{"device_name", text},    ExpectedMember{"manufacturer", text},
    ExpectedMember{"country", text},        ExpectedMember{"language", text},
    ExpectedMember{"device_id", text},      ExpectedMember{"segmentations", text},
    ExpectedMember{"correlation_id", text}, ExpectedMember{"orlan_id", text},
    ExpectedMember{"device_token", text},
};

}  // namespace

void checkDeviceRecord(const Request& request, Problems& problems) {
  const auto document = parseObject(request, members, problems);
  if (!document) return;
  const auto body = document->root();
  expectText(body, "platform", "iOS", problems);
  expectText(body, "manufacturer", "Apple", problems);
  if (const auto country = stringMember(body, "country")) expectText(body, "language", *country, problems);
  constexpr std::array<std::string_view, 3> filled{"device_id", "orlan_id", "device_token"};
  expectFilled(body, filled, problems);

  const auto* key = findHeader(request, "ApiKey");
  const auto bodyKey = stringMember(body, "api_key");
  if (key != nullptr && bodyKey && *bodyKey != *key) {
    problems.push_back("body.api_key: differs from the header ApiKey");
  }
  // "0" says that the device has no identity yet; then its own identifier must be a UUID.
  const auto device = stringMember(body, "device_id");
  if (stringMember(body, "orlan_id") == "0" && device && !device->empty() && !isUuid(*device)) {
    problems.push_back(
        fmt::format("body.device_id: expected an upper-case UUID, found {}", excerpt(*device)));
  }
}

}  // namespace orlan::devbackend
