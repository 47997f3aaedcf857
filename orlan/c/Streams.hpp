#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "orlan/base/Subject.hpp"
#include "orlan/c/Host.hpp"
#include "orlan/c/types.h"

struct orlan_subscription {
  orlan::Subscription held;
};

namespace orlan::c {

/// Runs the body of a subscribing function: `stream` gives a reference to the stream, `emit` hands a value to
/// the host.
template <class T, class Stream, class Emit>
orlan_status subscribed(const char* function, bool hasHandler, orlan_subscription** subscription,
                        Stream stream, Emit emit) noexcept {
  return onMain(function, [&](Host&) {
    if (!hasHandler) throw Misuse{ORLAN_INVALID_ARGUMENT, "handler is NULL"};
    needed(subscription, "subscription");
    auto made = std::make_unique<orlan_subscription>();
    *subscription = nullptr;  // what the handler finds if it looks inside the call
    Publisher<T>& publisher = stream();
    made->held =
        publisher.subscribe([emit = std::move(emit)](const T& value) { quietly([&] { emit(value); }); });
    *subscription = made.release();
  });
}

}  // namespace orlan::c
