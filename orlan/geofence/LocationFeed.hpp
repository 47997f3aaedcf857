#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "orlan/base/Lifetime.hpp"
#include "orlan/base/Subject.hpp"
#include "orlan/platform/Location.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// The fixes of a stream, each on a turn of the main loop of its own, for as long as the feed lives: none
/// arrives inside the construction, not even the stream's current one. Main thread.
class LocationFeed {
 public:
  LocationFeed(MainLoop& main, Publisher<std::optional<Location>>& locations,
               std::function<void(const Location&)> take)
      : take_(std::move(take)), subscription_(locations.subscribe([this, &main](const auto& fix) {
          if (!fix) return;
          main.async([this, alive = lifetime_.token(), fix = *fix] {
            if (alive) take_(fix);
          });
        })) {}

 private:
  std::function<void(const Location&)> take_;
  Lifetime lifetime_;
  Subscription subscription_;
};

}  // namespace orlan
