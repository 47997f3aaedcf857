#include "orlan/c/Callbacks.hpp"

namespace orlan::c {

Error Outcome::endedEarly() {
  return {ORLAN_ERROR_DOMAIN, 1, "The library ended before the answer came."};
}

void Outcome::tell(bool succeeded, const std::optional<Error>& error) {
  if (std::exchange(called_, true)) return;
  if (error) {
    const orlan_error out = lent(*error);
    call(completion_, context_, succeeded, &out);
  } else {
    call(completion_, context_, succeeded, static_cast<const orlan_error*>(nullptr));
  }
}

void TextOutcome::tell(const std::optional<std::string>& value, const std::optional<Error>& error) {
  if (std::exchange(called_, true)) return;
  if (value) {
    const orlan_string out = lent(*value);
    call(completion_, context_, &out, static_cast<const orlan_error*>(nullptr));
  } else {
    const orlan_error out = lent(*error);
    call(completion_, context_, static_cast<const orlan_string*>(nullptr), &out);
  }
}

BridgedOutcome outcome(orlan_outcome_completion completion, void* context) {
  if (completion == nullptr) return {};
  return [told = std::make_shared<Outcome>(completion, context)](
             bool succeeded, const std::optional<Error>& error) { told->tell(succeeded, error); };
}

}  // namespace orlan::c
