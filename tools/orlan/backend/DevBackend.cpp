#include "tools/orlan/backend/DevBackend.hpp"

#include <fmt/format.h>

#include <utility>

#include "tools/orlan/backend/BodyForms.hpp"
#include "tools/orlan/backend/Formats.hpp"

namespace orlan::devbackend {
namespace {

void spoil(const Strike& strike, Reply& reply) {
  for (const auto& [kind, fault] : strike) {
    if (kind == Fault::Kind::status) {
      reply.status = static_cast<int>(fault.number);
      if (reply.status >= 300) reply.body = fmt::format(R"({{"fault":"status {}"}})", reply.status);
    }
    if (kind == Fault::Kind::body) reply.body = fault.text;
    if (kind == Fault::Kind::cut) reply.cutAfter = static_cast<std::size_t>(fault.number);
    if (kind == Fault::Kind::raw) reply.raw = fault.text;
  }
  if (reply.status == 204 || reply.status == 304) reply.body.clear();
}

std::optional<int> statusSeen(const Reply& reply) {
  return reply.cutAfter || reply.raw ? std::nullopt : std::optional(reply.status);
}

}  // namespace

DevBackend::DevBackend(DevBackendConfig config)
    : config_(std::move(config)),
      answers_(std::move(config_.answers), config_.push),
      server_([this](const Request& request) { return serve(request); }) {}

Result<int> DevBackend::start() {
  if (config_.recordFile) {
    auto opened = record_.open(*config_.recordFile);
    if (!opened) return Unexpected(opened.error());
  }
  auto port = server_.start(config_.port);
  port_ = port.value_or(0);
  return port;
}

void DevBackend::stop() {
  {
    const std::scoped_lock lock(mutex_);
    stopping_ = true;
  }
  stopped_.notify_all();
  server_.stop();
}

std::string DevBackend::url() const {
  return fmt::format("http://127.0.0.1:{}", port_);
}

std::vector<Tally> DevBackend::summary() const {
  const std::scoped_lock lock(mutex_);
  std::vector<Tally> list;
  for (const auto& [key, count] : tallies_) {
    const auto& [endpoint, status] = key;
    list.push_back({endpoint ? std::string(formatOf(*endpoint).path) : "", status, count});
  }
  return list;
}

Reply DevBackend::serve(const Request& request) {
  auto verdict = judge(request);
  remember(request, verdict);
  Exchange exchange{.request = request, .endpoint = verdict.endpoint, .problems = verdict.problems};
  Strike strike;
  if (verdict.endpoint) {
    const std::scoped_lock lock(mutex_);
    strike = takeStrike(config_.faults, *verdict.endpoint);
  }
  for (const auto& [kind, fault] : strike) exchange.faults.push_back(fault.name);
  const bool answered =
      verdict.problems.empty() || (config_.lenient && verdict.endpoint && verdict.status < 402);
  auto reply =
      answered ? answers_.answer(*verdict.endpoint, request) : refusal(verdict.status, verdict.problems);
  spoil(strike, reply);
  exchange.status = statusSeen(reply);
  settle(std::move(exchange));
  const auto delay = strike.find(Fault::Kind::delay);
  if (delay != strike.end() && !outlives(delay->second.delay)) reply.cutAfter = 0;
  return reply;
}

/// What only shows over several requests: each upload must have a boundary of its own.
void DevBackend::remember(const Request& request, Verdict& verdict) {
  if (verdict.endpoint != Endpoint::activities || verdict.status == 405) return;
  const auto boundary = boundaryOf(request);
  const std::scoped_lock lock(mutex_);
  if (boundary.empty() || boundaries_.insert(boundary).second) return;
  verdict.problems.push_back(
      fmt::format("header Content-Type: boundary {} was used before", excerpt(boundary)));
  if (verdict.status == 200) verdict.status = 400;
}

/// Numbers, counts and records an exchange; then, without the lock, tells of it.
void DevBackend::settle(Exchange exchange) {
  {
    const std::scoped_lock lock(mutex_);
    exchange.id = ++lastId_;
    exchange.at = seconds(std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now() - begin_));
    ++tallies_[{exchange.endpoint, exchange.status}];
    record_.write(recordLine(exchange));
  }
  if (config_.observer) config_.observer(exchange);
}

/// Waits; false when the backend is stopped meanwhile.
bool DevBackend::outlives(Duration delay) {
  std::unique_lock lock(mutex_);
  return !stopped_.wait_for(lock, delay, [this] { return stopping_; });
}

}  // namespace orlan::devbackend
