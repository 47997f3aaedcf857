#include "orlan/base/text.hpp"
#include "tools/orlan/simulate/keys.hpp"
#include "tools/orlan/simulate/readers.hpp"

namespace orlan::simulate {
namespace {

std::string readBase64(const Item& item) {
  auto bytes = text::fromBase64(item.string());
  if (!bytes) item.expected("base64 text");
  return bytes.value_or("");
}

std::string readBodyFile(const Item& item, const Files& files) {
  const auto bytes = files.read(item.string());
  if (!bytes) item.mistaken("cannot read " + json::print(item.value()) + ": " + bytes.error().description);
  return bytes.value_or("");
}

std::optional<std::string> readBody(const Members& response, const Files& files) {
  response.excludes("json", {"text", "base64", "file"});
  response.excludes("text", {"base64", "file"});
  response.excludes("base64", {"file"});
  if (const Item body = response["json"]; body.isThere()) return json::print(body.value());
  if (const Item body = response["text"]; body.isThere()) return body.string();
  if (const Item body = response["base64"]; body.isThere()) return readBase64(body);
  if (const Item body = response["file"]; body.isThere()) return readBodyFile(body, files);
  return std::nullopt;
}

std::vector<HttpHeader> readHeaders(const Item& item) {
  std::vector<HttpHeader> headers;
  if (!item.isThere()) return headers;
  for (const auto& [name, value] : item.entries()) headers.emplace_back(name, value.string());
  return headers;
}

sim::HttpAnswer readFault(const Item& error) {
  using Make = sim::HttpAnswer (*)();
  return error.oneOf<Make>({{"timeout", &sim::HttpAnswer::timeout},
                            {"unreachable", &sim::HttpAnswer::unreachable},
                            {"cancelled", &sim::HttpAnswer::cancelled},
                            {"notHTTP", &sim::HttpAnswer::notHttp}})();
}

sim::HttpAnswer readAnswer(const Item& item, const Files& files) {
  const Members members = item.members(keys::response);
  members.excludes("error", {"status", "headers", "json", "text", "base64", "file"});
  const Item status = members["status"];
  const sim::HttpAnswer answer =
      members.has("error")
          ? readFault(members["error"])
          : sim::HttpAnswer::reply(status.isThere() ? static_cast<int>(status.integer(100, 999)) : 200,
                                   readBody(members, files), readHeaders(members["headers"]));
  const Item delay = members["delay"];
  return delay.isThere() ? answer.after(delay.time()) : answer;
}

Route readRoute(const Item& item, const Files& files) {
  const Members members = item.members(keys::route);
  Route route{members["method"].string(), members["path"].string(), {}};
  const auto responses = members["responses"].elements();
  if (responses.empty()) members["responses"].mistaken("expected at least one response");
  for (const Item& response : responses) route.answers.push_back(readAnswer(response, files));
  return route;
}

void readFamily(const Item& family, BaseUrls& urls,
                Result<void> (BaseUrls::*set)(Config::Environment, std::string)) {
  if (!family.isThere()) return;
  std::vector<std::string_view> names;
  for (const auto environment : allCases<Config::Environment>()) names.push_back(rawValue(environment));
  const Members members = family.members(names);
  for (const auto environment : allCases<Config::Environment>()) {
    const Item item = members[rawValue(environment)];
    if (!item.isThere()) continue;
    if (const auto kept = (urls.*set)(environment, item.string()); !kept) {
      item.mistaken(kept.error().description);
    }
  }
}

}  // namespace

std::vector<Route> readBackend(const Item& backend, const Files& files) {
  std::vector<Route> routes;
  if (!backend.isThere()) return routes;
  for (const Item& route : backend.elements()) routes.push_back(readRoute(route, files));
  return routes;
}

BaseUrls readHosts(const Item& hosts) {
  BaseUrls urls = BaseUrls::builtIn();
  if (!hosts.isThere()) return urls;
  const Members families = hosts.members(keys::hosts);
  readFamily(families["platform"], urls, &BaseUrls::setPlatform);
  readFamily(families["transmission"], urls, &BaseUrls::setTransmission);
  return urls;
}

}  // namespace orlan::simulate
