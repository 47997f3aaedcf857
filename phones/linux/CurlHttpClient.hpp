#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <thread>

#include "orlan/platform/HttpClient.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::linuxphone {

struct HttpOptions {
  std::string extraCaFile;  // PEM certificates, trusted besides the directory of the system's
  std::size_t maxBody = std::size_t{64} << 20;      // bytes; a longer response body is a transport fault
  std::size_t maxHeaders = std::size_t{256} << 10;  // bytes, interim responses included
};

/// HTTP over libcurl, all requests on one thread that is also the client's queue. Connections are kept and
/// reused, at most six a host; certificates are always checked; https goes through the proxy that the
/// environment names, plain http stays on the loopback, past any proxy; redirects are answers. Only
/// `HttpRequest::timeout` limits a request, in real time, from `send` to the last byte. No body is reported
/// where HTTP allows none (HEAD, 204, 304); everywhere else a missing one is empty.
class CurlHttpClient final : public HttpClient {
 public:
  explicit CurlHttpClient(phone::PhoneObserver& observer, HttpOptions options = {});

  /// What is still on its way ends with `urlErrors::cancelled`, told before the destructor returns. Not from
  /// a callback of this client.
  ~CurlHttpClient() override;

  [[nodiscard]] bool isUrl(std::string_view text) const override;
  [[nodiscard]] Subscription send(HttpRequest request, HttpDone done) override;

 private:
  class Engine;
  std::shared_ptr<Engine> engine_;
  std::thread thread_;
};

}  // namespace orlan::linuxphone
