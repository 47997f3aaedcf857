#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "orlan/base/Lifetime.hpp"
#include "orlan/base/Single.hpp"
#include "orlan/platform/HttpClient.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Success is 200 to 299.
[[nodiscard]] constexpr bool isSuccess(int status) {
  return status >= 200 && status <= 299;
}

/// Keeps requests alive until they are answered, so that callers hold no handles, and brings results to the
/// main thread. Any thread, except that it is destroyed on the main thread.
class RequestLayer {
 public:
  RequestLayer(HttpClient& http, MainLoop& main);
  ~RequestLayer();
  RequestLayer(const RequestLayer&) = delete;
  RequestLayer& operator=(const RequestLayer&) = delete;

  [[nodiscard]] bool isUrl(std::string_view text) const { return http_.isUrl(text); }

  /// Sends at once. `done` runs once, on the HTTP client's queue, unless the layer ends first; it may send
  /// again.
  void send(HttpRequest request, HttpDone done);

  /// Sends at once. What `read` makes of the reply, on the HTTP client's queue, is delivered on the main
  /// thread, later; never once the layer has ended.
  template <class T>
  Single<T> ask(HttpRequest request, std::function<Result<T>(const Result<HttpReply>&)> read) {
    auto [answer, resolve] = Single<T>::pending();
    send(std::move(request),
         [this, read = std::move(read), resolve = resolve](const Result<HttpReply>& reply) {
           main_.async([alive = lifetime_.token(), resolve, result = read(reply)] {
             if (alive) resolve(result);
           });
         });
    return answer;
  }

  /// Ends every request on its way and refuses new ones. When it returns, no `done` runs or will run.
  void cancelAll();

 private:
  using Id = std::uint64_t;
  void finish(Id id);

  HttpClient& http_;
  MainLoop& main_;
  std::mutex mutex_;
  bool ended_ = false;  // guarded by mutex_, like the rest
  Id last_ = 0;
  std::unordered_map<Id, Subscription> running_;  // empty handle: `HttpClient::send` has not returned yet
  Lifetime lifetime_;
};

}  // namespace orlan
