#ifndef ORLAN_PHONES_C_LINUX_H
#define ORLAN_PHONES_C_LINUX_H

#include "orlan/c/orlan.h"

/// The Linux phone for hosts in C: this machine's network, disk and event loop, and positions from a track.
/// Its functions stand in the library `orlan-linux`.
///
///     orlan_phone* phone = NULL;
///     orlan_linux_phone_new(NULL, &phone);
///     orlan_install(phone, NULL);
///     orlan_start_with_api_key(orlan_str("key"), ORLAN_PRODUCTION, NULL, 0, NULL);
///     orlan_linux_run(phone);
#ifdef __cplusplus
extern "C" {
#endif

/// `context` as the host gave it. Main thread.
typedef void (*orlan_linux_task)(void* context);

typedef struct orlan_linux_options {
  size_t struct_size;
  orlan_string home;            ///< all files are below it; absent: the user's XDG directories
  orlan_string application;     ///< the name of its folder there; absent: "orlan"
  orlan_string bundle;          ///< the application's identifier; optional
  orlan_string property_lists;  ///< the directory that holds OrlanConfig.plist; optional
  bool silent;                  ///< prints no log lines and writes none to the system's log
  double time_scale;            ///< times as fast as real time, for tracks; 0: real time
  void* context;                ///< for the next one; usable until the phone is freed
  /// A notification that comes up, for the host to show. May be NULL.
  void (*show)(void* context, const orlan_notification* notification);
} orlan_linux_options;

/// Makes the phone; the calling thread is its main thread. `options` may be NULL. Freed by
/// `orlan_phone_free`.
ORLAN_API orlan_status orlan_linux_phone_new(const orlan_linux_options* options, orlan_phone** phone);

/// Runs the main loop until `orlan_linux_stop`. `ORLAN_BUSY` inside a callback.
ORLAN_API orlan_status orlan_linux_run(orlan_phone* phone);
/// Any thread, but no signal handler.
ORLAN_API orlan_status orlan_linux_stop(orlan_phone* phone);

/// Runs a task of the host's on the main loop, `delay` microseconds from now; outside any callback, so that
/// it may uninstall. What has not run when the phone is freed never does. Any thread.
ORLAN_API orlan_status orlan_linux_post(orlan_phone* phone, int64_t delay, orlan_linux_task task,
                                        void* context);

/// Walks the phone along a track, a file in GPX or NMEA form, in the place of any other. `finished` runs
/// after the last fix; it may be NULL. `ORLAN_INVALID_ARGUMENT`, with the reason in `orlan_last_problem`,
/// when the file is no track.
ORLAN_API orlan_status orlan_linux_play(orlan_phone* phone, orlan_string path, orlan_linux_task finished,
                                        void* context);

/// One fix, told to everybody.
ORLAN_API orlan_status orlan_linux_fix(orlan_phone* phone, orlan_location fix);

/// The application goes to `ORLAN_STATE_…`; the person taps a notification that was shown.
ORLAN_API orlan_status orlan_linux_move_to(orlan_phone* phone, int32_t state);
ORLAN_API orlan_status orlan_linux_tap(orlan_phone* phone, const orlan_notification* notification);

#ifdef __cplusplus
}
#endif

#endif
