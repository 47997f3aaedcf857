#include "orlan/platform/MainGate.hpp"

#include <mutex>
#include <utility>

namespace orlan {

struct MainGate::State {
  std::mutex mutex;
  MainLoop* main = nullptr;  // null once the gate is closed; only the main thread changes it
};

MainGate::MainGate(MainLoop& main) : state_(std::make_shared<State>()) {
  state_->main = &main;
}

MainGate::~MainGate() {
  const std::lock_guard lock(state_->mutex);
  state_->main = nullptr;
}

void MainGate::Pass::operator()(std::function<void()> task) const {
  Turn turn;
  {
    // Held while posting, which runs nothing, so that the loop cannot end in between.
    const std::lock_guard lock(state_->mutex);
    if (state_->main == nullptr) return;
    if (!state_->main->isCurrent()) {
      state_->main->async([state = state_, task = std::move(task)] {
        if (state->main != nullptr) task();
      });
      return;
    }
    turn = state_->main->enter();
  }
  task();  // on the main thread nobody can close the gate meanwhile
}

}  // namespace orlan
