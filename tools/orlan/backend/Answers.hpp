#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "tools/orlan/backend/Endpoint.hpp"
#include "tools/orlan/backend/HttpConnection.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// The right answers: from files where given, otherwise made up, around the caller's position for
/// /check-geofence. Any thread.
class Answers {
 public:
  /// `files` holds whole bodies; `push` adds a push campaign to the made-up ones.
  Answers(std::map<Endpoint, std::string> files, bool push) : files_(std::move(files)), push_(push) {}

  [[nodiscard]] Reply answer(Endpoint endpoint, const Request& request);

 private:
  [[nodiscard]] std::string registered(const Request& request);
  std::string identify(const std::string& device, std::string_view known);

  std::map<Endpoint, std::string> files_;
  bool push_;
  std::mutex mutex_;
  std::map<std::string, std::string> identities_;  // by device identifier
  std::int64_t next_ = 1001;
};

/// {"problems": […]} with the status of the verdict.
[[nodiscard]] Reply refusal(int status, const Problems& problems);

}  // namespace orlan::devbackend
