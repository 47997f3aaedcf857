#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>

#include "orlan/base/Single.hpp"

namespace orlan {

/// Keeps what listens to an answer until the answer is there; destroying it ends what still listens. Main
/// thread. The listener may destroy this object.
class PendingAnswers {
 public:
  template <class T>
  void listen(const Single<T>& answer, typename Single<T>::Handler handler) {
    const auto pending = pending_;
    const Id id = ++last_;
    pending->try_emplace(id);
    auto subscription = answer.subscribe(
        [weakly = std::weak_ptr(pending), id, handler = std::move(handler)](const Result<T>& result) {
          if (const auto held = weakly.lock()) held->erase(id);
          handler(result);
        });
    const auto slot = pending->find(id);
    if (slot != pending->end()) slot->second = std::move(subscription);  // else the answer was there already
  }

 private:
  using Id = std::uint64_t;
  std::shared_ptr<std::unordered_map<Id, Subscription>> pending_ =
      std::make_shared<std::unordered_map<Id, Subscription>>();
  Id last_ = 0;
};

}  // namespace orlan
