#pragma once

#include <memory>
#include <utility>

namespace orlan {

/// Lets a callback find out whether the object it captured is still there. A member, declared last, so that
/// it ends first. Owner and checks belong to one thread; a token may travel.
///
///     main_.async([this, alive = lifetime_.token()] { if (alive) finish(); });
class Lifetime {
 public:
  class Token {
   public:
    explicit operator bool() const { return !flag_.expired(); }

   private:
    friend class Lifetime;
    explicit Token(std::weak_ptr<const char> flag) : flag_(std::move(flag)) {}
    std::weak_ptr<const char> flag_;
  };

  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  [[nodiscard]] Token token() const { return Token(flag_); }

 private:
  std::shared_ptr<const char> flag_ = std::make_shared<const char>('\0');
};

}  // namespace orlan
