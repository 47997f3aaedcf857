#include "orlan/backend/CorrelationId.hpp"

#include <fmt/core.h>

#include "orlan/backend/StoreKeys.hpp"
#include "orlan/base/text.hpp"

namespace orlan {

CorrelationId::CorrelationId(const DeviceIdentity& identity, KeyValueStore& store, TokenSync& tokens,
                             Logger& logger)
    : identity_(identity), store_(store), tokens_(tokens), logger_(logger) {}

void CorrelationId::set(std::string_view identifier) {
  const auto trimmed = text::trimmed(identifier);
  if (trimmed.empty()) return clear();
  store_.set(storeKeys::correlationID, std::string(trimmed));
  logger_.breadcrumb(fmt::format("Stored correlation_id ({} chars)", text::characterCount(trimmed)));
  changed();
}

void CorrelationId::clear() {
  store_.remove(storeKeys::correlationID);
  logger_.breadcrumb("Cleared correlation_id");
  changed();
}

std::optional<std::string> CorrelationId::get() const {
  const auto stored = identity_.correlationId();
  const auto trimmed = text::trimmed(stored);
  return trimmed.empty() ? std::nullopt : std::optional(std::string(trimmed));
}

void CorrelationId::changed() {
  if (const auto key = identity_.registeredApiKey()) tokens_.sync(*key, true);
}

}  // namespace orlan
