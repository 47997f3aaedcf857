#pragma once

#include <cstdint>
#include <map>
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
  std::int64_t number = 0;  // the status, or the bytes before the cut
  Duration delay{};
  std::string text;
  std::optional<std::int64_t> times;  // how many requests it strikes; nothing: all
  std::string name;                   // as asked for, for records: "status:500"
};

/// Reads `PATH=status:500`, `PATH=delay:2.5`, `PATH=cut`, `PATH=cut:20`, `PATH=body:TEXT` or `raw:TEXT`
/// (`@FILE` in the place of TEXT: the bytes of that file), each optionally with `*COUNT` behind it. The error
/// says what is wrong with which piece.
[[nodiscard]] Result<Fault> parseFault(std::string_view text);

/// What strikes one request.
using Strike = std::map<Fault::Kind, Fault>;

/// What strikes the next request at that endpoint, and from `faults` it is counted off. Faults of different
/// kinds strike together; of several of one kind the first that is not used up.
[[nodiscard]] Strike takeStrike(std::vector<Fault>& faults, Endpoint endpoint);

}  // namespace orlan::devbackend
