#ifndef ORLAN_C_MONITORS_H
#define ORLAN_C_MONITORS_H

#include "orlan/c/types.h"

/// Entries into and exits from the campaigns' areas, as the two monitors recognise them: one while the
/// application is in front, the other while it is not. Main thread; no start is needed.
#ifdef __cplusplus
extern "C" {
#endif

/// Hears the crossings of one monitor. Either may be NULL.
typedef struct orlan_geofence_delegate {
  size_t struct_size;
  void* context;
  void (*did_enter)(void* context, orlan_crossing crossing);
  void (*did_exit)(void* context, orlan_crossing crossing);
} orlan_geofence_delegate;

/// The table is copied and used until another replaces it or `orlan_uninstall`; NULL removes it.
ORLAN_API orlan_status orlan_foreground_set_delegate(const orlan_geofence_delegate* delegate);
ORLAN_API orlan_status orlan_background_set_delegate(const orlan_geofence_delegate* delegate);

enum {
  ORLAN_FOREGROUND_ENTER = 0,
  ORLAN_FOREGROUND_EXIT = 1,
  ORLAN_BACKGROUND_ENTER = 2,
  ORLAN_BACKGROUND_EXIT = 3
};

/// Every crossing of that kind from now on.
typedef void (*orlan_crossing_handler)(void* context, orlan_crossing crossing);
ORLAN_API orlan_status orlan_subscribe_crossings(int32_t kind, orlan_crossing_handler handler, void* context,
                                                 orlan_subscription** subscription);

/// The circles that the phone watches: the current list inside the call; then, at each change of campaigns,
/// the empty list and the growing one after each circle.
typedef void (*orlan_circles_handler)(void* context, const orlan_circle* circles, size_t count);
ORLAN_API orlan_status orlan_subscribe_circles(orlan_circles_handler handler, void* context,
                                               orlan_subscription** subscription);

/// The library starts, stops, pauses and resumes its monitors by itself as the application moves between
/// foreground and background. A host that does it, too, has the next transition overrule it.
ORLAN_API orlan_status orlan_foreground_start(void);
ORLAN_API orlan_status orlan_foreground_stop(void);
ORLAN_API orlan_status orlan_background_pause(void);
ORLAN_API orlan_status orlan_background_resume(void);

/// Either forgets all cooldowns, those of both monitors; they differ in the log line.
ORLAN_API orlan_status orlan_foreground_clear_cooldown(void);
ORLAN_API orlan_status orlan_background_clear_cooldown(void);

#ifdef __cplusplus
}
#endif

#endif
