#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <string>

namespace orlan::run::test {

/// A process of its own at a terminal of its own, and the person in front of it.
class Terminal {
 public:
  explicit Terminal(const std::function<int()>& program) {
    process_ = forkpty(&end_, nullptr, nullptr, nullptr);
    if (process_ == 0) _exit(program());
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() { close(end_); }

  /// Reads what is printed until this is there, and answers it.
  void converse(std::string_view printed, std::string_view typed) {
    std::array<char, 4096> bytes;
    while (seen_.find(printed) == std::string::npos) {
      pollfd readable{end_, POLLIN, 0};
      const ssize_t count = poll(&readable, 1, 20000) == 1 ? read(end_, bytes.data(), bytes.size()) : 0;
      ASSERT_GT(count, 0) << "not printed: " << printed << "\n" << seen_;
      seen_.append(bytes.data(), static_cast<std::size_t>(count));
    }
    seen_.clear();
    ASSERT_EQ(write(end_, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
  }

  /// Its exit status, -1 when it did not exit.
  int wait() {
    int status = 0;
    waitpid(process_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  int end_ = -1;
  pid_t process_ = -1;
  std::string seen_;
};

}  // namespace orlan::run::test
