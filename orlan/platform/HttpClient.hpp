#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orlan/base/Result.hpp"
#include "orlan/base/Subscription.hpp"
#include "orlan/base/Time.hpp"

namespace orlan {

using HttpHeader = std::pair<std::string, std::string>;

struct HttpRequest {
  std::string method;
  std::string url;
  std::vector<HttpHeader> headers;  // sent in this order, nothing added but what HTTP itself needs
  std::optional<std::string> body;
  Duration timeout = std::chrono::seconds(60);

  void addHeader(std::string name, std::string value) {
    headers.emplace_back(std::move(name), std::move(value));
  }
};

/// What came back. No `status`: the peer did not speak HTTP. No `body`: none was sent (an empty body is
/// empty).
struct HttpReply {
  std::optional<int> status;
  std::vector<HttpHeader> headers;
  std::optional<std::string> body;
};

using HttpDone = std::function<void(Result<HttpReply>)>;

/// Sends requests over https (plain http to the loopback only), checks certificates, follows no redirect and
/// never retries.
class HttpClient {
 public:
  virtual ~HttpClient() = default;

  /// Whether the text is a URL that `send` would accept.
  [[nodiscard]] virtual bool isUrl(std::string_view text) const = 0;

  /// Sends `request` once; the work begins inside the call. `done` runs exactly once, on the client's own
  /// serial queue and never inside `send`, unless the handle is destroyed first. Any HTTP status is an
  /// answer; only a transport fault is an error (`urlErrors`). Once the handle's destructor has returned,
  /// `done` is not running and will not run, except when it is `done` itself that destroys the handle. Any
  /// thread.
  [[nodiscard]] virtual Subscription send(HttpRequest request, HttpDone done) = 0;
};

/// Transport faults and what the request layer makes of unusable answers; domain "URLError".
namespace urlErrors {
[[nodiscard]] Error cancelled();             // -999
[[nodiscard]] Error badURL();                // -1000
[[nodiscard]] Error timedOut();              // -1001
[[nodiscard]] Error cannotConnectToHost();   // -1004
[[nodiscard]] Error badServerResponse();     // -1011
[[nodiscard]] Error other(std::string why);  // -1
}  // namespace urlErrors

/// "internal server error" for 500: a readable phrase for any status.
[[nodiscard]] std::string_view statusPhrase(int status);

}  // namespace orlan
