#include "tools/orlan/run/Script.hpp"

#include <fmt/format.h>

#include "orlan/base/text.hpp"
#include "tools/orlan/backend/Files.hpp"

namespace orlan::run {

namespace {

constexpr std::string_view form =
    R"(expected "MINUTES:SECONDS COMMAND", "HOURS:MINUTES:SECONDS COMMAND" or "end COMMAND")";

std::optional<std::int64_t> wholeNumber(std::string_view digits, std::int64_t below) {
  if (digits.empty() || digits.size() > 4 ||
      digits.find_first_not_of("0123456789") != std::string_view::npos) {
    return std::nullopt;
  }
  const auto value = text::toInteger(digits);
  return value && *value < below ? value : std::nullopt;
}

/// "31:07" or "1:02:03".
std::optional<Duration> timeOf(std::string_view text) {
  Duration sum{};
  int parts = 0;
  for (std::size_t begin = 0; begin <= text.size(); ++parts) {
    const std::size_t end = std::min(text.find(':', begin), text.size());
    const auto part = wholeNumber(text.substr(begin, end - begin), parts == 0 ? 10000 : 60);
    if (!part) return std::nullopt;
    sum = sum * 60 + std::chrono::seconds(*part);
    begin = end + 1;
  }
  return parts == 2 || parts == 3 ? std::optional(sum) : std::nullopt;
}

Result<ScriptLine> parseLine(std::string_view line) {
  const auto wrong = [](const std::string& what) { return Unexpected(Error{"orlan run", 2, what}); };
  const std::size_t blank = line.find(' ');
  const std::string_view when = line.substr(0, blank);
  ScriptLine parsed;
  if (when != "end") {
    parsed.at = timeOf(when);
    if (!parsed.at) return wrong(std::string(form));
  }
  if (blank == std::string_view::npos) return wrong(std::string(form));
  auto command = readCommand(text::trimmed(line.substr(blank)));
  if (!command) return Unexpected(command.error());
  parsed.command = std::move(command).value();
  return parsed;
}

/// Whether a line for `a` may not stand after one for `b`.
bool isBefore(const std::optional<Duration>& a, const std::optional<Duration>& b) {
  return a && (!b || *a < *b);
}

}  // namespace

Result<Script> parseScript(std::string_view text, const std::string& name) {
  Script script;
  std::size_t number = 0;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    const std::string_view whole = text.substr(begin, end - begin);
    begin = end + 1;
    ++number;
    const auto line = text::trimmed(whole.substr(0, whole.find('#')));
    if (line.empty()) continue;
    auto parsed = parseLine(line);
    if (parsed && !script.empty() && isBefore(parsed->at, script.back().at)) {
      parsed = Unexpected(Error{"orlan run", 2, "earlier than the line before it"});
    }
    if (!parsed) {
      return Unexpected(
          Error{"orlan run", 2, fmt::format("{}: line {}: {}", name, number, parsed.error().description)});
    }
    script.push_back(std::move(parsed).value());
  }
  return script;
}

Result<Script> readScript(const std::string& path) {
  const auto text = devbackend::readFile(path);
  if (!text) return Unexpected(text.error());
  return parseScript(*text, path);
}

}  // namespace orlan::run
