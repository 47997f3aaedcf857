#include "tools/orlan/backend/Faults.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "orlan/base/text.hpp"
#include "tools/orlan/backend/Files.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {
namespace {

constexpr double longestDelay = 3600.0;
constexpr std::int64_t mostBytes = 1'000'000'000;

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
  if (star == std::string_view::npos || star + 1 == rest.size()) return true;
  const auto count = rest.substr(star + 1);
  if (count.find_first_not_of("0123456789") != std::string_view::npos) return true;
  const auto times = integerIn(count, 1, 1'000'000);
  if (!times) return false;
  fault.times = static_cast<int>(*times);
  rest = rest.substr(0, star);
  return true;
}

/// What is wrong with the argument of a kind; nothing when it was read.
std::optional<std::string> readArgument(std::string_view kind, std::optional<std::string_view> argument,
                                        Fault& fault) {
  const auto given = argument.value_or(std::string_view());
  if (kind == "status") {
    fault.kind = Fault::Kind::status;
    const auto status = integerIn(given, 200, 599);
    if (!status) return "expected status:200 to status:599";
    fault.status = static_cast<int>(*status);
  } else if (kind == "delay") {
    fault.kind = Fault::Kind::delay;
    const auto delay = text::toDouble(given);
    if (!delay || !(*delay >= 0.0 && *delay <= longestDelay))
      return "expected delay:0 to delay:3600 (seconds)";
    fault.delay = fromSeconds(*delay);
  } else if (kind == "cut") {
    fault.kind = Fault::Kind::cut;
    const auto bytes = argument ? integerIn(given, 0, mostBytes) : std::optional<std::int64_t>(0);
    if (!bytes) return "expected cut or cut:BYTES";
    fault.bytes = static_cast<std::size_t>(*bytes);
  } else if (kind == "body" || kind == "raw") {
    fault.kind = kind == "raw" ? Fault::Kind::raw : Fault::Kind::body;
    if (!argument) return fmt::format("expected {0}:TEXT or {0}:@FILE", kind);
    fault.text = given;
    if (!given.starts_with('@')) return std::nullopt;
    auto content = readFile(std::string(given.substr(1)));
    if (!content) return content.error().description;
    fault.text = std::move(content).value();
  } else {
    return "expected status, delay, cut, body or raw behind the \"=\"";
  }
  return std::nullopt;
}

}  // namespace

Result<Fault> parseFault(std::string_view text) {
  const auto equals = text.find('=');
  if (equals == std::string_view::npos) return refused(text, "expected PATH=FAULT");
  Fault fault;
  const auto endpoint = endpointOf(text.substr(0, equals));
  if (!endpoint) {
    return refused(text, fmt::format("no such endpoint {}; there are {}", excerpt(text.substr(0, equals)),
                                     knownPaths()));
  }
  fault.endpoint = *endpoint;
  auto rest = text.substr(equals + 1);
  if (!takeTimes(rest, fault)) return refused(text, "expected *1 to *1000000 at the end");
  fault.name = rest;
  const auto colon = rest.find(':');
  const auto kind = rest.substr(0, colon);
  const auto argument =
      colon == std::string_view::npos ? std::nullopt : std::optional(rest.substr(colon + 1));
  if (const auto problem = readArgument(kind, argument, fault)) return refused(text, *problem);
  return fault;
}

Strike Faults::take(Endpoint endpoint) {
  const std::scoped_lock lock(mutex_);
  Strike strike;
  std::vector<Fault::Kind> struck;
  for (auto& fault : faults_) {
    const bool usedUp = fault.times && *fault.times == 0;
    if (fault.endpoint != endpoint || usedUp) continue;
    if (std::find(struck.begin(), struck.end(), fault.kind) != struck.end()) continue;
    struck.push_back(fault.kind);
    if (fault.times) --*fault.times;
    strike.names.push_back(fault.name);
    switch (fault.kind) {
      case Fault::Kind::status:
        strike.status = fault.status;
        break;
      case Fault::Kind::delay:
        strike.delay = fault.delay;
        break;
      case Fault::Kind::cut:
        strike.cutAfter = fault.bytes;
        break;
      case Fault::Kind::body:
        strike.body = fault.text;
        break;
      case Fault::Kind::raw:
        strike.raw = fault.text;
        break;
    }
  }
  return strike;
}

}  // namespace orlan::devbackend
