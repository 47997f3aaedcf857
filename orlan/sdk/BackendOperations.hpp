#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orlan/backend/APIService.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/sdk/Completions.hpp"
#include "orlan/sdk/PendingAnswers.hpp"
#include "orlan/sdk/StartSequence.hpp"

namespace orlan {

/// What a host asks of the backend once the library is started, with the log lines that tell how it went.
/// Main thread.
class BackendOperations {
 public:
  BackendOperations(const StartSequence& starting, Lazy<APIService>& api, Logger& logger);

  /// As the operations of `OrlanPlugin`.
  void updateSegments(const std::vector<std::string>& segmentations, Completion<bool> completion);
  void fetchConfiguration(bool forceRefresh, Completion<OrlanConfiguration> completion);
  void refreshPrivacyText(Completion<std::string> completion);

 private:
  template <class T>
  [[nodiscard]] bool refused(std::string_view operation, const Completion<T>& completion);

  const StartSequence& starting_;
  Lazy<APIService>& api_;
  Logger& logger_;
  PendingAnswers pending_;
};

}  // namespace orlan
