#include "tools/orlan/backend/Faults.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "orlan/base/text.hpp"
#include "tools/orlan/backend/Files.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {
namespace {

Unexpected<Error> refused(std::string_view text, std::string_view why) {
  return Unexpected(Error{"orlan backend", -1, fmt::format("fault {}: {}", excerpt(text), why)});
}

std::optional<std::int64_t> integerIn(std::string_view text, std::int64_t least, std::int64_t most) {
  const auto value = text::toInteger(text);
  return value && *value >= least && *value <= most ? value : std::nullopt;
}

/// Takes `*COUNT` off the end; false when there is a count that is none.
bool takeTimes(std::string_view& rest, Fault& fault) {
  const auto star = rest.rfind('*');
  const auto count = star == std::string_view::npos ? std::string_view() : rest.substr(star + 1);
  if (count.empty() || count.find_first_not_of("0123456789") != std::string_view::npos) return true;
  fault.times = integerIn(count, 1, 1'000'000);
  rest = rest.substr(0, star);
  return fault.times.has_value();
}

std::optional<std::string> readNumber(std::optional<std::int64_t> number, const char* expected,
                                      Fault& fault) {
  if (!number) return expected;
  fault.number = *number;
  return std::nullopt;
}

std::optional<std::string> readDelay(std::string_view given, Fault& fault) {
  const auto delay = text::toDouble(given);
  if (!delay || !(*delay >= 0.0 && *delay <= 3600.0)) return "expected delay:0 to delay:3600 (seconds)";
  fault.delay = fromSeconds(*delay);
  return std::nullopt;
}

std::optional<std::string> readText(std::string_view given, Fault& fault) {
  fault.text = given;
  if (!given.starts_with('@')) return std::nullopt;
  auto content = readFile(std::string(given.substr(1)));
  if (!content) return content.error().description;
  fault.text = std::move(content).value();
  return std::nullopt;
}

/// KIND or KIND:ARGUMENT. What is wrong with it; nothing when it was read.
std::optional<std::string> readKind(std::string_view text, Fault& fault) {
  constexpr std::array<std::string_view, 5> kinds{"status", "delay", "cut", "body", "raw"};
  const auto colon = std::min(text.find(':'), text.size());
  const auto kind = std::find(kinds.begin(), kinds.end(), text.substr(0, colon));
  if (kind == kinds.end()) return "expected status, delay, cut, body or raw behind the \"=\"";
  fault.kind = static_cast<Fault::Kind>(kind - kinds.begin());
  const bool isAlone = colon == text.size();
  const auto given = isAlone ? std::string_view() : text.substr(colon + 1);
  switch (fault.kind) {
    case Fault::Kind::status:
      return readNumber(integerIn(given, 200, 599), "expected status:200 to status:599", fault);
    case Fault::Kind::delay:
      return readDelay(given, fault);
    case Fault::Kind::cut:
      return readNumber(integerIn(isAlone ? "0" : given, 0, 1'000'000'000), "expected cut or cut:BYTES",
                        fault);
    case Fault::Kind::body:
    case Fault::Kind::raw:
      break;
  }
  return isAlone ? fmt::format("expected {0}:TEXT or {0}:@FILE", *kind) : readText(given, fault);
}

}  // namespace

Result<Fault> parseFault(std::string_view text) {
  auto rest = text;
  const auto endpoint = takeEndpoint(rest);
  if (!endpoint) return refused(text, endpoint.error().description);
  Fault fault{.endpoint = *endpoint};
  if (!takeTimes(rest, fault)) return refused(text, "expected *1 to *1000000 at the end");
  fault.name = rest;
  if (const auto problem = readKind(rest, fault)) return refused(text, *problem);
  return fault;
}

Strike takeStrike(std::vector<Fault>& faults, Endpoint endpoint) {
  Strike strike;
  for (auto& fault : faults) {
    if (fault.endpoint != endpoint || fault.times == 0) continue;
    if (strike.emplace(fault.kind, fault).second && fault.times) --*fault.times;
  }
  return strike;
}

}  // namespace orlan::devbackend
