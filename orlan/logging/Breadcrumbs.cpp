#include "orlan/logging/Breadcrumbs.hpp"

#include "orlan/logging/Logger.hpp"

namespace orlan {
namespace {

constexpr std::size_t writtenAtOnce = 16 * 1024;  // small enough for the nearest cache

}  // namespace

Breadcrumbs::Breadcrumbs(Logger& logger) : logger_(logger), start_(logger.breadcrumbStart()) {
  gathered_.text.reserve(writtenAtOnce + 1024);
}

Breadcrumbs::Lines Breadcrumbs::lines(std::initializer_list<std::string_view> messages) const {
  Lines made{{}, messages.size()};
  for (const auto message : messages) made.text.append(start_).append(message).append("\n");
  return made;
}

void Breadcrumbs::add(std::string_view message, const Lines& ready) {
  gathered_.text.append(start_).append(message).append("\n").append(ready.text);
  gathered_.count += 1 + ready.count;
  if (gathered_.text.size() >= writtenAtOnce) write();
}

void Breadcrumbs::write() {
  if (gathered_.count == 0) return;
  logger_.write({"•", gathered_.text, start_.size(), gathered_.count}, true);
  gathered_.text.clear();
  gathered_.count = 0;
}

}  // namespace orlan
