#pragma once

#include <memory>

#include "orlan/backend/APIService.hpp"
#include "orlan/backend/Config.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/base/Result.hpp"
#include "orlan/platform/Platform.hpp"
#include "orlan/sdk/OrlanServices.hpp"

namespace orlan {

struct RuntimeOptions {
  BaseUrls urls = BaseUrls::builtIn();
};

/// The composition root: one lazily built slot a service. It owns the library's queues, timers and requests:
/// when it is destroyed, what is pending dies with it and the phone is as it was but for what was kept.
/// Created, used and destroyed on the main thread, also from inside anything the library calls: then nothing
/// that is pending runs any more, the call that is under way is finished, and what the library is made of
/// goes when that call returns. The phone outlives it.
class Runtime {
 public:
  using Options = RuntimeOptions;

  explicit Runtime(const Platform& phone, Options options = {});
  ~Runtime();
  Runtime(const Runtime&) = delete;
  Runtime& operator=(const Runtime&) = delete;

  /// The slots. Reading one through `*` or `->` brings the service to life; `onBuilt` and `ifBuilt` do not.
  [[nodiscard]] OrlanServices& services();

  /// Makes the process's Runtime, before the first use of any `shared()`; a second one is an error that says
  /// so.
  static Result<void> install(const Platform& phone, Options options = {});

  /// Ends the process's Runtime before its phone ends: what is pending dies, what was logged reaches the
  /// file (from inside a callback: when the library's call returns). Without one it does nothing. Afterwards
  /// nobody may use what `shared()` gave; `install` may be called again.
  static void uninstall();

  /// The Runtime that `shared()` resolves to on this thread: the innermost `Scope`'s, else the process's.
  /// Without either the process ends with a message that says what to call first.
  static Runtime& current();

  /// Makes a Runtime current on this thread for as long as it lives; for tests and simulators.
  class Scope {
   public:
    explicit Scope(Runtime& runtime);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    Runtime* previous_;
  };

 private:
  struct Parts;
  std::shared_ptr<Parts> parts_;  // shared with the turns that are under way
};

}  // namespace orlan
