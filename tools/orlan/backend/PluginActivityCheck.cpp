#include <fmt/format.h>

#include "tools/orlan/backend/BodyChecks.hpp"
#include "tools/orlan/backend/ValueForms.hpp"

namespace orlan::devbackend {

void checkPluginActivity(const Request& request, Problems& problems) {
  constexpr std::string_view deviceKey = "device_registered_id=";
  constexpr std::string_view timeKey = "&time=";
  constexpr std::string_view activityKey = "&activity=";
  const std::string_view body = request.body;
  // An activity may itself contain such a piece, so each key is sought from the front.
  const auto time = body.find(timeKey);
  const auto activity = time == std::string_view::npos ? time : body.find(activityKey, time);
  if (!body.starts_with(deviceKey) || activity == std::string_view::npos) {
    problems.push_back(fmt::format("body: expected {}…{}…{}…, found {}", deviceKey, timeKey, activityKey,
                                   excerpt(body, 120)));
    return;
  }
  const auto device = body.substr(deviceKey.size(), time - deviceKey.size());
  if (!isUuid(device) && device != "unknown") {
    problems.push_back(fmt::format(
        "body, device_registered_id: expected the vendor's UUID or unknown, found {}", excerpt(device)));
  }
  const auto when = body.substr(time + timeKey.size(), activity - time - timeKey.size());
  if (!isDateTime(when)) {
    problems.push_back(
        fmt::format("body, time: expected yyyy-MM-dd HH:mm:ss unescaped, found {}", excerpt(when)));
  }
  if (body.size() == activity + activityKey.size()) problems.push_back("body, activity: empty");
}

}  // namespace orlan::devbackend
