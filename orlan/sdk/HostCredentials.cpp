#include "orlan/sdk/HostCredentials.hpp"

#include <initializer_list>
#include <string_view>

#include "orlan/base/text.hpp"

namespace orlan {
namespace {

using Aliases = std::initializer_list<std::string_view>;

/// A plain value as text; a collection, data or null has none.
std::string textOf(const json::Value& value) {
  if (const auto* string = value.string()) return *string;
  if (const auto* flag = value.boolean()) return *flag ? "true" : "false";
  if (const auto* integer = value.integer()) return std::to_string(*integer);
  if (const auto* real = value.real()) return text::fromDouble(*real);
  return {};
}

std::optional<std::string> firstText(const json::Object& fields, Aliases aliases) {
  for (const auto alias : aliases) {
    const json::Value* value = fields.find(alias);
    if (value == nullptr) continue;
    const std::string raw = textOf(*value);
    if (const auto trimmed = text::trimmed(raw); !trimmed.empty()) return std::string(trimmed);
  }
  return std::nullopt;
}

std::optional<bool> asFlag(const json::Value& value) {
  if (const auto* flag = value.boolean()) return *flag;
  const std::string raw = textOf(value);
  const std::string word = text::lower(text::trimmed(raw));
  for (const auto* yes : {"1", "true", "yes", "on"}) {
    if (word == yes) return true;
  }
  for (const auto* no : {"0", "false", "no", "off"}) {
    if (word == no) return false;
  }
  return std::nullopt;
}

std::optional<bool> firstFlag(const json::Object& fields, Aliases aliases) {
  for (const auto alias : aliases) {
    const json::Value* value = fields.find(alias);
    if (value == nullptr) continue;
    if (const auto flag = asFlag(*value)) return flag;
  }
  return std::nullopt;
}

}  // namespace

std::optional<TransmissionAppCredentials> hostCredentials(
    const json::Object& propertyList, const std::optional<std::string>& bundleIdentifier) {
  const json::Value* nested = propertyList.find("transmission");
  const json::Object& fields =
      nested != nullptr && nested->object() != nullptr ? *nested->object() : propertyList;

  auto companyApiKey = firstText(fields, {"company_api_key", "companyApiKey", "api_key", "apiKey"});
  if (!companyApiKey) return std::nullopt;

  TransmissionAppCredentials credentials;
  credentials.companyID = firstText(fields, {"company_id", "companyId"});
  credentials.companyApiKey = std::move(*companyApiKey);
  credentials.appID = firstText(fields, {"app_id", "appId"}).value_or("");
  credentials.appName = firstText(fields, {"app_name", "appName"});
  credentials.appApiKey = firstText(fields, {"app_api_key", "appApiKey"}).value_or("");
  credentials.iosBundleID = firstText(fields, {"ios_bundle_id", "iosBundleId", "bundle_id", "bundleId",
                                               "app_identifier", "appIdentifier"})
                                .value_or(bundleIdentifier.value_or(""));
  credentials.includeLegacyApiKeyHeader =
      firstFlag(fields, {"include_legacy_api_key_header", "includeLegacyApiKeyHeader",
                         "allow_legacy_api_key_header", "allowLegacyApiKeyHeader"})
          .value_or(true);
  return credentials;
}

}  // namespace orlan
