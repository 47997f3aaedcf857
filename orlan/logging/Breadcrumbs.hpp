#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace orlan {

class Logger;

/// Breadcrumbs of one moment, by the thousand: the same lines as of `Logger::breadcrumb`, made for the price
/// of copying them. Only for texts of the library's own making: nobody checks that they are UTF-8 without
/// line breaks. One thread.
class Breadcrumbs {
 public:
  /// Ready lines, to be added many times.
  struct Lines {
    std::string text;
    std::size_t count = 0;
  };

  explicit Breadcrumbs(Logger& logger);

  [[nodiscard]] Lines lines(std::initializer_list<std::string_view> messages) const;

  /// The line of that message, then the ready ones. What has gathered is written now and then.
  void add(std::string_view message, const Lines& ready);

  /// Writes what has gathered.
  void write();

 private:
  Logger& logger_;
  const std::string start_;  // of every line, up to its message
  Lines gathered_;
};

}  // namespace orlan
