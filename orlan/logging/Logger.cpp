#include "orlan/logging/Logger.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <vector>

#include "orlan/base/Time.hpp"
#include "orlan/base/text.hpp"
#include "orlan/logging/LogFile.hpp"

namespace orlan {
namespace {

/// Formatting a date costs more than the rest of a line, and most lines share their second with the one
/// before. A plain record, so that threads and late static destructors may log too.
struct Stamp {
  std::chrono::sys_seconds second;
  std::array<char, 40> text;
  std::size_t length = 0;
};

/// "[2025-03-14T09:26:53Z] [", valid until the next call on the same thread.
std::string_view lineStart(TimePoint now) {
  thread_local Stamp stamp;
  const auto second = std::chrono::floor<std::chrono::seconds>(now);
  if (stamp.length == 0 || stamp.second != second) {
    const std::string text = "[" + isoDateTime(now) + "] [";
    stamp.second = second;
    stamp.length = std::min(text.size(), stamp.text.size());
    std::copy_n(text.begin(), stamp.length, stamp.text.begin());
  }
  return {stamp.text.data(), stamp.length};
}

constexpr std::string_view kLevelEnd = "] ";

}  // namespace

Logger::Logger(Clock& clock, Console& console, FileSystem& files, Queues& queues)
    : clock_(clock), console_(console), files_(files), queues_(queues) {}

Logger::~Logger() = default;

void Logger::log(std::string_view message) {
  write("INFO", {&message, 1});
}
void Logger::warn(std::string_view message) {
  write("WARN", {&message, 1});
}
void Logger::error(std::string_view message) {
  write("ERROR", {&message, 1});
}
void Logger::breadcrumb(std::string_view message) {
  write("•", {&message, 1});
}
void Logger::breadcrumbs(std::span<const std::string_view> messages) {
  write("•", messages);
}

std::string Logger::logFileURL() {
  return file().path();
}

void Logger::clear() {
  file().clear();
}

Logger::File& Logger::file() {
  std::call_once(opened_, [this] { file_ = std::make_unique<File>(files_, queues_); });
  return *file_;
}

void Logger::write(std::string_view level, std::span<const std::string_view> messages) {
  if (messages.empty()) return;
  File& file = this->file();
  const auto start = lineStart(clock_.now());

  const std::string prefix = std::string(start).append(level).append(kLevelEnd);
  std::size_t size = messages.size() * (prefix.size() + 1);
  for (const auto message : messages) size += message.size();
  std::string text(size, '\n');
  std::vector<ConsoleLine> lines(messages.size());
  char* at = text.data();
  auto* next = lines.data();
  for (const auto message : messages) {
    char* const from = at;
    at = std::copy_n(prefix.data(), prefix.size(), at);
    at = std::copy_n(message.data(), message.size(), at) + 1;
    *next++ = {level, message, {from, static_cast<std::size_t>(at - from)}};
  }

  console_.print(lines);
  if (text::isUtf8(text)) return file.append(text);
  for (const auto& line : lines) {  // whatever a broken line holds, it does not take its neighbours with it
    if (text::isUtf8(line.text)) file.append(line.text);
  }
}

}  // namespace orlan
