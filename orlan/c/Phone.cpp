#include "orlan/c/Phone.hpp"

#include <cstdint>
#include <map>
#include <mutex>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Host.hpp"

namespace orlan::c {
namespace {

/// Handles are numbers in the dress of pointers: nobody looks behind them.
struct Phones {
  std::mutex mutex;
  std::map<orlan_phone*, std::shared_ptr<PhoneModel>> byHandle;
  std::uintptr_t last = 0;
};

Phones& phones() {
  static auto* const all = new Phones;  // never destroyed: answers may come while the process ends
  return *all;
}

}  // namespace

PhoneModel::~PhoneModel() = default;

orlan_phone* handleOf(std::shared_ptr<PhoneModel> phone) {
  const std::lock_guard lock(phones().mutex);
  phones().last += alignof(std::max_align_t);
  auto* const handle = reinterpret_cast<orlan_phone*>(phones().last);  // NOLINT: see `Phones`
  phones().byHandle.emplace(handle, std::move(phone));
  return handle;
}

std::shared_ptr<PhoneModel> phoneOf(orlan_phone* handle) {
  const std::lock_guard lock(phones().mutex);
  const auto found = phones().byHandle.find(handle);
  if (found == phones().byHandle.end()) throw Misuse{ORLAN_INVALID_ARGUMENT, "there is no such phone"};
  return found->second;
}

void throwOtherKind() {
  throw Misuse{ORLAN_INVALID_ARGUMENT, "this is another kind of phone"};
}

void assertMain(PhoneModel& phone) {
  if (!phone.platform().main.isCurrent()) throw Misuse{ORLAN_WRONG_THREAD, "not on the main thread"};
}

}  // namespace orlan::c

orlan_status orlan_phone_free(orlan_phone* phone) {
  using namespace orlan::c;
  if (phone == nullptr) return ORLAN_OK;
  const bool nested = Inside::any();
  return guarded(__func__, [&] {
    std::shared_ptr<PhoneModel> ending = phoneOf(phone);
    assertMain(*ending);
    if (nested) throw Misuse{ORLAN_BUSY, "inside a callback"};
    if (isInstalled(*ending)) throw Misuse{ORLAN_BUSY, "the phone is installed"};
    const std::lock_guard lock(phones().mutex);
    phones().byHandle.erase(phone);
  });
}
