#include "tools/orlan/backend/HeaderCheck.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "orlan/base/ascii.hpp"

namespace orlan::devbackend {
namespace {

constexpr std::array appScoped{"x-company-api-key", "x-app-id", "x-app-api-key", "x-app-identifier"};
constexpr std::array transport{"Host",       "Content-Length",  "Transfer-Encoding", "Connection",
                               "User-Agent", "Accept-Encoding", "Accept-Language"};

bool isTransport(std::string_view name) {
  return std::any_of(transport.begin(), transport.end(),
                     [&](auto known) { return ascii::equalsIgnoringCase(name, known); });
}

bool isTransmission(Endpoint endpoint) {
  return endpoint == Endpoint::configuration || endpoint == Endpoint::geofenceCheck;
}

bool isAppScoped(const Request& request) {
  return std::any_of(appScoped.begin(), appScoped.end(),
                     [&](auto name) { return findHeader(request, name) != nullptr; });
}

void addContentHeaders(Endpoint endpoint, std::vector<ExpectedHeader>& list) {
  constexpr ExpectedHeader json{"Content-Type", "application/json"};
  constexpr ExpectedHeader acceptsJson{"Accept", "application/json"};
  switch (endpoint) {
    case Endpoint::registration:
    case Endpoint::surveyResponse:
    case Endpoint::geofenceCheck:
      list.insert(list.end(), {json, acceptsJson});
      break;
    case Endpoint::segments:
      list.push_back(json);
      break;
    case Endpoint::activities:
      list.push_back({"Content-Type"});  // its boundary is the multipart check's affair
      break;
    case Endpoint::pluginActivity:
      list.push_back({"Content-Type", "application/x-www-form-urlencoded"});
      break;
    case Endpoint::configuration:
      list.push_back(acceptsJson);
      break;
  }
}

std::string names(const std::vector<std::string_view>& list) {
  return fmt::format("{}", fmt::join(list, ", "));
}

void checkOrder(const Request& request, const std::vector<ExpectedHeader>& expected, Problems& problems) {
  std::vector<std::string_view> arrived;
  for (const auto& [name, value] : request.headers) {
    for (const auto& header : expected) {
      if (!ascii::equalsIgnoringCase(name, header.name)) continue;
      if (std::find(arrived.begin(), arrived.end(), header.name) == arrived.end()) {
        arrived.push_back(header.name);
      }
    }
  }
  std::vector<std::string_view> wanted;
  for (const auto& header : expected) {
    if (std::find(arrived.begin(), arrived.end(), header.name) != arrived.end()) {
      wanted.push_back(header.name);
    }
  }
  if (arrived != wanted) {
    problems.push_back(
        fmt::format("headers: expected in the order {}, found {}", names(wanted), names(arrived)));
  }
}

void checkOne(const Request& request, const ExpectedHeader& expected, Problems& problems) {
  int count = 0;
  for (const auto& [name, value] : request.headers) {
    if (!ascii::equalsIgnoringCase(name, expected.name)) continue;
    ++count;
    if (name != expected.name) {
      problems.push_back(fmt::format("header {}: spelled {}", expected.name, excerpt(name)));
    }
    if (expected.value && value != *expected.value) {
      problems.push_back(fmt::format("header {}: expected \"{}\", found {}", expected.name, *expected.value,
                                     excerpt(value)));
    }
  }
  if (count == 0) problems.push_back(fmt::format("header {}: missing", expected.name));
  if (count > 1) problems.push_back(fmt::format("header {}: sent {} times", expected.name, count));
}

}  // namespace

std::vector<ExpectedHeader> expectedHeaders(Endpoint endpoint, const Request& request) {
  std::vector<ExpectedHeader> list;
  addContentHeaders(endpoint, list);
  if (!isTransmission(endpoint)) {
    list.push_back({"ApiKey"});
    return list;
  }
  const bool scoped = isAppScoped(request);
  if (scoped) {
    for (const auto* name : appScoped) list.push_back({name});
    list.push_back({"x-platform", "ios"});
  }
  if (!scoped || findHeader(request, "x-api-key") != nullptr) list.push_back({"x-api-key"});
  return list;
}

void checkHeaders(const Request& request, const std::vector<ExpectedHeader>& expected, Problems& problems) {
  for (const auto& [name, value] : request.headers) {
    const auto isIt = [&name = name](const ExpectedHeader& header) {
      return ascii::equalsIgnoringCase(name, header.name);
    };
    if (!isTransport(name) && std::none_of(expected.begin(), expected.end(), isIt)) {
      problems.push_back(fmt::format("header {}: does not belong to this request", excerpt(name)));
    }
  }
  for (const auto& header : expected) checkOne(request, header, problems);
  checkOrder(request, expected, problems);
}

void checkKeys(Endpoint endpoint, const Request& request, Problems& problems) {
  const bool scoped = isTransmission(endpoint) && isAppScoped(request);
  if (!scoped) {
    const char* name = isTransmission(endpoint) ? "x-api-key" : "ApiKey";
    const auto* key = findHeader(request, name);
    if (key != nullptr && key->empty()) {
      problems.push_back(fmt::format("header {}: empty, so nobody knows who asks", name));
    }
    return;
  }
  for (const auto* name : appScoped) {
    const auto* value = findHeader(request, name);
    if (value != nullptr && value->empty()) {
      problems.push_back(fmt::format("header {}: empty; without it only x-api-key may be sent", name));
    }
  }
  const auto* legacy = findHeader(request, "x-api-key");
  const auto* company = findHeader(request, "x-company-api-key");
  if (legacy != nullptr && company != nullptr && *legacy != *company) {
    problems.push_back("header x-api-key: differs from x-company-api-key");
  }
}

bool hasKey(Endpoint endpoint, const Request& request) {
  const auto isThere = [&](std::string_view name) {
    const auto* value = findHeader(request, name);
    return value != nullptr && !value->empty();
  };
  if (!isTransmission(endpoint)) return isThere("ApiKey");
  return isAppScoped(request) ? isThere("x-company-api-key") : isThere("x-api-key");
}

}  // namespace orlan::devbackend
