// What the guides show besides what SnippetsTest runs, compiled.

#include <cstdio>

#include "orlan/c/orlan.h"
#include "orlan/orlan.hpp"

using namespace orlan;

// What the guides leave to the reader.
void say(const char* what, std::int64_t campaign);
void draw(std::span<const Coordinate> ring);
void open(const json::Object& userInfo);
int fail(const char* problem);
void my_loop_add(void* context, int64_t delay, orlan_id task);
extern int my_loop;

struct Crossings : ForegroundGeofenceDelegate, BackgroundGeofenceDelegate {
  void didEnterCampaign(std::int64_t campaign, std::int64_t) override { say("entered", campaign); }
  void didExitCampaign(std::int64_t campaign, std::int64_t) override { say("left", campaign); }
  void didEnterRegion(std::int64_t campaign, std::int64_t) override { say("entered (BG)", campaign); }
  void didExitRegion(std::int64_t campaign, std::int64_t) override { say("left (BG)", campaign); }
};

struct Taps : OrlanNotificationDelegate {
  void orlanDidReceive(const NotificationResponse& response) override {
    open(response.request.content.userInfo);
  }
};

struct Phone {
  Platform platform() const;
};

int hosts(const Phone& phone, const std::shared_ptr<OrlanPluginDelegate>& delegate,
          const std::string& token) {
  // docs/starting.md
  auto installed = Runtime::install(phone.platform());
  if (!installed) std::printf("%s\n", installed.error().description.c_str());

  OrlanPlugin::shared().start("my-api-key", Config::Environment::staging, {"walkers", "vip"}, delegate);
  OrlanPlugin::shared().start(Config::Environment::production, {}, delegate);
  OrlanPlugin::shared().start("company-key", "app-id", "app-key", "com.example.app",
                              Config::Environment::production, {}, true, delegate);
  OrlanPlugin::updateAPNsToken(token);  // raw bytes; or updateFCMToken, which wins

  RuntimeOptions options;
  const auto production = Config::Environment::production;
  auto set = options.urls.setPlatform(production, "https://platform.my-company.com");
  if (set) set = options.urls.setTransmission(production, "https://campaigns.my-company.com");
  if (!set) std::printf("%s\n", set.error().description.c_str());

  // docs/campaigns.md, docs/notifications.md
  const auto subscription =
      OrlanPlugin::polygonsPublisher().subscribe([](const std::vector<Polygon>& polygons) {
        for (const Polygon& polygon : polygons) draw(polygon.coordinates());
      });

  const auto crossings = std::make_shared<Crossings>();
  ForegroundGeofenceMonitor::shared().setDelegate(crossings);
  BackgroundRegionMonitor::shared().setDelegate(crossings);

  const auto taps = std::make_shared<Taps>();
  NotificationBridge::shared().setDelegate(taps);
  phone.platform().notifications.setDelegate(NotificationBridge::shared().weak_from_this());

  // docs/porting.md
  auto [main, queues, clock, random, store, files, http, locations, notifications, application, device,
        bundle, console, systemLog] = phone.platform();
  const Platform platform{main,      queues,        clock,       random, store,  files,   http,
                          locations, notifications, application, device, bundle, console, systemLog};
  if (!Runtime::install(platform)) return 1;
  return 0;
}

void permissionForLocation() {
  OrlanPlugin::shared().requestLocationWhenInUse();  // or requestLocationAlways
  const auto subscription =
      OrlanPlugin::locationAuthorizationPublisher().subscribe([](LocationAuthorization status) {
        std::printf("location: %d\n", static_cast<int>(rawValue(status)));
      });
}

void permissionForNotifications() {
  OrlanPlugin::shared().requestPushPermission();
  const auto subscription =
      OrlanPlugin::pushAuthorizationPublisher().subscribe([](NotificationAuthorization status) {
        std::printf("push: %d\n", static_cast<int>(rawValue(status)));
      });
}

void post(void* context, orlan_id task) {
  my_loop_add(context, 0, task);
}
void post_after(void* context, int64_t delay, orlan_id task) {
  my_loop_add(context, delay, task);  // microseconds
}

int start() {
  orlan_loop_functions loop = {};
  loop.struct_size = sizeof loop;
  loop.context = &my_loop;
  loop.post = post;
  loop.post_after = post_after;

  orlan_phone_parts parts = {};
  parts.struct_size = sizeof parts;
  parts.loop = &loop;

  orlan_phone* phone = NULL;
  if (orlan_phone_new(&parts, &phone) != ORLAN_OK) return fail(orlan_last_problem());
  if (orlan_install(phone, NULL) != ORLAN_OK) return fail(orlan_last_problem());
  orlan_start_with_api_key(orlan_str("my-api-key"), ORLAN_STAGING, NULL, 0, NULL);
  return 0;
}
