#include "bench/Child.hpp"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace orlan::bench {
namespace {

/// The process's own account, in bytes by name.
std::map<std::string, double> account() {
  std::map<std::string, double> values;
  std::ifstream file("/proc/self/status");
  std::string line;
  while (std::getline(file, line)) {
    const auto colon = line.find(':');
    if (line.starts_with("Vm")) values[line.substr(0, colon)] = std::stod(line.substr(colon + 1)) * 1024.0;
  }
  return values;
}

}  // namespace

void apart(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child < 0) std::abort();
  if (child == 0) {
    work();
    _exit(0);
  }
  int status = 0;
  if (waitpid(child, &status, 0) != child || status != 0) std::abort();
}

void Meter::start() {
  malloc_trim(0);                                 // what preparing has freed counts when it is used again
  std::ofstream("/proc/self/clear_refs") << "5";  // the peak of the pages begins anew
  before_ = account();
}

void Meter::stop() {
  auto after = account();
  const Memory used{after["VmPeak"] - before_["VmSize"], after["VmHWM"] - before_["VmRSS"],
                    after["VmRSS"] - before_["VmRSS"]};
  _exit(write(result_, &used, sizeof used) == sizeof used ? 0 : 1);
}

Memory inChild(const std::function<void(Meter&)>& work) {
  int ends[2];
  if (pipe(ends) != 0) std::abort();
  apart([&] {
    Meter meter(ends[1]);
    work(meter);
    std::abort();  // never stopped
  });
  Memory result;
  if (read(ends[0], &result, sizeof result) != sizeof result) std::abort();
  close(ends[0]);
  close(ends[1]);
  return result;
}

}  // namespace orlan::bench
