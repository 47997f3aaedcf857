#include "c/MiniPhone.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void post_after(void* context, int64_t delay, orlan_id task) {
  mini_phone* phone = context;
  if (phone->task_count == MINI_TASKS) abort();
  phone->tasks[phone->task_count].due = phone->now + (delay > 0 ? delay : 0);
  phone->tasks[phone->task_count].id = task;
  ++phone->task_count;
}

static void post(void* context, orlan_id task) {
  post_after(context, 0, task);
}

static void post_to_queue(void* context, orlan_id queue, orlan_id task) {
  (void)queue;
  post(context, task);
}

static void cancel(void* context, orlan_id task) {
  mini_phone* phone = context;
  for (size_t i = 0; i < phone->task_count; ++i) {
    if (phone->tasks[i].id == task) phone->tasks[i] = phone->tasks[--phone->task_count];
  }
}

/// Identifiers grow, so they tell the order of posting.
static bool take_due(mini_phone* phone, int64_t limit, orlan_id* task) {
  size_t next = phone->task_count;
  for (size_t i = 0; i < phone->task_count; ++i) {
    if (phone->tasks[i].due > limit) continue;
    if (next == phone->task_count || phone->tasks[i].due < phone->tasks[next].due ||
        (phone->tasks[i].due == phone->tasks[next].due && phone->tasks[i].id < phone->tasks[next].id)) {
      next = i;
    }
  }
  if (next == phone->task_count) return false;
  if (phone->tasks[next].due > phone->now) phone->now = phone->tasks[next].due;
  *task = phone->tasks[next].id;
  phone->tasks[next] = phone->tasks[--phone->task_count];
  return true;
}

void mini_run_for(mini_phone* phone, int64_t microseconds) {
  const int64_t end = phone->now + microseconds;
  orlan_id task = 0;
  while (take_due(phone, end, &task)) orlan_phone_run(phone->handle, task);
  phone->now = end;
}

static int64_t now(void* context) {
  return ((mini_phone*)context)->now;
}

static int64_t utc(void* context, int64_t time) {
  (void)context;
  (void)time;
  return 0;
}

static uint64_t chance(void* context) {
  mini_phone* phone = context;
  phone->random = phone->random * 6364136223846793005u + 1442695040888963407u;
  return phone->random;
}

static void send_request(void* context, orlan_id call, const orlan_http_request* request) {
  mini_phone* phone = context;
  mini_line(phone, "request ", request->url);
  phone->last_call = call;
  if (phone->keeps_requests) return;
  for (size_t i = 0; i < phone->route_count; ++i) {
    if (strstr(request->url.data, phone->routes[i].path) == NULL) continue;
    orlan_http_reply reply = {.struct_size = sizeof reply, .status = phone->routes[i].status};
    reply.body = phone->routes[i].body;
    orlan_phone_http_reply(phone->handle, call, &reply);
    return;
  }
  orlan_phone_http_failed(phone->handle, call, ORLAN_HTTP_CANNOT_CONNECT, orlan_str("nobody there"));
}

static int32_t authorization(void* context) {
  return ((mini_phone*)context)->location_authorization;
}

static void add_notification(void* context, const orlan_notification* notification, orlan_id question) {
  mini_phone* phone = context;
  mini_line(phone, "notification ", notification->title);
  snprintf(phone->user_info, sizeof phone->user_info, "%s", notification->user_info.data);
  orlan_phone_answer(phone->handle, question, 0, NULL);
}

static void print(void* context, orlan_string level, orlan_string message, orlan_string line) {
  (void)level;
  (void)line;
  mini_line(context, "log ", message);
}

mini_phone* mini_new(void) {
  mini_phone* phone = calloc(1, sizeof *phone);
  phone->now = 1767225600000000;  // the first second of 2026
  phone->location_authorization = ORLAN_LOCATION_ALWAYS;
  const orlan_loop_functions loop = {sizeof loop, phone, post, post_after, cancel, NULL};
  const orlan_queue_functions queues = {sizeof queues, phone, post_to_queue, NULL, NULL};
  const orlan_clock_functions clock = {sizeof clock, phone, now, utc};
  const orlan_random_functions random = {sizeof random, phone, chance};
  const orlan_http_functions http = {sizeof http, phone, send_request, NULL};
  const orlan_location_functions location = {
      .struct_size = sizeof location, .context = phone, .authorization = authorization};
  const orlan_notification_functions notifications = {sizeof notifications, phone, add_notification, NULL,
                                                      NULL};
  const orlan_log_functions log = {sizeof log, phone, print, NULL};
  const orlan_phone_parts parts = {.struct_size = sizeof parts,
                                   .loop = &loop,
                                   .queues = &queues,
                                   .clock = &clock,
                                   .random = &random,
                                   .http = &http,
                                   .location = &location,
                                   .notifications = &notifications,
                                   .log = &log};
  if (orlan_phone_new(&parts, &phone->handle) != ORLAN_OK) {
    fprintf(stderr, "%s\n", orlan_last_problem());
    abort();
  }
  return phone;
}

orlan_status mini_free(mini_phone* phone) {
  const orlan_status status = orlan_phone_free(phone->handle);
  if (status == ORLAN_OK) free(phone);
  return status;
}

void mini_route(mini_phone* phone, const char* path, int32_t status, const char* body) {
  phone->routes[phone->route_count].path = path;
  phone->routes[phone->route_count].status = status;
  phone->routes[phone->route_count].body = orlan_str(body);
  ++phone->route_count;
}

void mini_serve(mini_phone* phone) {
  mini_route(phone, "/device-registerd/create", 200, "{\"data\":{\"device_id\":\"D1\",\"orlan_id\":\"O1\"}}");
  mini_route(phone, "/plugin-activity/create", 200, "ok");
  mini_route(phone, "/activities", 200, "ok");
  mini_route(
      phone, "/check-geofence", 200,
      "{\"geoCampaign\":[{\"campaignName\":\"Market\",\"campaignId\":42,\"type\":\"geo\",\"locations\":[7],"
      "\"active\":\"true\",\"testIds\":\"\",\"segmentationTags\":\"\",\"locationsArray\":{\"locationId\":7,"
      "\"_id\":\"l\",\"geofence\":["
      "{\"position\":0,\"latitude\":\"51.499\",\"longitude\":\"-0.121\",\"_id\":\"a\"},"
      "{\"position\":1,\"latitude\":\"51.499\",\"longitude\":\"-0.119\",\"_id\":\"b\"},"
      "{\"position\":2,\"latitude\":\"51.501\",\"longitude\":\"-0.119\",\"_id\":\"c\"},"
      "{\"position\":3,\"latitude\":\"51.501\",\"longitude\":\"-0.121\",\"_id\":\"d\"}]},"
      "\"notificationsArray\":[{\"id\":1,\"campaignId\":[42],\"headline\":\"Welcome\",\"body\":\"Fresh "
      "bread.\",\"type\":\"text\",\"media\":[],\"questions\":[],\"cta\":[],\"segmentationTags\":\"\","
      "\"testIds\":\"\",\"start\":\"\",\"end\":\"\",\"activation\":\"ON_ENTER\"}]}],\"pushCampaign\":[]}");
}

orlan_status mini_move_to(mini_phone* phone, double latitude, double longitude) {
  const orlan_location fix = {{latitude, longitude}, 5.0, phone->now};
  return orlan_phone_fixes(phone->handle, ORLAN_ALL_MANAGERS, &fix, 1);
}

void mini_line(mini_phone* phone, const char* kind, orlan_string text) {
  if (phone->line_count == MINI_LINES) return;
  snprintf(phone->lines[phone->line_count++], MINI_LINE, "%s%s", kind, text.data);
}

size_t mini_count(const mini_phone* phone, const char* beginning) {
  size_t count = 0;
  for (size_t i = 0; i < phone->line_count; ++i) {
    count += strncmp(phone->lines[i], beginning, strlen(beginning)) == 0;
  }
  return count;
}
