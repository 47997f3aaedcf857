#pragma once

#include <curl/curl.h>

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "orlan/platform/HttpClient.hpp"
#include "phones/linux/CurlHttpClient.hpp"
#include "phones/linux/Releasing.hpp"

namespace orlan::linuxphone {

using EasyHandle = std::unique_ptr<CURL, Releasing<curl_easy_cleanup>>;
using HeaderList = std::unique_ptr<curl_slist, Releasing<curl_slist_free_all>>;

/// One request and its response inside libcurl. One thread at a time.
class HttpTransfer {
 public:
  /// The request was not refused.
  HttpTransfer(HttpRequest request, const HttpOptions& options);
  HttpTransfer(const HttpTransfer&) = delete;
  HttpTransfer& operator=(const HttpTransfer&) = delete;

  [[nodiscard]] CURL* easy() const { return easy_.get(); }

  /// When the request's time is over. Not left to libcurl, which starts to count only when a connection is
  /// free.
  [[nodiscard]] std::chrono::steady_clock::time_point deadline() const { return deadline_; }

  /// What came of it, once libcurl is through.
  [[nodiscard]] Result<HttpReply> result(CURLcode code);

 private:
  void setUp();
  void setUpSecurity();
  void setUpMethodAndBody();
  void setUpHeaders();
  [[nodiscard]] HttpReply reply(int status);
  [[nodiscard]] Error fault(CURLcode code) const;

  static std::size_t onHeader(char* data, std::size_t size, std::size_t count, void* self);
  static std::size_t onBody(char* data, std::size_t size, std::size_t count, void* self);
  static int onRequestStarting(void* self, char*, char*, int, int);

  std::chrono::steady_clock::time_point deadline_;
  HttpRequest request_;
  const HttpOptions& options_;
  EasyHandle easy_;
  HeaderList headers_;
  std::array<char, CURL_ERROR_SIZE> detail_{};
  std::string body_;
  std::size_t headerBytes_ = 0;
  bool headersEnded_ = false;
  bool started_ = false;
  std::string refused_;  // why we ended it ourselves
};

}  // namespace orlan::linuxphone
