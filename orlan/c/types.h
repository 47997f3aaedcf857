#ifndef ORLAN_C_TYPES_H
#define ORLAN_C_TYPES_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <string.h>

/// The rules for every function, type and callback of these headers.
///
/// **Ownership.** What one side passes to the other, as an argument or inside a struct, is lent for the
/// length of the call: who wants to keep it copies it. There are two exceptions, both the host's to free: a
/// text that a function of the library writes to an `orlan_string*` (`orlan_string_free`), and a handle that
/// it writes to a pointer to one (`orlan_subscription_free`, `orlan_phone_free`). A `context` is never looked
/// at; each function says until when it must be usable.
///
/// **Threads.** The main thread is the one that the phone's loop says is main. Every function belongs to it,
/// and every callback comes on it, unless its comment says "any thread". A function that is called on another
/// thread does nothing and returns `ORLAN_WRONG_THREAD`. Callbacks may call back into the library, except
/// those that say otherwise; `orlan_install`, `orlan_uninstall` and `orlan_phone_free` refuse inside any
/// callback.
///
/// **Mistakes.** A function returns `ORLAN_OK`, or says which mistake was made and has then done nothing and
/// calls nobody; `orlan_last_problem` has it in words. What the library, the backend or the person makes of a
/// correct call is not a mistake: it reaches the completion, the delegate or the log. Where memory runs out
/// in work that nobody called for, such as a task of the main loop, that work is given up.
///
/// **Texts** are UTF-8 of any length and may hold NUL; texts that are not UTF-8 are refused. What is called
/// bytes may be anything.
///
/// **Growth.** Structs that begin with `struct_size` may get more members at their end in later versions: set
/// it to `sizeof` the struct and every member that you do not use to zero. In those that the library lends it
/// tells how much is there. All other structs stay as they are.
///
/// Callbacks must not throw, jump out of or unwind through the library.
#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#define ORLAN_API __attribute__((visibility("default")))
#else
#define ORLAN_API
#endif

/// `length` bytes at `data`. `data` is NULL for an absent text, which counts as empty where none is
/// optional. Texts that the library lends or gives have a NUL behind their last byte, which is not counted.
typedef struct orlan_string {
  const char* data;
  size_t length;
} orlan_string;

/// A C string as it is; NULL is the absent text.
static inline orlan_string orlan_str(const char* text) {
  orlan_string string;
  string.data = text;
  string.length = text == NULL ? 0 : strlen(text);
  return string;
}

/// Frees a text that a function of the library wrote; the absent one too. Any thread.
ORLAN_API void orlan_string_free(orlan_string string);

typedef int32_t orlan_status;
enum {
  ORLAN_OK = 0,
  ORLAN_NOT_INSTALLED = 1,  ///< `orlan_install` comes first
  ORLAN_WRONG_THREAD = 2,   ///< this belongs to the main thread
  ORLAN_INVALID_ARGUMENT =
      3,               ///< a pointer that must not be NULL, a value that does not exist, a freed phone
  ORLAN_NOT_UTF8 = 4,  ///< a text holds bytes that are not UTF-8
  ORLAN_NOT_JSON = 5,  ///< a text is not the JSON that is asked for
  ORLAN_BUSY = 6,      ///< not now: inside a callback or table function, or while a phone is installed
  ORLAN_UNKNOWN = 7,   ///< an identifier that is not, or no longer, waited for
  ORLAN_FAILED = 8     ///< no memory, or a defect of the library
};

/// What went wrong in the last call on this thread that did not return `ORLAN_OK`, for a person; empty when
/// there was none. Stays until the next such call on this thread. Any thread.
ORLAN_API const char* orlan_last_problem(void);

/// "1.2.3". Any thread, also before anything is installed.
ORLAN_API const char* orlan_version(void);

/// Why something failed: who says so, which case it is, and words for a person.
typedef struct orlan_error {
  orlan_string domain;
  int64_t code;
  orlan_string description;
} orlan_error;

/// The domain of the C interface's own errors. Code 1: the library ended before the answer came.
#define ORLAN_ERROR_DOMAIN "OrlanC"

/// Completions. Each is called once for a call that returned `ORLAN_OK`: inside the call when the outcome is
/// known by then, else later; and with an error of `ORLAN_ERROR_DOMAIN` from `orlan_uninstall` when the
/// library ends first. `context` must be usable until then. A completion may be NULL.
///
/// True without an error, or false with one.
typedef void (*orlan_outcome_completion)(void* context, bool succeeded, const orlan_error* error);
/// Exactly one of `value` and `error` is NULL.
typedef void (*orlan_text_completion)(void* context, const orlan_string* value, const orlan_error* error);

/// Degrees. May be out of range or not finite where it comes from the backend.
typedef struct orlan_coordinate {
  double latitude;
  double longitude;
} orlan_coordinate;

/// One position fix.
typedef struct orlan_location {
  orlan_coordinate coordinate;
  double horizontal_accuracy;  ///< metres; negative: the coordinate is not valid
  int64_t timestamp;           ///< microseconds since 1970 in UTC: when it was taken
} orlan_location;

typedef struct orlan_circle {
  orlan_coordinate centre;
  double radius;  ///< metres
} orlan_circle;

/// A ring of vertices that closes itself.
typedef struct orlan_polygon {
  const orlan_coordinate* vertices;
  size_t count;
} orlan_polygon;

/// Whose area was entered or left.
typedef struct orlan_crossing {
  int64_t campaign_id;
  int64_t location_id;
} orlan_crossing;

/// Values of the location authorization.
enum {
  ORLAN_LOCATION_NOT_DETERMINED = 0,
  ORLAN_LOCATION_RESTRICTED = 1,
  ORLAN_LOCATION_DENIED = 2,
  ORLAN_LOCATION_ALWAYS = 3,
  ORLAN_LOCATION_WHEN_IN_USE = 4
};

/// Values of the notification authorization.
enum {
  ORLAN_NOTIFICATIONS_NOT_DETERMINED = 0,
  ORLAN_NOTIFICATIONS_DENIED = 1,
  ORLAN_NOTIFICATIONS_AUTHORIZED = 2,
  ORLAN_NOTIFICATIONS_PROVISIONAL = 3,
  ORLAN_NOTIFICATIONS_EPHEMERAL = 4
};

/// Bits that say how a notification may appear.
enum { ORLAN_SHOW_BADGE = 1, ORLAN_SHOW_SOUND = 2, ORLAN_SHOW_ALERT = 4, ORLAN_SHOW_BANNER = 16 };

/// A local notification, on its way to the phone's notification centre or back from it.
typedef struct orlan_notification {
  size_t struct_size;
  orlan_string identifier;
  orlan_string title;
  orlan_string body;
  orlan_string user_info;  ///< a JSON object; absent: empty
  int64_t delay;           ///< microseconds from scheduling to delivery; 0 for one that comes back
  bool default_sound;
  bool has_badge;
  int64_t badge;  ///< only with `has_badge`
  orlan_string subtitle;
  orlan_string sound;  ///< optional
  orlan_string thread_identifier;
  orlan_string category_identifier;
  orlan_string target_content_identifier;
  orlan_string launch_image_name;
  uint64_t attachments;  ///< how many
} orlan_notification;

/// What keeps a stream going. Freeing it ends the stream; once that has returned its handler is not called
/// any more. NULL is allowed; so is the handler itself as the place, from its second call on, and any time
/// after `orlan_uninstall`, then on any thread. Else main thread: on another it does nothing, as
/// `orlan_last_problem` tells, and the handle stays the host's to free.
typedef struct orlan_subscription orlan_subscription;
ORLAN_API void orlan_subscription_free(orlan_subscription* subscription);

/// Handlers of streams that several streams share. `context` must be usable until the subscription is freed
/// or `orlan_uninstall` has returned, whichever comes first.
typedef void (*orlan_integer_handler)(void* context, int64_t value);
typedef void (*orlan_text_handler)(void* context, const orlan_string* text);

#ifdef __cplusplus
}
#endif

#endif
