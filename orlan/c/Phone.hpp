#pragma once

#include <memory>

#include "orlan/c/Guard.hpp"
#include "orlan/c/install.h"
#include "orlan/platform/Platform.hpp"

namespace orlan::c {

/// What is behind an `orlan_phone`. A ready-made phone derives from this and hands itself out by `handleOf`.
class PhoneModel {
 public:
  PhoneModel() = default;
  PhoneModel(const PhoneModel&) = delete;
  PhoneModel& operator=(const PhoneModel&) = delete;
  virtual ~PhoneModel();

  [[nodiscard]] virtual Platform platform() = 0;

  bool inItsLoop = false;  // main thread: an exported function that may not end under it runs
};

/// A handle for a new phone. No handle is ever used twice, so that one that was freed stays wrong.
[[nodiscard]] orlan_phone* handleOf(std::shared_ptr<PhoneModel> phone);

/// The phone; a `Misuse` when there is none. Any thread. The result is a visit: `orlan_phone_free` waits for
/// its end.
[[nodiscard]] std::shared_ptr<PhoneModel> phoneOf(orlan_phone* handle);

[[noreturn]] void throwOtherKind();

/// The phone as the kind that a function wants; a `Misuse` when it is another.
template <class Model>
[[nodiscard]] std::shared_ptr<Model> phoneOf(orlan_phone* handle) {
  auto phone = std::dynamic_pointer_cast<Model>(phoneOf(handle));
  if (!phone) throwOtherKind();
  return phone;
}

/// A `Misuse` unless the caller is on the phone's main thread.
void assertMain(PhoneModel& phone);

/// Runs the body of a phone's own function, on its main thread.
template <class Model, class Body>
orlan_status onMainOf(orlan_phone* handle, const char* function, Body&& body) noexcept {
  return guarded(function, [&] {
    InsideTable::refuse();
    const auto phone = phoneOf<Model>(handle);
    assertMain(*phone);
    body(*phone);
  });
}

}  // namespace orlan::c
