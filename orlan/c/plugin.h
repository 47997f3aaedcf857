#ifndef ORLAN_C_PLUGIN_H
#define ORLAN_C_PLUGIN_H

#include "orlan/c/types.h"

/// What a host asks of an installed library. Main thread.
#ifdef __cplusplus
extern "C" {
#endif

/// Hears how a start ended: one of the two, once a start, inside the call when it is refused. Either may be
/// NULL.
typedef struct orlan_plugin_delegate {
  size_t struct_size;
  void* context;
  /// The device's identifier and the backend's identifier for it.
  void (*did_authenticate)(void* context, orlan_string device_id, orlan_string orlan_id);
  void (*did_fail)(void* context, const orlan_error* error);
} orlan_plugin_delegate;

/// Starts with an API key; with the credentials in the bundle's property list "OrlanConfig", which wins over
/// a key and must be there for the second; with app-scoped credentials, taken as they are. A start replaces
/// the one before, ended or not, and its delegate: the former one hears no more. One that is refused, inside
/// the call, changes nothing: the one before goes on. The delegate is copied and used until then, until
/// `orlan_forget_plugin_delegate` or until `orlan_uninstall`; it may be NULL. `environment`: see `install.h`.
/// `segmentations` are tags of this device's user.
ORLAN_API orlan_status orlan_start_with_api_key(orlan_string api_key, int64_t environment,
                                                const orlan_string* segmentations, size_t segmentation_count,
                                                const orlan_plugin_delegate* delegate);
ORLAN_API orlan_status orlan_start(int64_t environment, const orlan_string* segmentations,
                                   size_t segmentation_count, const orlan_plugin_delegate* delegate);
ORLAN_API orlan_status orlan_start_with_app_credentials(
    orlan_string company_api_key, orlan_string app_id, orlan_string app_api_key, orlan_string bundle_id,
    int64_t environment, const orlan_string* segmentations, size_t segmentation_count,
    bool include_legacy_api_key_header, const orlan_plugin_delegate* delegate);

/// From now on the delegate of the last start hears nothing: for a host that lets it go.
ORLAN_API orlan_status orlan_forget_plugin_delegate(void);

/// Replaces the device's segmentation tags. Campaigns are not fetched anew: see `orlan_refetch_geofence`.
/// Before a start this and the next two fail with the domain "OrlanPlugin" and code -1, and send nothing.
ORLAN_API orlan_status orlan_update_segments(const orlan_string* segmentations, size_t segmentation_count,
                                             orlan_outcome_completion completion, void* context);

/// The last good configuration; with `force_refresh`, or when there is none, the backend's answer. The value
/// is the JSON text {"notificationsCount": 0, "daysCount": 0, "batteryCount": 0, "privacyText": ""}.
ORLAN_API orlan_status orlan_fetch_configuration(bool force_refresh, orlan_text_completion completion,
                                                 void* context);

/// Fetches the configuration and gives its privacy text.
ORLAN_API orlan_status orlan_refresh_privacy_text(orlan_text_completion completion, void* context);

/// The last good configuration in the same form, absent when there is none; its privacy text, else empty.
/// Need no start and ask nobody.
ORLAN_API orlan_status orlan_current_configuration(orlan_string* json);
ORLAN_API orlan_status orlan_privacy_text(orlan_string* text);

/// The host's own name for this device's user, kept across launches; a blank one clears it; empty when there
/// is none. Need no start.
ORLAN_API orlan_status orlan_set_correlation_id(orlan_string correlation_id);
ORLAN_API orlan_status orlan_correlation_id(orlan_string* correlation_id);
ORLAN_API orlan_status orlan_clear_correlation_id(void);

/// Hands the phone's push token on: raw bytes, or the text of the other push service, which wins. Also
/// before a start.
ORLAN_API orlan_status orlan_update_apns_token(const void* bytes, size_t length);
ORLAN_API orlan_status orlan_update_fcm_token(orlan_string token);

/// Asks the backend for the campaigns around the phone now. Before a start it only logs an error.
ORLAN_API orlan_status orlan_refetch_geofence(void);

/// Ask the person. What comes of it is on the streams below.
ORLAN_API orlan_status orlan_request_location_when_in_use(void);
ORLAN_API orlan_status orlan_request_location_always(void);
ORLAN_API orlan_status orlan_request_push_permission(void);

/// What is known of the authorizations (`ORLAN_LOCATION_…`, `ORLAN_NOTIFICATIONS_…`).
ORLAN_API orlan_status orlan_location_authorization(int64_t* status);
ORLAN_API orlan_status orlan_push_authorization(int64_t* status);

// Streams. The handler hears the current value inside the call and then each change, until the subscription
// is freed or the library ends. On `ORLAN_OK` `*subscription` is the host's to free, in either case.

ORLAN_API orlan_status orlan_subscribe_location_authorization(orlan_integer_handler handler, void* context,
                                                              orlan_subscription** subscription);
ORLAN_API orlan_status orlan_subscribe_push_authorization(orlan_integer_handler handler, void* context,
                                                          orlan_subscription** subscription);

/// `location` is NULL while none is known.
typedef void (*orlan_location_handler)(void* context, const orlan_location* location);
ORLAN_API orlan_status orlan_subscribe_last_location(orlan_location_handler handler, void* context,
                                                     orlan_subscription** subscription);

/// The areas of the campaigns around the phone.
typedef void (*orlan_polygons_handler)(void* context, const orlan_polygon* polygons, size_t count);
ORLAN_API orlan_status orlan_subscribe_polygons(orlan_polygons_handler handler, void* context,
                                                orlan_subscription** subscription);

/// The campaigns around the phone as JSON text, {"campaignsArray": […]}, as the library keeps them; a
/// coordinate that is not finite is a text there. NULL while there are none.
ORLAN_API orlan_status orlan_subscribe_campaigns(orlan_text_handler handler, void* context,
                                                 orlan_subscription** subscription);

/// Absolute path of the log file, whether or not it is there; deletes it, until the next start of the
/// process.
ORLAN_API orlan_status orlan_log_file_path(orlan_string* path);
ORLAN_API orlan_status orlan_clear_logs(void);

enum { ORLAN_LOG_INFO = 0, ORLAN_LOG_WARN = 1, ORLAN_LOG_ERROR = 2, ORLAN_LOG_BREADCRUMB = 3 };

/// Writes a line of the host's own into the library's log. Any thread, but not while `orlan_uninstall` runs.
ORLAN_API orlan_status orlan_log(int32_t level, orlan_string message);

/// `text` in upper case, by the Unicode rules of no particular language.
ORLAN_API orlan_status orlan_transform(orlan_string text, orlan_string* upper);

/// Counts of campaign notifications since launch or the last reset, as a text for people; and as the JSON
/// text of the record that was last assembled for reporting, {} before the first.
ORLAN_API orlan_status orlan_notification_stats(orlan_string* text);
ORLAN_API orlan_status orlan_reset_notification_stats(void);

/// Counts a notification as one of either monitor's, which do so by themselves. `activation` is "ON_ENTER" or
/// "ON_EXIT"; any other is only in the total.
ORLAN_API orlan_status orlan_record_fg_notification(orlan_string activation);
ORLAN_API orlan_status orlan_record_bg_notification(orlan_string activation);
ORLAN_API orlan_status orlan_notification_telemetry(orlan_string* json);

/// Sends a person's answers to the questions of a notification. `answers` is a JSON array of
///
///     {"question_id": 1, "type": "RATING", "value": "4", "choice": [{"choice_id": 7}]}
///
/// ("choice" only where options were chosen); elements of another form are dropped. `notification_id` is a
/// decimal number; `location_id` is optional. Refused with the domain "OrlanPlugin": -1 not started, -2 the
/// device is not registered, -3 the notification's identifier is no number, -4 no answers, -5 invalid ones.
ORLAN_API orlan_status orlan_submit_survey_response(orlan_string notification_id, orlan_string location_id,
                                                    orlan_string answers, orlan_outcome_completion completion,
                                                    void* context);

/// Whether an answer (one element of such an array) may be sent: false for what would be refused with -5, and
/// for what is no answer. Any thread, also before anything is installed.
ORLAN_API orlan_status orlan_survey_answer_is_valid(orlan_string answer, bool* valid);

/// Tells the backend what happened to a survey besides answers. Refused as above with -1 to -3.
ORLAN_API orlan_status orlan_track_survey_event(orlan_string notification_id, orlan_string location_id,
                                                orlan_string activity, orlan_outcome_completion completion,
                                                void* context);

#ifdef __cplusplus
}
#endif

#endif
