#include "tools/orlan/backend/DevBackend.hpp"

#include <fmt/format.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <utility>

#include "tools/orlan/backend/Answers.hpp"
#include "tools/orlan/backend/BodyChecks.hpp"
#include "tools/orlan/backend/HttpServer.hpp"
#include "tools/orlan/backend/RecordFile.hpp"
#include "tools/orlan/backend/Verdict.hpp"

namespace orlan::devbackend {
namespace {

using SteadyClock = std::chrono::steady_clock;

/// The answer as it leaves: the right one, or the refusal, and then what strikes it.
Reply replyOf(Answer answer, const Strike& strike) {
  Reply reply{
      .status = answer.status, .contentType = std::move(answer.contentType), .body = std::move(answer.body)};
  if (strike.status) {
    reply.status = *strike.status;
    if (*strike.status >= 300) reply.body = fmt::format(R"({{"fault":"status {}"}})", *strike.status);
  }
  if (strike.body) reply.body = *strike.body;
  if (reply.status == 204 || reply.status == 304) reply.body.clear();
  reply.cutAfter = strike.cutAfter;
  reply.raw = strike.raw;
  return reply;
}

std::optional<int> statusSeen(const Reply& reply) {
  return reply.cutAfter || reply.raw ? std::nullopt : std::optional(reply.status);
}

}  // namespace

class DevBackend::Service {
 public:
  explicit Service(DevBackendConfig config)
      : config_(std::move(config)),
        answers_(std::move(config_.answers), config_.push),
        faults_(std::move(config_.faults)),
        server_([this](const Request& request) { return serve(request); },
                [this](std::string_view bytes) { refuse(bytes); }) {}

  Result<int> start() {
    if (config_.recordFile) {
      auto opened = record_.open(*config_.recordFile);
      if (!opened) return Unexpected(opened.error());
    }
    auto port = server_.start(config_.port);
    if (port) return port;
    return Unexpected(Error{port.error().domain, port.error().code,
                            fmt::format("port {}: taken, or not allowed", config_.port)});
  }

  void stop() {
    {
      const std::scoped_lock lock(mutex_);
      stopping_ = true;
    }
    stopped_.notify_all();
    server_.stop();
  }

  std::vector<Tally> summary() const {
    const std::scoped_lock lock(mutex_);
    std::vector<Tally> list;
    for (const auto& [key, count] : tallies_) {
      const auto& [endpoint, status] = key;
      list.push_back({endpoint ? std::string(pathOf(*endpoint)) : "", status, count});
    }
    return list;
  }

 private:
  Reply serve(const Request& request) {
    auto verdict = judge(request);
    remember(request, verdict);
    Exchange exchange{.request = request, .endpoint = verdict.endpoint, .problems = verdict.problems};
    Strike strike;
    if (verdict.endpoint) strike = faults_.take(*verdict.endpoint);
    exchange.faults = strike.names;
    const bool answered = verdict.problems.empty() || (config_.lenient && verdict.status < 402);
    auto reply = replyOf(
        answered ? answers_.answer(*verdict.endpoint, request) : refusal(verdict.status, verdict.problems),
        strike);
    exchange.status = statusSeen(reply);
    settle(std::move(exchange));
    if (strike.delay > Duration::zero() && !outlives(strike.delay)) reply.cutAfter = 0;
    return reply;
  }

  void refuse(std::string_view bytes) {
    Exchange exchange;
    exchange.request.body = bytes;
    exchange.problems.push_back(fmt::format("expected an HTTP/1.1 request, found {}", excerpt(bytes)));
    exchange.status = 400;
    settle(std::move(exchange));
  }

  /// What only shows over several requests: each upload must have a boundary of its own.
  void remember(const Request& request, Verdict& verdict) {
    if (verdict.endpoint != Endpoint::activities || verdict.status == 405) return;
    const auto boundary = boundaryOf(request);
    const std::scoped_lock lock(mutex_);
    if (boundary.empty() || boundaries_.insert(boundary).second) return;
    verdict.problems.push_back(
        fmt::format("header Content-Type: boundary {} was used before", excerpt(boundary)));
    if (verdict.status == 200) verdict.status = 400;
  }

  /// Numbers, counts and records an exchange; then, without the lock, tells of it.
  void settle(Exchange exchange) {
    {
      const std::scoped_lock lock(mutex_);
      exchange.id = ++lastId_;
      exchange.at = seconds(std::chrono::duration_cast<Duration>(SteadyClock::now() - begin_));
      ++tallies_[{exchange.endpoint, exchange.status}];
      record_.write(recordLine(exchange));
    }
    if (config_.observer) config_.observer(exchange);
  }

  /// Waits; false when the backend is stopped meanwhile.
  bool outlives(Duration delay) {
    std::unique_lock lock(mutex_);
    return !stopped_.wait_for(lock, delay, [this] { return stopping_; });
  }

  DevBackendConfig config_;
  Answers answers_;
  Faults faults_;
  const SteadyClock::time_point begin_ = SteadyClock::now();

  mutable std::mutex mutex_;
  std::condition_variable stopped_;
  bool stopping_ = false;
  std::int64_t lastId_ = 0;
  std::set<std::string> boundaries_;
  std::map<std::pair<std::optional<Endpoint>, std::optional<int>>, int> tallies_;
  RecordFile record_;

  HttpServer server_;  // last: its threads use all of the above
};

DevBackend::DevBackend() = default;
DevBackend::~DevBackend() {
  stop();
}

Result<int> DevBackend::start(DevBackendConfig config) {
  if (service_) return Unexpected(Error{"orlan backend", -1, "the development backend was started already"});
  service_ = std::make_unique<Service>(std::move(config));
  auto port = service_->start();
  if (port) {
    port_ = *port;
  } else {
    service_.reset();
  }
  return port;
}

std::string DevBackend::url() const {
  return fmt::format("http://127.0.0.1:{}", port_);
}

void DevBackend::stop() {
  if (service_) service_->stop();
}

std::vector<Tally> DevBackend::summary() const {
  return service_ ? service_->summary() : std::vector<Tally>();
}

}  // namespace orlan::devbackend
