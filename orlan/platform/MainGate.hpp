#pragma once

#include <functional>
#include <memory>

#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Lets answers that may come on any thread and at any time reach an object of the main thread for as long as
/// it lives. A member, declared last, so that it closes first. Made and destroyed on the main thread.
///
///     center_.add(request, [this, pass = gate_.pass()](Result<void> outcome) {
///       pass([this, outcome] { note(outcome); });
///     });
class MainGate {
  struct State;

 public:
  explicit MainGate(MainLoop& main);
  ~MainGate();
  MainGate(const MainGate&) = delete;
  MainGate& operator=(const MainGate&) = delete;

  /// Copyable; may outlive the gate and its main loop, and be used on any thread.
  class Pass {
   public:
    /// Runs `task` on the main thread if the gate is still open by then: at once when the caller is there,
    /// else on a later turn of the main loop.
    void operator()(std::function<void()> task) const;

   private:
    friend class MainGate;
    explicit Pass(std::shared_ptr<State> state) : state_(std::move(state)) {}
    std::shared_ptr<State> state_;
  };

  [[nodiscard]] Pass pass() const { return Pass(state_); }

 private:
  std::shared_ptr<State> state_;
};

}  // namespace orlan
