#ifndef ORLAN_C_NOTIFICATIONS_H
#define ORLAN_C_NOTIFICATIONS_H

#include "orlan/c/types.h"

/// Notifications that are presented or tapped, as records for the host. Main thread; no start is needed.
#ifdef __cplusplus
extern "C" {
#endif

/// A presented or tapped notification in the form in which a host shows it.
typedef struct orlan_notification_details {
  size_t struct_size;  ///< of the library's: what a newer header has beyond it is not there
  orlan_string id;     ///< a random UUID of the record: one notification handled twice gives two
  orlan_string headline;
  orlan_string body;
  orlan_string media_type;          ///< optional, such as "image"
  orlan_string media_url;           ///< optional, as sent: any text
  orlan_string cta_label;           ///< optional
  orlan_string cta_url;             ///< optional, as sent: any text
  int64_t notification_id;          ///< -1 when the payload does not tell
  int64_t location_id;              ///< likewise
  orlan_string questions;           ///< optional: a JSON array of survey questions
  orlan_string completion_message;  ///< optional: to be shown after a completed survey
} orlan_notification_details;

/// `details` is NULL only where a comment says so.
typedef void (*orlan_details_handler)(void* context, const orlan_notification_details* details);

/// Every record from now on. A notification that is presented and then tapped comes twice.
ORLAN_API orlan_status orlan_subscribe_notifications(orlan_details_handler handler, void* context,
                                                     orlan_subscription** subscription);

/// The latest record inside the call, then every change; NULL while there is none or it has been cleared.
ORLAN_API orlan_status orlan_subscribe_latest_notification(orlan_details_handler handler, void* context,
                                                           orlan_subscription** subscription);

/// Calls `handler` once, inside the call, with the latest record or NULL.
ORLAN_API orlan_status orlan_latest_notification(orlan_details_handler handler, void* context);
ORLAN_API orlan_status orlan_clear_latest_notification(void);

/// Makes a record of the host's the latest one, NULL none; nothing else is done with it. It gets an `id` of
/// its own, as every record does: that of `details` is not read.
ORLAN_API orlan_status orlan_set_latest_notification(const orlan_notification_details* details);

/// Reports what the person did with a notification. Identifiers go out as they are.
ORLAN_API orlan_status orlan_track_cta_engagement(int64_t notification_id, int64_t location_id);
ORLAN_API orlan_status orlan_track_media_view(int64_t notification_id, int64_t location_id);

/// The same for any activity. `ORLAN_INVALID_ARGUMENT` for values that do not exist.
enum {
  ORLAN_ACTIVITY_CTA_ENGAGEMENT = 0,
  ORLAN_ACTIVITY_NOTIFICATION_SENT = 1,
  ORLAN_ACTIVITY_NOTIFICATION_DELIVERED = 2,
  ORLAN_ACTIVITY_MEDIA_VIEWED = 3,
  ORLAN_ACTIVITY_LOCATION_UPDATE = 4,
  ORLAN_ACTIVITY_GEOFENCE_EXIT = 5,
  ORLAN_ACTIVITY_GEOFENCE_ENTRY = 6
};
enum { ORLAN_ABOUT_NOTIFICATION = 0, ORLAN_ABOUT_LOCATION = 1, ORLAN_ABOUT_GEOFENCE = 2 };
ORLAN_API orlan_status orlan_report_notification(int64_t activity, int64_t location_id,
                                                 int64_t notification_id, int64_t about);

/// Each schedules a notification for a second from now. `user_info` is a JSON object.
ORLAN_API orlan_status orlan_send_test_notification(void);
ORLAN_API orlan_status orlan_send_test_notification_with_payload(orlan_string user_info);
ORLAN_API orlan_status orlan_send_firebase_style_test_notification(void);

/// Makes the library's handling of notifications the delegate of the phone's notification centre, in place of
/// whoever is. A start does the like by itself.
ORLAN_API orlan_status orlan_handle_notifications(void);

/// For hosts that want the raw response of a tapped notification and nothing parsed, reported or logged: the
/// delegate, and the bridge in the place of whoever is the notification centre's delegate. The table is
/// copied and used until another replaces it or `orlan_uninstall`; NULL removes it.
typedef struct orlan_notification_delegate {
  size_t struct_size;
  void* context;
  /// `action` is "default" for a plain tap.
  void (*did_receive)(void* context, const orlan_notification* notification, orlan_string action);
} orlan_notification_delegate;
ORLAN_API orlan_status orlan_bridge_set_delegate(const orlan_notification_delegate* delegate);
ORLAN_API orlan_status orlan_bridge_notifications(void);

/// Whether the phone may notify, asked anew; the answer is on `orlan_subscribe_push_authorization`.
ORLAN_API orlan_status orlan_refresh_push_authorization(void);

#ifdef __cplusplus
}
#endif

#endif
