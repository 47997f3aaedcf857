#include "phones/common/Threads.hpp"

#include <csignal>
#include <string>
#include <utility>

namespace orlan::phone {

std::thread startThread(std::string_view name, std::function<void()> body) {
  sigset_t blocked;
  sigfillset(&blocked);
  for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS})
    sigdelset(&blocked, fault);
  // A thread inherits the mask of its maker, so there is no moment in which it could take a signal.
  sigset_t before;
  pthread_sigmask(SIG_SETMASK, &blocked, &before);
  std::thread thread(std::move(body));
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
#ifdef __linux__
  pthread_setname_np(thread.native_handle(), std::string(name.substr(0, 15)).c_str());
#endif
  return thread;
}

}  // namespace orlan::phone
