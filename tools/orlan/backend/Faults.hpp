#pragma once

#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/base/Result.hpp"
#include "orlan/base/Time.hpp"
#include "tools/orlan/backend/Endpoint.hpp"

namespace orlan::devbackend {

/// Something that goes wrong on request, at one endpoint.
struct Fault {
  enum class Kind {
    status,  // this status instead of 200
    delay,   // the answer comes so much later
    cut,     // the connection ends after so many bytes of the answer, head included
    body,    // this body instead of the right one
    raw      // these bytes instead of an HTTP answer
  };

  Endpoint endpoint = Endpoint::registration;
  Kind kind = Kind::status;
  int status = 0;
  Duration delay{};
  std::size_t bytes = 0;
  std::string text;
  std::optional<int> times;  // how many requests it strikes; nothing: all
  std::string name;          // as asked for, for records: "status:500"
};

/// Reads `PATH=status:500`, `PATH=delay:2.5`, `PATH=cut`, `PATH=cut:20`, `PATH=body:TEXT` or `raw:TEXT`
/// (`@FILE` in the place of TEXT: the bytes of that file), each optionally with `*COUNT` behind it. The error
/// says what is wrong with which piece.
[[nodiscard]] Result<Fault> parseFault(std::string_view text);

/// What strikes one request.
struct Strike {
  std::optional<int> status;
  Duration delay{};
  std::optional<std::size_t> cutAfter;
  std::optional<std::string> body;
  std::optional<std::string> raw;
  std::vector<std::string> names;
};

/// The faults asked for and how often each has struck. Faults of different kinds strike together; of several
/// of one kind at one endpoint the first that is not used up. Any thread.
class Faults {
 public:
  explicit Faults(std::vector<Fault> faults = {}) : faults_(std::move(faults)) {}

  [[nodiscard]] Strike take(Endpoint endpoint);

 private:
  std::mutex mutex_;
  std::vector<Fault> faults_;
};

}  // namespace orlan::devbackend
