#pragma once

#include <string>

namespace orlan::linuxphone {

/// Where a phone keeps its files; absolute, without a trailing slash.
struct Directories {
  std::string cache;  // may be lost: the log, cached answers
  std::string data;   // must not: the store, the device's identity
};

/// `home`/cache and `home`/data; for an empty `home` those of the XDG base directories with `application` as
/// the last part (a relative one there counts as not set).
[[nodiscard]] Directories directories(const std::string& home, const std::string& application);

}  // namespace orlan::linuxphone
