/* A host in C with a phone of its own: one walk through a market, in virtual time.
 *
 * The phone is what a port to another system begins with: a loop that runs what the library posts, a network,
 * and a notification centre. What it leaves out (store, files, random numbers, regions) the library does
 * itself.
 */
#include <orlan/c/orlan.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const int64_t second = 1000000;

/* ---- The phone ---- */

typedef struct phone {
  orlan_phone* handle;
  int64_t now;  // microseconds since 1970, and the clock of the timers too
  struct task {
    int64_t due;
    orlan_id id;
  } tasks[256];
  size_t count;
} phone;

static void must(orlan_status status) {
  if (status == ORLAN_OK || status == ORLAN_UNKNOWN) return;
  fprintf(stderr, "%s\n", orlan_last_problem());
  exit(1);
}

static void post_after(void* context, int64_t delay, orlan_id task) {
  phone* self = context;
  if (self->count == sizeof self->tasks / sizeof *self->tasks) abort();
  self->tasks[self->count++] = (struct task){self->now + (delay > 0 ? delay : 0), task};
}

static void post(void* context, orlan_id task) {
  post_after(context, 0, task);
}

static void post_to_queue(void* context, orlan_id queue, orlan_id task) {
  (void)queue;  // all queues are the main loop: nothing here is in a hurry
  post(context, task);
}

/* Runs what is due; equal deadlines in the order of posting, which the identifiers tell. */
static void run_for(phone* self, int64_t duration) {
  const int64_t end = self->now + duration;
  while (true) {
    struct task* next = NULL;
    for (struct task* each = self->tasks; each < self->tasks + self->count; ++each) {
      if (each->due > end) continue;
      if (!next || each->due < next->due || (each->due == next->due && each->id < next->id)) next = each;
    }
    if (!next) break;
    const struct task due = *next;
    *next = self->tasks[--self->count];
    if (due.due > self->now) self->now = due.due;
    must(orlan_phone_run(self->handle, due.id));
  }
  self->now = end;
}

static int64_t now(void* context) {
  return ((phone*)context)->now;
}

static const char* answer_to(const char* url) {
  if (strstr(url, "/device-registerd/create")) {
    return "{\"data\": {\"device_id\": \"device-1\", \"orlan_id\": \"orlan-1\"}}";
  }
  if (!strstr(url, "/check-geofence")) return "ok";
  return "{\"geoCampaign\": [{\"campaignName\": \"Market\", \"campaignId\": 42, \"type\": \"geofence\","
         " \"locations\": [7], \"active\": \"true\", \"testIds\": \"\", \"segmentationTags\": \"\","
         " \"locationsArray\": {\"locationId\": 7, \"_id\": \"\", \"geofence\": ["
         "  {\"position\": 0, \"latitude\": \"51.499\", \"longitude\": \"-0.121\", \"_id\": \"\"},"
         "  {\"position\": 1, \"latitude\": \"51.499\", \"longitude\": \"-0.119\", \"_id\": \"\"},"
         "  {\"position\": 2, \"latitude\": \"51.501\", \"longitude\": \"-0.119\", \"_id\": \"\"},"
         "  {\"position\": 3, \"latitude\": \"51.501\", \"longitude\": \"-0.121\", \"_id\": \"\"}]},"
         " \"notificationsArray\": [{\"id\": 1, \"campaignId\": [42], \"headline\": \"Welcome to the "
         "market\","
         "  \"body\": \"Fresh bread at stall 7.\", \"type\": \"text\", \"media\": [], \"questions\": [],"
         "  \"cta\": [], \"segmentationTags\": \"\", \"testIds\": \"\", \"start\": \"\", \"end\": \"\","
         "  \"activation\": \"ON_ENTER\"}]}], \"pushCampaign\": []}";
}

static void send_request(void* context, orlan_id call, const orlan_http_request* request) {
  phone* self = context;
  orlan_http_reply reply = {.struct_size = sizeof reply, .status = 200};
  reply.body = orlan_str(answer_to(request->url.data));
  must(orlan_phone_http_reply(self->handle, call, &reply));  // a real one answers later, from any thread
}

static void add_notification(void* context, const orlan_notification* notification, orlan_id question) {
  phone* self = context;
  printf("notification: %s - %s\n", notification->title.data, notification->body.data);
  must(orlan_phone_answer(self->handle, question, 0, NULL));
}

static void make_phone(phone* self) {
  const orlan_loop_functions loop = {
      .struct_size = sizeof loop, .context = self, .post = post, .post_after = post_after};
  const orlan_queue_functions queues = {.struct_size = sizeof queues, .context = self, .post = post_to_queue};
  const orlan_clock_functions clock = {.struct_size = sizeof clock, .context = self, .now = now};
  const orlan_http_functions http = {.struct_size = sizeof http, .context = self, .send = send_request};
  const orlan_notification_functions notifications = {
      .struct_size = sizeof notifications, .context = self, .add = add_notification};
  const orlan_phone_parts parts = {.struct_size = sizeof parts,
                                   .loop = &loop,
                                   .queues = &queues,
                                   .clock = &clock,
                                   .http = &http,
                                   .notifications = &notifications};
  must(orlan_phone_new(&parts, &self->handle));
}

static void move_to(phone* self, double latitude, double longitude) {
  const orlan_location fix = {{latitude, longitude}, 5.0, self->now};
  must(orlan_phone_fixes(self->handle, ORLAN_ALL_MANAGERS, &fix, 1));
  run_for(self, 10 * second);
}

/* ---- The host ---- */

static void did_authenticate(void* context, orlan_string device, orlan_string orlan) {
  (void)context;
  printf("device %s is known as %s\n", device.data, orlan.data);
}

static void did_fail(void* context, const orlan_error* error) {
  (void)context;
  printf("not started: %s\n", error->description.data);
}

static void did_enter(void* context, orlan_crossing crossing) {
  (void)context;
  printf("entered campaign %lld\n", (long long)crossing.campaign_id);
}

static void did_exit(void* context, orlan_crossing crossing) {
  (void)context;
  printf("left campaign %lld\n", (long long)crossing.campaign_id);
}

int main(void) {
  phone own = {.now = 1767225600 * second};
  make_phone(&own);
  must(orlan_install(own.handle, NULL));

  const orlan_plugin_delegate delegate = {sizeof delegate, NULL, did_authenticate, did_fail};
  const orlan_geofence_delegate crossings = {sizeof crossings, NULL, did_enter, did_exit};
  const orlan_string tags[] = {orlan_str("regulars")};
  must(orlan_foreground_set_delegate(&crossings));
  move_to(&own, 51.490, -0.120);
  must(orlan_start_with_api_key(orlan_str("api-key"), ORLAN_STAGING, tags, 1, &delegate));
  run_for(&own, 60 * second);

  move_to(&own, 51.500, -0.120);
  move_to(&own, 51.510, -0.120);

  orlan_string stats;
  must(orlan_notification_stats(&stats));
  puts(stats.data);
  orlan_string_free(stats);

  must(orlan_uninstall());
  must(orlan_phone_free(own.handle));
  return 0;
}
