#pragma once

#include <functional>
#include <string_view>
#include <thread>

namespace orlan::linuxphone {

/// Starts a thread of the phone's own. It takes no signals: those belong to the main thread, and a peer that
/// hangs up must not raise SIGPIPE here. `name` shows in debuggers, cut to what the system keeps.
[[nodiscard]] std::thread startThread(std::string_view name, std::function<void()> body);

}  // namespace orlan::linuxphone
