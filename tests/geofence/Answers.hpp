#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orlan::test {

/// Members of a `/check-geofence` answer, as the backend writes them.
inline std::string wrapper(std::int64_t id, const std::string& location, const std::string& notifications) {
  return R"({"campaignName":"Campaign )" + std::to_string(id) + R"(","campaignId":)" + std::to_string(id) +
         R"(,"type":"t","locations":[],"active":"1","testIds":"","segmentationTags":"")" + location +
         R"(,"notificationsArray":[)" + notifications + "]}";
}

/// One with a ring of `vertices` around 51.5, -0.12.
inline std::string geoCampaign(std::int64_t id, std::int64_t location, int vertices) {
  const char* const corners[] = {R"("51.499","longitude":"-0.121")", R"("51.499","longitude":"-0.119")",
                                 R"("51.501","longitude":"-0.119")", R"("51.501","longitude":"-0.121")"};
  std::string ring;
  for (int i = 0; i < vertices; ++i) {
    ring += (i == 0 ? R"({"position":)" : R"(,{"position":)") + std::to_string(i) +
            R"(,"_id":"","latitude":)" + corners[i] + "}";
  }
  return wrapper(id,
                 R"(,"locationsArray":{"locationId":)" + std::to_string(location) +
                     R"(,"_id":"","geofence":[)" + ring + "]}",
                 "");
}

inline std::string pushNotification(std::int64_t id) {
  return R"({"id":)" + std::to_string(id) +
         R"(,"campaignId":[],"headline":"Push","body":"","type":"t","media":[],"questions":[],"cta":[],)"
         R"("segmentationTags":"","testIds":"","start":"2026-01-01","end":"2026-02-01","activation":""})";
}

inline std::string pushCampaign(std::int64_t id) {
  return wrapper(id, "", pushNotification(2 * id));
}

inline std::string answer(const std::vector<std::string>& geo, const std::vector<std::string>& push) {
  const auto list = [](const std::vector<std::string>& wrappers) {
    std::string text;
    for (const auto& one : wrappers) text += (text.empty() ? "" : ",") + one;
    return "[" + text + "]";
  };
  return R"({"geoCampaign":)" + list(geo) + R"(,"pushCampaign":)" + list(push) + "}";
}

}  // namespace orlan::test
