#pragma once

#include <cstdint>
#include <string>

namespace orlan {

/// What went wrong, as a value: who says so, which case it is, and words for a person.
/// Made in one place per folder (such as `backend/Errors.hpp`), never scattered as literals.
struct Error {
  std::string domain;
  std::int64_t code = -1;
  std::string description;

  friend bool operator==(const Error&, const Error&) = default;
};

}  // namespace orlan
