#include "tools/orlan/backend/Exchange.hpp"

#include <fmt/format.h>

#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"

namespace orlan::devbackend {
namespace {

std::string subject(const Exchange& exchange) {
  if (exchange.request.method.empty()) return "no HTTP request";
  return text::escapedControls(fmt::format("{} {}", exchange.request.method, exchange.request.target));
}

}  // namespace

std::string recordLine(const Exchange& exchange) {
  const auto& request = exchange.request;
  json::Array headers;
  for (const auto& [name, value] : request.headers) headers.push_back(json::Array{name, value});
  json::Object line{{"id", exchange.id},
                    {"at", exchange.at},
                    {"method", request.method},
                    {"path", request.target},
                    {"headers", std::move(headers)}};
  if (text::isUtf8(request.body)) {
    line.set("body", request.body);
  } else {
    line.set("bodyBase64", text::base64(request.body));
  }
  line.set("status", exchange.status ? json::Value(*exchange.status) : json::Value());
  line.set("faults", json::Array(exchange.faults.begin(), exchange.faults.end()));
  line.set("problems", json::Array(exchange.problems.begin(), exchange.problems.end()));
  return text::escapedControls(json::print(line));  // JSON has the same escapes
}

std::string describe(const Exchange& exchange) {
  auto line = subject(exchange);
  line += exchange.status ? fmt::format(" {}", *exchange.status) : " no answer";
  if (!exchange.faults.empty()) {
    line += fmt::format(" (fault {})", text::escapedControls(text::joined(exchange.faults, ", ")));
  }
  return line;
}

std::vector<std::string> complaints(const Exchange& exchange) {
  std::vector<std::string> lines;
  for (const auto& problem : exchange.problems) {
    lines.push_back(fmt::format("{}: {}", subject(exchange), text::escapedControls(problem)));
  }
  return lines;
}

}  // namespace orlan::devbackend
