#include <fmt/format.h>

#include <array>

#include "tools/orlan/backend/BodyChecks.hpp"
#include "tools/orlan/backend/JsonCheck.hpp"

namespace orlan::devbackend {

void checkSegments(const Request& request, Problems& problems) {
  constexpr std::array members{ExpectedMember{"segmentation", json::Kind::array},
                               ExpectedMember{"device_registered_id", json::Kind::string}};
  const auto document = parseObject(request, members, problems);
  if (!document) return;
  const auto body = document->root();
  std::size_t index = 0;
  if (const auto tags = member(body, "segmentation")) {
    tags->elements([&](json::Node tag) {
      if (!tag.string()) {
        problems.push_back(
            fmt::format("body.segmentation[{}]: expected a string, found {}", index, tag.kindName()));
      }
      ++index;
      return true;
    });
  }
  constexpr std::array<std::string_view, 1> filled{"device_registered_id"};
  expectFilled(body, filled, problems);
}

}  // namespace orlan::devbackend
