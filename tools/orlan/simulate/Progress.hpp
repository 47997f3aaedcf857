#pragma once

#include <cstddef>
#include <cstdio>

namespace orlan::simulate {

/// A line on a terminal that says how far a long play has come; gone when it ends.
class Progress {
 public:
  /// `terminal`: null shows nothing.
  explicit Progress(std::FILE* terminal) : terminal_(terminal) {}
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// `done` of `all` moments have been played.
  void passed(std::size_t done, std::size_t all);

  void clear();

 private:
  std::FILE* terminal_;
  std::size_t shown_ = 0;  // per cent; 0: no line is there
};

}  // namespace orlan::simulate
