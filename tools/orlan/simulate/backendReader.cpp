#include "orlan/base/text.hpp"
#include "tools/orlan/simulate/readers.hpp"

namespace orlan::simulate {
namespace {

std::optional<std::string> readBody(const Members& response, const Files& files) {
  std::optional<std::string> body;
  std::string_view form;
  for (const std::string_view key : {"json", "text", "base64", "file"}) {
    const Item item = response[key];
    if (!item.isThere()) continue;
    if (body) item.mistaken("there is a body already: " + json::print(form));
    form = key;
    if (key == "json") {
      body = json::print(item.value());
    } else if (key == "text") {
      body = item.string();
    } else if (key == "base64") {
      body = text::fromBase64(item.string());
      if (!body) item.expected("base64 text");
    } else {
      const auto bytes = files.read(item.string());
      if (bytes) {
        body = *bytes;
      } else {
        item.mistaken("cannot read " + json::print(item.value()) + ": " + bytes.error().description);
      }
    }
  }
  return body;
}

std::vector<HttpHeader> readHeaders(const Item& item) {
  std::vector<HttpHeader> headers;
  if (!item.isThere()) return headers;
  for (const auto& [name, value] : item.entries()) headers.emplace_back(name, value.string());
  return headers;
}

sim::HttpAnswer readOutcome(const Item& item, const Files& files) {
  if (item.value().object() != nullptr && item.value().object()->contains("error")) {
    const Members fault = item.members({"error", "delay"});
    using Make = sim::HttpAnswer (*)();
    const Make make = fault["error"].oneOf<Make>({{"timeout", &sim::HttpAnswer::timeout},
                                                  {"unreachable", &sim::HttpAnswer::unreachable},
                                                  {"cancelled", &sim::HttpAnswer::cancelled},
                                                  {"notHTTP", &sim::HttpAnswer::notHttp}});
    return make();
  }
  const Members reply =
      item.members({"status", "headers", "json", "text", "base64", "file", "delay", "error"});
  const int status = reply.has("status") ? static_cast<int>(reply["status"].integer(100, 999)) : 200;
  return sim::HttpAnswer::reply(status, readBody(reply, files), readHeaders(reply["headers"]));
}

Route readRoute(const Item& item, const Files& files) {
  const Members members = item.members({"method", "path", "responses"});
  Route route{members["method"].string(), members["path"].string(), {}};
  const auto responses = members["responses"].elements();
  if (responses.empty()) members["responses"].mistaken("expected at least one response");
  for (const Item& response : responses) {
    sim::HttpAnswer answer = readOutcome(response, files);
    if (const Item delay = Members(response)["delay"]; delay.isThere()) answer = answer.after(delay.time());
    route.answers.push_back(std::move(answer));
  }
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
  const Members families = hosts.members({"platform", "transmission"});
  readFamily(families["platform"], urls, &BaseUrls::setPlatform);
  readFamily(families["transmission"], urls, &BaseUrls::setTransmission);
  return urls;
}

}  // namespace orlan::simulate
