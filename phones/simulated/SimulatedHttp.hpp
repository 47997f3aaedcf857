#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "orlan/platform/HttpClient.hpp"
#include "phones/common/PhoneObserver.hpp"
#include "phones/simulated/Scheduler.hpp"

namespace orlan::sim {

/// What a route answers, and how long after the request.
struct HttpAnswer {
  Result<HttpReply> outcome;
  Duration delay = std::chrono::milliseconds(50);

  /// A reply with this status; without a body there is none, which is not the same as an empty one.
  static HttpAnswer reply(int status, std::optional<std::string> body = std::nullopt,
                          std::vector<HttpHeader> headers = {});
  static HttpAnswer timeout();
  static HttpAnswer unreachable();
  static HttpAnswer cancelled();
  static HttpAnswer notHttp();

  [[nodiscard]] HttpAnswer after(Duration time) const { return {outcome, time}; }
};

/// An HTTP client with the network behind it: routes that answer in virtual time. Main thread of the phone,
/// but for `send`, which may come from any of its queues.
class SimulatedHttp final : public HttpClient {
 public:
  SimulatedHttp(std::shared_ptr<Scheduler> scheduler, phone::PhoneObserver& observer);
  ~SimulatedHttp() override;

  [[nodiscard]] bool isUrl(std::string_view text) const override;
  [[nodiscard]] Subscription send(HttpRequest request, HttpDone done) override;

  /// The n-th request to the route gets the n-th answer; the last one repeats. `path` is the URL without
  /// scheme and host, exactly as formed. Of two routes for the same method and path the first counts. What no
  /// route answers is unreachable.
  void answer(std::string method, std::string path, std::vector<HttpAnswer> answers);

  /// From now on nothing answers there, so that another `answer` may take its place.
  void forget(const std::string& method, const std::string& path);

  /// The process ends: what is on its way never completes.
  void endProcess();

 private:
  struct Route {
    std::vector<HttpAnswer> answers;
    std::size_t next = 0;
  };
  HttpAnswer answerFor(const HttpRequest& request);
  Subscription complete(Duration delay, std::function<void()> completion);

  std::shared_ptr<Scheduler> scheduler_;
  phone::PhoneObserver& observer_;
  std::shared_ptr<const QueueContext> queue_;
  std::map<std::pair<std::string, std::string>, Route> routes_;
  phone::RequestId lastId_ = 0;
};

}  // namespace orlan::sim
