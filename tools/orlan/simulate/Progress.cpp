#include "tools/orlan/simulate/Progress.hpp"

#include <fmt/format.h>

namespace orlan::simulate {
namespace {

constexpr std::size_t longPlay = 1000;  // moments; a shorter one is over before anybody has read the line

}  // namespace

void Progress::passed(std::size_t done, std::size_t all) {
  if (terminal_ == nullptr || all < longPlay) return;
  const std::size_t percent = 100 * done / all;
  if (percent == shown_) return;
  shown_ = percent;
  fmt::print(terminal_, "\r\033[K{} % played", percent);
  std::fflush(terminal_);
}

void Progress::clear() {
  if (shown_ == 0) return;
  shown_ = 0;
  fmt::print(terminal_, "\r\033[K");
  std::fflush(terminal_);
}

}  // namespace orlan::simulate
