#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "orlan/base/Result.hpp"
#include "orlan/base/Time.hpp"
#include "tools/orlan/backend/Answers.hpp"
#include "tools/orlan/backend/Endpoint.hpp"
#include "tools/orlan/backend/Exchange.hpp"
#include "tools/orlan/backend/Faults.hpp"
#include "tools/orlan/backend/HttpServer.hpp"
#include "tools/orlan/backend/RecordFile.hpp"
#include "tools/orlan/backend/Verdict.hpp"

namespace orlan::devbackend {

struct DevBackendConfig {
  int port = 0;                             // 0: a free one
  std::map<Endpoint, std::string> answers;  // whole bodies; otherwise answers are made up
  std::vector<Fault> faults;
  std::optional<std::string> recordFile;  // replaced at the start
  bool push = false;                      // adds a push campaign to those that are made up
  bool lenient = false;                   // answers as if nothing were wrong; problems are still told
  /// Told of every exchange as soon as its answer is decided, before that is sent; on a connection's thread,
  /// several at once.
  std::function<void(const Exchange&)> observer;
};

/// How often one thing was answered one way.
struct Tally {
  std::string path;           // without an environment's prefix; empty: no endpoint of ours
  std::optional<int> status;  // nothing: no answer
  int count = 0;

  friend bool operator==(const Tally&, const Tally&) = default;
};

/// A backend for development on the loopback: every endpoint, answers that make sense, a record of what
/// arrived, faults on request, and a strict eye on the wire format.
class DevBackend {
 public:
  explicit DevBackend(DevBackendConfig config);
  /// Stops.
  ~DevBackend() { stop(); }

  /// Serves until `stop`. The port, or why it cannot: the port is taken, the record cannot be written. Once.
  Result<int> start();

  /// "http://127.0.0.1:PORT", the base address of both families; the transmission layer also answers behind
  /// "/api" and "/api/".
  [[nodiscard]] std::string url() const;

  /// Ends at once, also what is delayed. Afterwards the observer is not called any more.
  void stop();

  /// What was answered so far, by endpoint in their order and status. Any thread.
  [[nodiscard]] std::vector<Tally> summary() const;

 private:
  Reply serve(const Request& request);
  void remember(const Request& request, Verdict& verdict);
  void settle(Exchange exchange);
  bool outlives(Duration delay);

  DevBackendConfig config_;
  Answers answers_;
  int port_ = 0;
  const std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();

  mutable std::mutex mutex_;
  std::condition_variable stopped_;
  bool stopping_ = false;
  std::int64_t lastId_ = 0;
  std::set<std::string> boundaries_;
  std::map<std::pair<std::optional<Endpoint>, std::optional<int>>, int> tallies_;
  RecordFile record_;

  HttpServer server_;  // last: its threads use all of the above
};

}  // namespace orlan::devbackend
