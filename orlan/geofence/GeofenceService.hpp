#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orlan/backend/APIService.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/base/Subject.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/campaigns/CampaignSource.hpp"
#include "orlan/geofence/PolygonSink.hpp"
#include "orlan/platform/Platform.hpp"
#include "orlan/platform/Polygon.hpp"

namespace orlan {

class CampaignCache;

/// Owns the campaign data: fetches it, keeps the last good answer in a file, refreshes it by timer, on demand
/// and after background movement, publishes it, posts what is to be pushed and hands its polygons to the
/// monitors. Main thread.
class GeofenceService : public CampaignSource {
 public:
  /// What it talks to besides the phone. The sinks take polygons in the order foreground, background.
  struct Neighbours {
    Logger& logger;
    Lazy<APIService>& api;
    CampaignCache& cache;
    Publisher<std::optional<Location>>& locations;
    PolygonSink& foreground;
    PolygonSink& background;
  };

  /// Takes the cached answer, silently doing without when there is none that can be used.
  GeofenceService(const Platform& phone, const Neighbours& neighbours);
  ~GeofenceService() override;

  /// The installed library's, made at first use; lives until the library is uninstalled. Main thread.
  static GeofenceService& shared();

  /// Starts or restarts: one fetch at once, the timer, the background refresh.
  void start(const std::string& apiKey, Config::Environment env,
             std::shared_ptr<LocationManager> locationManager);

  /// Fetches now; before `start` it only logs an error.
  void refetch();

  [[nodiscard]] std::shared_ptr<const CampaignData> current() override;
  [[nodiscard]] Publisher<std::shared_ptr<const CampaignData>>& currentPublisher();

  /// Polygons of the latest data, in campaign order: the current list first, then each change.
  [[nodiscard]] std::vector<Polygon> currentPolygons() const;
  [[nodiscard]] Publisher<std::vector<Polygon>>& polygonsPublisherPublic();

  /// Emits once a successful fetch.
  [[nodiscard]] Publisher<CampaignData>& campaigns();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace orlan
