#ifndef ORLAN_C_PHONE_H
#define ORLAN_C_PHONE_H

#include "orlan/c/install.h"
#include "orlan/c/types.h"

/// A phone of the host's own: tables of functions that the library calls, and functions that the host calls
/// when something happens to the phone.
///
/// Every table begins with its `struct_size` and a `context`, which is handed to each of its functions and
/// must be usable until `orlan_phone_free` has returned. Tables are copied by `orlan_phone_new`. A function
/// that may be NULL says what happens then; a whole table may be NULL if all of its functions may.
///
/// Table functions are called on the main thread unless a comment says "any thread"; those may come from
/// several threads at once. Inside them the phone may only answer (`orlan_answer_…`, `orlan_phone_answer`,
/// `orlan_phone_http_…`): all else is `ORLAN_BUSY` there, `orlan_phone_run` too.
#ifdef __cplusplus
extern "C" {
#endif

/// Names a piece of work that the library wants run, a question, a request, a queue, a location manager.
/// Never 0, never used twice for one phone.
typedef uint64_t orlan_id;

/// Takes what a table function answers, for the length of its call.
typedef struct orlan_answer orlan_answer;

// ---- The main loop and queues --------------------------------------------------------------------------

/// The main thread. `post` and `post_after` are needed.
///
/// A task is run by `orlan_phone_run`, once, on the main thread, never inside the function that posts it.
/// Tasks that are never run do no harm.
typedef struct orlan_loop_functions {
  size_t struct_size;
  void* context;
  /// Any thread. Tasks run in the order of posting.
  void (*post)(void* context, orlan_id task);
  /// Any thread. Runs the task `delay` microseconds from now on a clock that nobody sets, not before; 0 or
  /// less: as soon as possible. Equal deadlines run in the order of posting.
  void (*post_after)(void* context, int64_t delay, orlan_id task);
  /// The task need not be run any more; running it does nothing. NULL: nobody tells.
  void (*cancel)(void* context, orlan_id task);
  /// Any thread. Whether the caller is on the main thread. NULL: it is the thread that made the phone.
  bool (*is_main_thread)(void* context);
} orlan_loop_functions;

/// Queues, on which tasks run one after the other in the order of posting, on any thread but never inside
/// `post`. NULL: a thread of the library's own for each queue. With a `post` that posts to the main loop all
/// work is the main thread's, which suits virtual time.
typedef struct orlan_queue_functions {
  size_t struct_size;
  void* context;
  /// Any thread.
  void (*post)(void* context, orlan_id queue, orlan_id task);
  /// A queue is made, with a label for diagnostics, or is gone: what was posted to it has been run by then
  /// and need not be run. Any thread. May be NULL.
  void (*made)(void* context, orlan_id queue, orlan_string label);
  void (*gone)(void* context, orlan_id queue);
} orlan_queue_functions;

/// Runs a task that was posted: one of the main loop on the main thread, one of a queue on any.
/// `ORLAN_WRONG_THREAD` for one of the main loop elsewhere; it still waits. `ORLAN_UNKNOWN` for one that has
/// run, was cancelled or is obsolete, which is no mistake. Any thread.
ORLAN_API orlan_status orlan_phone_run(orlan_phone* phone, orlan_id task);

// ---- Time and chance -----------------------------------------------------------------------------------

/// The wall clock. Any thread.
typedef struct orlan_clock_functions {
  size_t struct_size;
  void* context;
  /// Microseconds since 1970 in UTC; may jump. NULL: the machine's.
  int64_t (*now)(void* context);
  /// Seconds that local time is ahead of UTC at that time. NULL: the machine's time zone.
  int64_t (*offset_from_utc)(void* context, int64_t time);
} orlan_clock_functions;

/// Random bits, good enough for identifiers. Any thread. NULL: the machine's.
typedef struct orlan_random_functions {
  size_t struct_size;
  void* context;
  uint64_t (*next)(void* context);
} orlan_random_functions;

// ---- Store and files -----------------------------------------------------------------------------------

enum {
  ORLAN_VALUE_BOOLEAN = 1,
  ORLAN_VALUE_INTEGER = 2,
  ORLAN_VALUE_REAL = 3,
  ORLAN_VALUE_TEXT = 4,
  ORLAN_VALUE_BYTES = 5
};

/// A stored value. It comes back with the kind it was written with: true is not 1.
typedef struct orlan_value {
  int32_t kind;
  bool boolean;
  int64_t integer;
  double real;
  orlan_string text;  ///< of kind text, and of kind bytes
} orlan_value;

/// Small persistent state by key. Any thread. What `set` was given is there after a crash; a write that
/// cannot be kept leaves the old value. All four are needed. NULL: kept in memory for as long as the phone.
typedef struct orlan_store_functions {
  size_t struct_size;
  void* context;
  /// Answers with `orlan_answer_value`, or not at all when there is none.
  void (*get)(void* context, orlan_string key, orlan_answer* answer);
  void (*set)(void* context, orlan_string key, const orlan_value* value);
  void (*remove)(void* context, orlan_string key);
  /// Answers with `orlan_answer_entry` for each entry, in any order.
  void (*list)(void* context, orlan_answer* answer);
} orlan_store_functions;

ORLAN_API void orlan_answer_value(orlan_answer* answer, const orlan_value* value);
ORLAN_API void orlan_answer_entry(orlan_answer* answer, orlan_string key, const orlan_value* value);

/// The application's own files: plain files in `caches_directory`, private to the user. Any thread; may wait
/// for the disk. Each tells whether it worked. All but the context are needed. NULL: kept in memory for as
/// long as the phone, the log among them.
typedef struct orlan_file_functions {
  size_t struct_size;
  void* context;
  orlan_string caches_directory;  ///< absolute, without a slash at its end; copied
  bool (*exists)(void* context, orlan_string path);
  /// Answers with `orlan_answer_bytes`.
  bool (*read)(void* context, orlan_string path, orlan_answer* answer);
  /// The whole file is replaced or stays as it was, never a mixture.
  bool (*write)(void* context, orlan_string path, orlan_string bytes);
  /// Fails when there is no such file, and makes none.
  bool (*append)(void* context, orlan_string path, orlan_string bytes);
  bool (*remove)(void* context, orlan_string path);
} orlan_file_functions;

ORLAN_API void orlan_answer_bytes(orlan_answer* answer, orlan_string bytes);

// ---- HTTP ----------------------------------------------------------------------------------------------

typedef struct orlan_header {
  orlan_string name;
  orlan_string value;
} orlan_header;

typedef struct orlan_http_request {
  size_t struct_size;
  orlan_string method;
  orlan_string url;
  const orlan_header* headers;  ///< to be sent in this order, with nothing added but what HTTP itself needs
  size_t header_count;
  orlan_string body;  ///< bytes; absent: none, which is not the same as an empty one
  int64_t timeout;    ///< microseconds
} orlan_http_request;

typedef struct orlan_http_reply {
  size_t struct_size;
  int32_t status;  ///< 0: the peer did not speak HTTP
  const orlan_header* headers;
  size_t header_count;
  orlan_string body;  ///< bytes; absent: none was sent
} orlan_http_reply;

/// Sends over https (plain http to the loopback only) with certificate checks; follows no redirect, never
/// retries. Other URLs, and methods and headers that would not stay on their line, never get here. NULL: no
/// network, every request fails.
typedef struct orlan_http_functions {
  size_t struct_size;
  void* context;
  /// Any thread. The call is answered once by one of the functions below, at any time, also inside.
  void (*send)(void* context, orlan_id call, const orlan_http_request* request);
  /// Nobody waits for the answer any more; giving one does nothing. Any thread. May be NULL.
  void (*cancel)(void* context, orlan_id call);
} orlan_http_functions;

/// Causes of a failed request. Others are allowed; for these the library has words of its own.
enum {
  ORLAN_HTTP_CANCELLED = -999,
  ORLAN_HTTP_BAD_URL = -1000,
  ORLAN_HTTP_TIMED_OUT = -1001,
  ORLAN_HTTP_CANNOT_CONNECT = -1004
};

/// The answer to a request: any status, or a fault of the transport. `ORLAN_UNKNOWN` for one that nobody
/// waits for, which is no mistake. Any thread.
ORLAN_API orlan_status orlan_phone_http_reply(orlan_phone* phone, orlan_id call,
                                              const orlan_http_reply* reply);
ORLAN_API orlan_status orlan_phone_http_failed(orlan_phone* phone, orlan_id call, int64_t code,
                                               orlan_string why);

// ---- Location ------------------------------------------------------------------------------------------

/// A circle that the phone watches, known by its identifier.
typedef struct orlan_region {
  orlan_string identifier;
  orlan_circle circle;
  bool notify_on_entry;
  bool notify_on_exit;
} orlan_region;

/// The location service. The library makes several managers, each with its own settings; authorization,
/// last location and watched regions are the application's. Any function may be NULL; a phone without a table
/// is authorized always and only tells its fixes.
typedef struct orlan_location_functions {
  size_t struct_size;
  void* context;
  /// `ORLAN_LOCATION_…`. NULL: always.
  int32_t (*authorization)(void* context);
  /// Asks the person, `always` or while the application is in use; a change is told by
  /// `orlan_phone_location_authorization_changed`.
  void (*request_authorization)(void* context, bool always);
  /// A manager is there ("permission", "foreground", "background"), or is gone with its updates.
  void (*made)(void* context, orlan_id manager, orlan_string name);
  void (*gone)(void* context, orlan_id manager);
  /// Metres; -1: the best there is.
  void (*set_desired_accuracy)(void* context, orlan_id manager, double metres);
  /// Metres between two fixes that are told; -1: every fix.
  void (*set_distance_filter)(void* context, orlan_id manager, double metres);
  void (*set_background_updates)(void* context, orlan_id manager, bool allowed);
  /// Starts or stops live fixes, and changes of about 500 m.
  void (*set_updating)(void* context, orlan_id manager, bool running);
  void (*set_significant_changes)(void* context, orlan_id manager, bool running);
  /// Writes the last known location; false when there is none. NULL: the last one that was told.
  bool (*last_location)(void* context, orlan_location* location);
  /// Watches a region, or no longer. Never more than 20; one with a known identifier replaces it.
  void (*start_region)(void* context, const orlan_region* region);
  void (*stop_region)(void* context, orlan_string identifier);
  /// Answers with `orlan_answer_region` for each region that is watched, also of an earlier process. NULL:
  /// those that this phone was asked to watch.
  void (*regions)(void* context, orlan_answer* answer);
} orlan_location_functions;

ORLAN_API void orlan_answer_region(orlan_answer* answer, const orlan_region* region);

/// For all managers, in the functions below.
enum { ORLAN_ALL_MANAGERS = 0 };

/// Fixes, oldest first, for one manager; or for all whose updates run, where the library itself looks at
/// their distance filters, and tells nobody while the application is not authorized.
ORLAN_API orlan_status orlan_phone_fixes(orlan_phone* phone, orlan_id manager, const orlan_location* fixes,
                                         size_t count);
ORLAN_API orlan_status orlan_phone_location_failed(orlan_phone* phone, orlan_id manager,
                                                   const orlan_error* error);
ORLAN_API orlan_status orlan_phone_location_authorization_changed(orlan_phone* phone);
ORLAN_API orlan_status orlan_phone_region_entered(orlan_phone* phone, orlan_id manager,
                                                  const orlan_region* region);
ORLAN_API orlan_status orlan_phone_region_exited(orlan_phone* phone, orlan_id manager,
                                                 const orlan_region* region);

// ---- Notifications -------------------------------------------------------------------------------------

/// The notification centre. Any thread. Each question is answered once by `orlan_phone_answer`, at any time,
/// also inside.
typedef struct orlan_notification_functions {
  size_t struct_size;
  void* context;
  /// Schedules; a known identifier replaces. Answer: an error or none. NULL: it is taken and never shown.
  void (*add)(void* context, const orlan_notification* notification, orlan_id question);
  /// Asks the person, at most once a phone. `options` are `ORLAN_SHOW_…`. Answer: 1 granted, 0 not, or an
  /// error. NULL: granted.
  void (*request_authorization)(void* context, uint32_t options, orlan_id question);
  /// Answer: `ORLAN_NOTIFICATIONS_…`. NULL: authorized.
  void (*authorization)(void* context, orlan_id question);
} orlan_notification_functions;

/// `error` may be NULL; then `value` counts. `ORLAN_UNKNOWN` for a question that nobody waits for, which is
/// no mistake. Any thread.
ORLAN_API orlan_status orlan_phone_answer(orlan_phone* phone, orlan_id question, int64_t value,
                                          const orlan_error* error);

/// A notification arrives while the application is in front. `shown` is called once, inside or later, with
/// the bits of how it is to appear (`ORLAN_SHOW_…`; 0: not at all); it may be NULL.
typedef void (*orlan_shown_completion)(void* context, uint32_t options);
ORLAN_API orlan_status orlan_phone_present(orlan_phone* phone, const orlan_notification* notification,
                                           orlan_shown_completion shown, void* context);

/// The person tapped a notification; `action` is optional. `done` as above.
typedef void (*orlan_done_completion)(void* context);
ORLAN_API orlan_status orlan_phone_tapped(orlan_phone* phone, const orlan_notification* notification,
                                          orlan_string action, orlan_done_completion done, void* context);

// ---- The application -----------------------------------------------------------------------------------

enum { ORLAN_STATE_ACTIVE = 0, ORLAN_STATE_INACTIVE = 1, ORLAN_STATE_BACKGROUND = 2 };
enum {
  ORLAN_DID_ENTER_BACKGROUND = 0,
  ORLAN_WILL_ENTER_FOREGROUND = 1,
  ORLAN_DID_BECOME_ACTIVE = 2,
  ORLAN_WILL_RESIGN_ACTIVE = 3
};

/// The application's life cycle.
typedef struct orlan_application_functions {
  size_t struct_size;
  void* context;
  /// `ORLAN_STATE_…`; during a signal already the new one. NULL: what `orlan_phone_move_to` said last, active
  /// at first.
  int32_t (*state)(void* context);
  /// Registers for push; the token then comes by `orlan_update_…_token`. May be NULL.
  void (*register_for_push)(void* context);
} orlan_application_functions;

/// A signal of the life cycle, for phones that have `state`.
ORLAN_API orlan_status orlan_phone_signal(orlan_phone* phone, int32_t signal);

/// The application goes to that state, with the signals that lie on the way, for phones without `state`
/// (`ORLAN_INVALID_ARGUMENT` otherwise).
ORLAN_API orlan_status orlan_phone_move_to(orlan_phone* phone, int32_t state);

// ---- Device, bundle, log -------------------------------------------------------------------------------

/// What the phone says of itself; copied.
typedef struct orlan_device {
  size_t struct_size;
  orlan_string vendor_identifier;  ///< optional: a UUID, the same at every run; used in upper case
  orlan_string system_version;
  orlan_string model;
  orlan_string name;
  orlan_string locale;  ///< such as "en_GB"
} orlan_device;

/// The application's package; copied.
typedef struct orlan_bundle {
  size_t struct_size;
  orlan_string identifier;      ///< optional
  orlan_string info;            ///< a JSON object; absent: empty
  orlan_string property_lists;  ///< a JSON object: {"OrlanConfig": {…}}; absent: there are none
} orlan_bundle;

/// The library's diagnostics. Any thread.
typedef struct orlan_log_functions {
  size_t struct_size;
  void* context;
  /// One line of the log, one at a time: its level ("INFO", "WARN", "ERROR", "•"), its message, and the whole
  /// line with its final line break. NULL: nothing is printed.
  void (*print)(void* context, orlan_string level, orlan_string message, orlan_string line);
  /// A line for the machine's own log. NULL: dropped.
  void (*system_log)(void* context, orlan_string message);
} orlan_log_functions;

// ---- All together --------------------------------------------------------------------------------------

/// The parts of a phone. Only `loop` is needed.
typedef struct orlan_phone_parts {
  size_t struct_size;
  const orlan_loop_functions* loop;
  const orlan_queue_functions* queues;
  const orlan_clock_functions* clock;
  const orlan_random_functions* random;
  const orlan_store_functions* store;
  const orlan_file_functions* files;
  const orlan_http_functions* http;
  const orlan_location_functions* location;
  const orlan_notification_functions* notifications;
  const orlan_application_functions* application;
  const orlan_device* device;
  const orlan_bundle* bundle;
  const orlan_log_functions* log;
} orlan_phone_parts;

/// Makes a phone, on the main thread. Calls none of its functions.
ORLAN_API orlan_status orlan_phone_new(const orlan_phone_parts* parts, orlan_phone** phone);

#ifdef __cplusplus
}
#endif

#endif
