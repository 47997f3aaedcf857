#pragma once

#include <map>
#include <optional>
#include <string>

#include "tools/orlan/backend/Devices.hpp"
#include "tools/orlan/backend/Endpoint.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

struct Answer {
  int status = 200;
  std::string contentType = "application/json";
  std::string body;
};

/// The right answers: from files where given, otherwise made up, around the caller's position for
/// /check-geofence. Any thread.
class Answers {
 public:
  /// `files` holds whole bodies; `push` adds a push campaign to the made-up ones.
  Answers(std::map<Endpoint, std::string> files, bool push) : files_(std::move(files)), push_(push) {}

  [[nodiscard]] Answer answer(Endpoint endpoint, const Request& request);

 private:
  std::map<Endpoint, std::string> files_;
  bool push_;
  Devices devices_;
};

/// {"problems": […]} with the status of the verdict.
[[nodiscard]] Answer refusal(int status, const Problems& problems);

}  // namespace orlan::devbackend
