#include "tools/orlan/backend/Verdict.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"
#include "tools/orlan/backend/Formats.hpp"

namespace orlan::devbackend {
namespace {

constexpr std::array appScoped{Field{"x-company-api-key", filled}, Field{"x-app-id", filled},
                               Field{"x-app-api-key", filled}, Field{"x-app-identifier", filled},
                               Field{"x-platform", {"ios"}}};
constexpr std::array<std::string_view, 7> transport{"Host",           "Content-Length", "Transfer-Encoding",
                                                    "Connection",     "User-Agent",     "Accept-Encoding",
                                                    "Accept-Language"};

bool isAppScoped(Endpoint endpoint, const Request& request) {
  return formatOf(endpoint).isTransmission &&
         std::any_of(appScoped.begin(), appScoped.end() - 1,
                     [&](const Field& field) { return findHeader(request, field.name) != nullptr; });
}

/// The header that says who asks.
std::string_view keyHeader(Endpoint endpoint, const Request& request) {
  if (!formatOf(endpoint).isTransmission) return "ApiKey";
  return isAppScoped(endpoint, request) ? "x-company-api-key" : "x-api-key";
}

std::vector<Field> expectedHeaders(Endpoint endpoint, const Request& request) {
  const auto& own = formatOf(endpoint).headers;
  std::vector<Field> list(own.begin(), own.end());
  if (!isAppScoped(endpoint, request)) {
    list.push_back({keyHeader(endpoint, request), filled});
    return list;
  }
  list.insert(list.end(), appScoped.begin(), appScoped.end());
  if (findHeader(request, "x-api-key") != nullptr) list.push_back({"x-api-key", filled});
  return list;
}

void checkOne(const Request& request, const Field& expected, Problems& problems) {
  const auto where = fmt::format("header {}", expected.name);
  int count = 0;
  for (const auto& [name, value] : request.headers) {
    if (!ascii::equalsIgnoringCase(name, expected.name)) continue;
    ++count;
    if (name != expected.name) problems.push_back(fmt::format("{}: spelled {}", where, excerpt(name)));
    checkValue(expected.rule, where, value, problems);
  }
  if (count == 0) problems.push_back(fmt::format("{}: missing", where));
  if (count > 1) problems.push_back(fmt::format("{}: sent {} times", where, count));
}

/// Nothing stands beside the expected headers but what transport brings along.
void checkHeaders(Endpoint endpoint, const Request& request, Problems& problems) {
  const auto expected = expectedHeaders(endpoint, request);
  std::vector<std::string> wanted;
  for (const auto& field : expected) wanted.emplace_back(field.name);

  std::vector<std::ptrdiff_t> places;
  for (const auto& [name, value] : request.headers) {
    const auto isIt = [&name = name](std::string_view known) {
      return ascii::equalsIgnoringCase(name, known);
    };
    const auto place = std::find_if(wanted.begin(), wanted.end(), isIt);
    if (place != wanted.end()) {
      places.push_back(place - wanted.begin());
    } else if (std::none_of(transport.begin(), transport.end(), isIt)) {
      problems.push_back(fmt::format("header {}: does not belong to this request", excerpt(name)));
    }
  }
  for (const auto& field : expected) checkOne(request, field, problems);
  if (!std::is_sorted(places.begin(), places.end())) {
    problems.push_back(fmt::format("headers: expected in the order {}", text::joined(wanted, ", ")));
  }
  const auto* legacy = findHeader(request, "x-api-key");
  const auto* company = findHeader(request, "x-company-api-key");
  if (legacy != nullptr && company != nullptr && *legacy != *company) {
    problems.push_back("header x-api-key: differs from x-company-api-key");
  }
}

}  // namespace

Verdict judge(const Request& request) {
  const auto endpoint = endpointOf(request.target);
  const auto refused = [&](int status, std::string problem) {
    return Verdict{endpoint, status, {std::move(problem)}};
  };
  if (request.method.empty()) {
    return refused(400, fmt::format("expected an HTTP/1.1 request, found {}", excerpt(request.body)));
  }
  if (!endpoint) {
    return refused(
        404, fmt::format("path: no such endpoint {}; there are {}", excerpt(request.target), knownPaths()));
  }
  const auto& format = formatOf(*endpoint);
  if (request.method != format.method) {
    return refused(405, fmt::format("method: expected {}, found {}", format.method, excerpt(request.method)));
  }
  Verdict verdict{.endpoint = endpoint, .problems = {}};
  checkHeaders(*endpoint, request, verdict.problems);
  if (request.isWhole) {
    format.checkBody(request, verdict.problems);
  } else {
    verdict.problems.push_back("body: too large, or broken off");
  }
  const auto* given = findHeader(request, keyHeader(*endpoint, request));
  const bool hasKey = given != nullptr && !given->empty();  // a device that never registered has none
  if (!verdict.problems.empty()) verdict.status = hasKey ? 400 : 401;
  return verdict;
}

}  // namespace orlan::devbackend
