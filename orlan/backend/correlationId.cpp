// The host's own name for this device's user. It travels in the device record, so each change sends that
// again once the device is registered.
#include <fmt/core.h>

#include "orlan/backend/StoreKeys.hpp"
#include "orlan/backend/calls.hpp"
#include "orlan/base/text.hpp"

namespace orlan::calls {
namespace {

void changed(const Context& with) {
  if (const auto key = with.identity.registeredApiKey()) syncToken(with, *key, true);
}

}  // namespace

void setCorrelationId(const Context& with, std::string_view identifier) {
  const auto trimmed = text::trimmed(identifier);
  if (trimmed.empty()) return clearCorrelationId(with);
  with.phone.store.set(storeKeys::correlationID, std::string(trimmed));
  with.logger.breadcrumb(fmt::format("Stored correlation_id ({} chars)", text::characterCount(trimmed)));
  changed(with);
}

void clearCorrelationId(const Context& with) {
  with.phone.store.remove(storeKeys::correlationID);
  with.logger.breadcrumb("Cleared correlation_id");
  changed(with);
}

}  // namespace orlan::calls
