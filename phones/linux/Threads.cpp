#include "phones/linux/Threads.hpp"

#include <pthread.h>

#include <csignal>
#include <string>
#include <utility>

namespace orlan::linuxphone {

std::thread startThread(std::string_view name, std::function<void()> body) {
  // A thread inherits the mask of its maker, so there is no moment in which it could take a signal.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  std::thread thread(std::move(body));
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  pthread_setname_np(thread.native_handle(), std::string(name.substr(0, 15)).c_str());
  return thread;
}

}  // namespace orlan::linuxphone
