/* A host in C, from start to a tapped notification. */
#include "c/walk.h"

#include <stdio.h>
#include <string.h>

#define EXPECT(condition)                                                                                \
  do {                                                                                                   \
    if (!(condition)) {                                                                                  \
      snprintf(problem, sizeof problem, "line %d: %s (%s)", __LINE__, #condition, orlan_last_problem()); \
      return problem;                                                                                    \
    }                                                                                                    \
  } while (0)

static char problem[400];

typedef struct seen {
  char started_as[32];
  orlan_crossing entered;
  size_t polygons;
  char headline[32];
} seen;

static void did_authenticate(void* context, orlan_string device, orlan_string orlan) {
  seen* all = context;
  snprintf(all->started_as, sizeof all->started_as, "%s %s", device.data, orlan.data);
}

static void did_enter(void* context, orlan_crossing crossing) {
  ((seen*)context)->entered = crossing;
}

static void take_polygons(void* context, const orlan_polygon* polygons, size_t count) {
  (void)polygons;
  ((seen*)context)->polygons = count;
}

static void take_details(void* context, const orlan_notification_details* details) {
  seen* all = context;
  snprintf(all->headline, sizeof all->headline, "%s", details->headline.data);
}

const char* walk(mini_phone* phone) {
  seen all = {{0}, {0, 0}, 0, {0}};
  const orlan_plugin_delegate delegate = {sizeof delegate, &all, did_authenticate, NULL};
  const orlan_geofence_delegate crossings = {sizeof crossings, &all, did_enter, NULL};
  orlan_subscription* polygons = NULL;
  orlan_subscription* details = NULL;
  const orlan_string tags[] = {orlan_str("north"), orlan_str("loud")};

  EXPECT(orlan_install(phone->handle, NULL) == ORLAN_OK);
  EXPECT(orlan_foreground_set_delegate(&crossings) == ORLAN_OK);
  EXPECT(orlan_subscribe_polygons(take_polygons, &all, &polygons) == ORLAN_OK);
  EXPECT(orlan_subscribe_notifications(take_details, &all, &details) == ORLAN_OK);
  EXPECT(orlan_start_with_api_key(orlan_str("KEY"), ORLAN_STAGING, tags, 2, &delegate) == ORLAN_OK);
  mini_run_for(phone, 1000000);
  EXPECT(strcmp(all.started_as, "D1 O1") == 0);

  EXPECT(mini_move_to(phone, 51.49, -0.12) == ORLAN_OK);
  EXPECT(orlan_refetch_geofence() == ORLAN_OK);
  mini_run_for(phone, 10000000);
  EXPECT(all.polygons == 1);
  EXPECT(mini_move_to(phone, 51.5, -0.12) == ORLAN_OK);
  mini_run_for(phone, 10000000);
  EXPECT(all.entered.campaign_id == 42 && all.entered.location_id == 7);
  EXPECT(mini_count(phone, "notification Welcome") == 1);

  orlan_notification tapped = {.struct_size = sizeof tapped};
  tapped.identifier = orlan_str("n");
  tapped.title = orlan_str("Welcome");
  tapped.user_info = orlan_str(phone->user_info);
  EXPECT(orlan_phone_tapped(phone->handle, &tapped, orlan_str(NULL), NULL, NULL) == ORLAN_OK);
  EXPECT(strcmp(all.headline, "Welcome") == 0);

  orlan_subscription_free(polygons);
  orlan_subscription_free(details);
  EXPECT(orlan_uninstall() == ORLAN_OK);
  return NULL;
}
