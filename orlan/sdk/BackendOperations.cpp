#include "orlan/sdk/BackendOperations.hpp"

#include <fmt/core.h>

#include <utility>

#include "orlan/base/text.hpp"
#include "orlan/sdk/Errors.hpp"

namespace orlan {
namespace {

std::string counts(const OrlanConfiguration& configuration) {
  return fmt::format("notificationsCount={}, daysCount={}, batteryCount={}", configuration.notificationsCount,
                     configuration.daysCount, configuration.batteryCount);
}

Result<std::string> privacyText(const Result<OrlanConfiguration>& configuration) {
  if (!configuration) return Unexpected(configuration.error());
  return configuration->privacyText;
}

}  // namespace

BackendOperations::BackendOperations(const StartSequence& starting, Lazy<APIService>& api, Logger& logger)
    : starting_(starting), api_(api), logger_(logger) {}

void BackendOperations::updateSegments(const std::vector<std::string>& segmentations,
                                       Completion<bool> completion) {
  if (refused("updateSegments", completion)) return;
  pending_.listen<bool>(api_->updateSegments(segmentations),
                        [&logger = logger_, tags = text::joined(segmentations, ", "),
                         completion = std::move(completion)](const Result<bool>& result) {
                          if (result) {
                            logger.log("✅ Segments updated to: " + tags);
                          } else {
                            logger.error("Update segments failed: " + result.error().description);
                          }
                          if (completion) completion(result);
                        });
}

void BackendOperations::fetchConfiguration(bool forceRefresh, Completion<OrlanConfiguration> completion) {
  if (refused("fetchConfiguration", completion)) return;
  pending_.listen<OrlanConfiguration>(
      api_->fetchConfiguration(forceRefresh),
      [&logger = logger_, completion = std::move(completion)](const Result<OrlanConfiguration>& result) {
        if (result) {
          logger.log("✅ Configuration fetched: " + counts(*result));
        } else {
          logger.error("Fetch configuration failed: " + result.error().description);
        }
        if (completion) completion(result);
      });
}

void BackendOperations::refreshPrivacyText(Completion<std::string> completion) {
  if (refused("refreshPrivacyText", completion)) return;
  pending_.listen<OrlanConfiguration>(
      api_->fetchConfiguration(true), [&logger = logger_, completion = std::move(completion)](
                                          const Result<OrlanConfiguration>& configuration) {
        const auto result = privacyText(configuration);
        if (result) {
          logger.log("✅ Privacy text refreshed: " + *result);
        } else {
          logger.error("Refresh privacy text failed: " + result.error().description);
        }
        if (completion) completion(result);
      });
}

template <class T>
bool BackendOperations::refused(std::string_view operation, const Completion<T>& completion) {
  if (!starting_.storedApiKey().empty()) return false;
  logger_.error(fmt::format("{} called before SDK initialization", operation));
  if (completion) completion(Unexpected(errors::notInitialized()));
  return true;
}

}  // namespace orlan
