#ifndef ORLAN_TESTS_C_MINI_PHONE_H
#define ORLAN_TESTS_C_MINI_PHONE_H

#include "orlan/c/orlan.h"

/// A phone in C, in memory and in virtual time, on one thread.
#ifdef __cplusplus
extern "C" {
#endif

enum { MINI_TASKS = 4096, MINI_ROUTES = 8, MINI_LINES = 512, MINI_LINE = 160 };

typedef struct mini_phone {
  orlan_phone* handle;
  int64_t now;  // microseconds, both clocks
  uint64_t random;
  struct {
    int64_t due;
    orlan_id id;
  } tasks[MINI_TASKS];
  size_t task_count;
  struct {
    const char* path;
    int32_t status;
    orlan_string body;
  } routes[MINI_ROUTES];
  size_t route_count;
  int32_t location_authorization;
  bool keeps_requests;  // instead of answering
  orlan_id last_call;
  // What could be seen from outside, one line each: "request POST /path", "notification title", "log …".
  char lines[MINI_LINES][MINI_LINE];
  size_t line_count;
  char user_info[1024];  // of the last notification
} mini_phone;

/// Makes the phone and the library's handle of it. `mini_free` frees both.
mini_phone* mini_new(void);
orlan_status mini_free(mini_phone* phone);

void mini_run_for(mini_phone* phone, int64_t microseconds);
void mini_route(mini_phone* phone, const char* path, int32_t status, const char* body);
/// The backend knows the device as D1 and O1, takes reports and has one campaign: a square around 51.5, -0.12
/// that welcomes.
void mini_serve(mini_phone* phone);
orlan_status mini_move_to(mini_phone* phone, double latitude, double longitude);

void mini_line(mini_phone* phone, const char* kind, orlan_string text);
/// How many lines begin so.
size_t mini_count(const mini_phone* phone, const char* beginning);

#ifdef __cplusplus
}
#endif

#endif
