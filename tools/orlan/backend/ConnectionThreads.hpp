#pragma once

#include <atomic>
#include <functional>
#include <list>
#include <thread>

namespace orlan::devbackend {

/// A thread for each connection, so that many idle ones never keep a new one waiting. Used by the accepting
/// thread alone.
class ConnectionThreads {
 public:
  ~ConnectionThreads() { join(); }

  void run(std::function<void()> task) {
    threads_.remove_if([](One& one) {
      if (!one.done) return false;
      one.thread.join();
      return true;
    });
    auto& one = threads_.emplace_back();
    one.thread = std::thread([task = std::move(task), &one] {
      task();
      one.done = true;
    });
  }

  void join() {
    for (auto& one : threads_) one.thread.join();
    threads_.clear();
  }

 private:
  struct One {
    std::atomic<bool> done = false;
    std::thread thread;
  };
  std::list<One> threads_;
};

}  // namespace orlan::devbackend
