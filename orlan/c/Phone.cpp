#include "orlan/c/Phone.hpp"

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

#include "orlan/c/Host.hpp"

namespace orlan::c {
namespace {

struct Entry {
  std::shared_ptr<PhoneModel> phone;
  int visits = 0;
  bool isEnding = false;
};

/// Handles are numbers in the dress of pointers: nobody looks behind them.
struct Phones {
  std::mutex mutex;
  std::condition_variable left;
  std::map<orlan_phone*, Entry> byHandle;
  std::uintptr_t last = 0;
};

Phones& phones() {
  static auto* const all = new Phones;  // never destroyed: answers may come while the process ends
  return *all;
}

Entry& enter(orlan_phone* handle) {
  const std::lock_guard lock(phones().mutex);
  const auto found = phones().byHandle.find(handle);
  if (found == phones().byHandle.end() || found->second.isEnding) {
    throw Misuse{ORLAN_INVALID_ARGUMENT, "there is no such phone"};
  }
  ++found->second.visits;
  return found->second;
}

struct Visit {
  explicit Visit(orlan_phone* handle) : entry(enter(handle)) {}
  ~Visit() {
    const std::lock_guard lock(phones().mutex);
    --entry.visits;
    phones().left.notify_all();
  }
  Visit(const Visit&) = delete;
  Visit& operator=(const Visit&) = delete;

  Entry& entry;
};

}  // namespace

PhoneModel::~PhoneModel() = default;

orlan_phone* handleOf(std::shared_ptr<PhoneModel> phone) {
  const std::lock_guard lock(phones().mutex);
  phones().last += alignof(std::max_align_t);
  auto* const handle = reinterpret_cast<orlan_phone*>(phones().last);  // NOLINT: see `Phones`
  phones().byHandle[handle].phone = std::move(phone);
  return handle;
}

std::shared_ptr<PhoneModel> phoneOf(orlan_phone* handle) {
  auto visit = std::make_shared<Visit>(handle);
  auto* const phone = visit->entry.phone.get();
  return {std::move(visit), phone};
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
    {
      const Visit visit(phone);
      PhoneModel& model = *visit.entry.phone;
      assertMain(model);
      if (nested) throw Misuse{ORLAN_BUSY, "inside a callback"};
      if (model.inItsLoop) throw Misuse{ORLAN_BUSY, "the phone's main loop runs"};
      const auto host = installedHost();
      if (host && host->phone.get() == &model) throw Misuse{ORLAN_BUSY, "the phone is installed"};
      const std::lock_guard lock(phones().mutex);
      visit.entry.isEnding = true;
    }
    decltype(phones().byHandle)::node_type ended;  // ends last, outside the lock: it calls the host
    std::unique_lock lock(phones().mutex);
    const auto found = phones().byHandle.find(phone);
    phones().left.wait(lock, [&] { return found->second.visits == 0; });
    ended = phones().byHandle.extract(found);
  });
}
