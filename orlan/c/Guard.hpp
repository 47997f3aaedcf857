#pragma once

#include <exception>
#include <string>

#include "orlan/c/types.h"

/// The border between C and C++: what is thrown inside ends here as a status.
namespace orlan::c {

/// A mistake of the caller's, on its way to the border.
struct Misuse {
  orlan_status status;
  std::string problem;
};

/// Counts, on each thread, how deep the host is inside the library or the library inside the host.
class Inside {
 public:
  Inside() { ++depth; }
  ~Inside() { --depth; }
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;

  [[nodiscard]] static bool any() { return depth > 0; }

 private:
  static thread_local int depth;
};

/// Marks, on each thread, that the library waits inside a function of the host's phone, which is no moment
/// for anything but answers.
class InsideTable {
 public:
  InsideTable() { ++depth; }
  ~InsideTable() { --depth; }
  InsideTable(const InsideTable&) = delete;
  InsideTable& operator=(const InsideTable&) = delete;

  /// A `Misuse` inside such a function.
  static void refuse() {
    if (depth > 0) throw Misuse{ORLAN_BUSY, "inside a function of the phone"};
  }

 private:
  static thread_local int depth;
  const Inside inside_;
};

/// Keeps the words for `orlan_last_problem` and gives the status back.
orlan_status note(const char* function, orlan_status status, const char* problem) noexcept;

/// Runs the body of an exported function.
template <class Body>
orlan_status guarded(const char* function, Body&& body) noexcept {
  const Inside inside;
  try {
    body();
    return ORLAN_OK;
  } catch (const Misuse& misuse) {
    return note(function, misuse.status, misuse.problem.c_str());
  } catch (const std::exception& failure) {
    return note(function, ORLAN_FAILED, failure.what());
  } catch (...) {
    return note(function, ORLAN_FAILED, "unknown failure");
  }
}

/// Calls a function of the host's; NULL is nobody and answers zero. It must not throw: noexcept turns that
/// into a clear end.
template <class R, class... Parameters, class... Args>
R call(R (*function)(Parameters...), Args... args) noexcept {
  if (function == nullptr) return R();
  const Inside inside;
  return function(args...);
}

/// The same for a function of the host's phone.
template <class R, class... Parameters, class... Args>
R ask(R (*function)(Parameters...), Args... args) noexcept {
  if (function == nullptr) return R();
  const InsideTable inside;
  return function(args...);
}

/// For work whose failure has nobody to be told, such as a value that no memory is left for.
template <class Body>
void quietly(Body&& body) noexcept {
  try {
    body();
  } catch (...) {  // NOLINT(bugprone-empty-catch): stated above
  }
}

template <class T>
T& needed(T* pointer, const char* name) {
  if (pointer == nullptr) throw Misuse{ORLAN_INVALID_ARGUMENT, std::string(name) + " is NULL"};
  return *pointer;
}

}  // namespace orlan::c
