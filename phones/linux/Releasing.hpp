#pragma once

namespace orlan::linuxphone {

/// For a unique_ptr to what a C library gave: `release` takes it back.
template <auto release>
struct Releasing {
  template <class T>
  void operator()(T* held) const {
    release(held);
  }
};

}  // namespace orlan::linuxphone
