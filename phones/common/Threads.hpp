#pragma once

#include <functional>
#include <string_view>
#include <thread>

namespace orlan::phone {

/// Starts a thread of the phone's own. What interrupts a process from outside (SIGINT, SIGCHLD, a timer) is
/// left to the host's threads, and a peer that hangs up raises no SIGPIPE here; what a fault raises (SIGSEGV
/// and its kind, SIGABRT) reaches the host's handler. `name` shows in debuggers, cut to what the system
/// keeps.
[[nodiscard]] std::thread startThread(std::string_view name, std::function<void()> body);

}  // namespace orlan::phone
