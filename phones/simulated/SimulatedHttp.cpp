#include "phones/simulated/SimulatedHttp.hpp"

#include <algorithm>

#include "orlan/platform/Url.hpp"
#include "orlan/platform/httpRules.hpp"

namespace orlan::sim {

HttpAnswer HttpAnswer::reply(int status, std::optional<std::string> body, std::vector<HttpHeader> headers) {
  return {HttpReply{status, std::move(headers), std::move(body)}};
}

HttpAnswer HttpAnswer::timeout() {
  return {Unexpected(urlErrors::timedOut())};
}
HttpAnswer HttpAnswer::unreachable() {
  return {Unexpected(urlErrors::cannotConnectToHost())};
}
HttpAnswer HttpAnswer::cancelled() {
  return {Unexpected(urlErrors::cancelled())};
}
HttpAnswer HttpAnswer::notHttp() {
  return {HttpReply{}};
}

SimulatedHttp::SimulatedHttp(std::shared_ptr<Scheduler> scheduler, phone::PhoneObserver& observer)
    : scheduler_(std::move(scheduler)),
      observer_(observer),
      queue_(std::make_shared<QueueContext>(QueueContext{"http"})) {}

SimulatedHttp::~SimulatedHttp() {
  endProcess();
}

bool SimulatedHttp::isUrl(std::string_view text) const {
  return isSecureUrl(text);
}

Subscription SimulatedHttp::send(HttpRequest request, HttpDone done) {
  if (const auto why = phone::refusal(request)) {
    return complete(Duration::zero(), [done = std::move(done), why] { done(Unexpected(*why)); });
  }
  HttpAnswer answer = answerFor(request);
  if (answer.delay > request.timeout) answer = HttpAnswer::timeout().after(request.timeout);
  const auto id = ++lastId_;
  observer_.request(id, request);
  return complete(answer.delay,
                  [this, id, done = std::move(done), outcome = std::move(answer.outcome)]() mutable {
                    observer_.response(id, outcome);
                    done(std::move(outcome));
                  });
}

void SimulatedHttp::answer(std::string method, std::string path, std::vector<HttpAnswer> answers) {
  routes_.try_emplace({std::move(method), std::move(path)}, Route{std::move(answers)});
}

void SimulatedHttp::forget(const std::string& method, const std::string& path) {
  routes_.erase({method, path});
}

void SimulatedHttp::endProcess() {
  scheduler_->cancelAll(this);
}

HttpAnswer SimulatedHttp::answerFor(const HttpRequest& request) {
  const std::string path(parseUrl(request.url)->path);
  const auto found = routes_.find({request.method, path});
  if (found == routes_.end() || found->second.answers.empty()) return HttpAnswer::unreachable();
  Route& route = found->second;
  const std::size_t index = std::min(route.next, route.answers.size() - 1);
  ++route.next;
  return route.answers[index];
}

Subscription SimulatedHttp::complete(Duration delay, std::function<void()> completion) {
  const auto key = scheduler_->post(this, queue_, delay, std::move(completion));
  return Subscription::onCancel([scheduler = std::weak_ptr(scheduler_), key] {
    if (const auto living = scheduler.lock()) living->cancel(key);
  });
}

}  // namespace orlan::sim
