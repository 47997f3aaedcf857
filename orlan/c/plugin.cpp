#include "orlan/c/plugin.h"

#include "orlan/c/Callbacks.hpp"
#include "orlan/c/Host.hpp"
#include "orlan/c/Values.hpp"
#include "orlan/sdk/BridgedArguments.hpp"
#include "orlan/surveys/AnswerValidation.hpp"
#include "orlan/surveys/SurveyFields.hpp"

using namespace orlan::c;

orlan_status orlan_update_segments(const orlan_string* segmentations, size_t segmentation_count,
                                   orlan_outcome_completion completion, void* context) {
  return onMain(__func__, [&](Host&) {
    Host::plugin().updateSegments(texts(segmentations, segmentation_count, "segmentations"),
                                  outcome(completion, context));
  });
}

orlan_status orlan_fetch_configuration(bool force_refresh, orlan_text_completion completion, void* context) {
  return onMain(__func__, [&](Host&) {
    using orlan::OrlanConfiguration;
    Host::plugin().fetchConfiguration(
        force_refresh,
        textOutcome<OrlanConfiguration>(completion, context, [](const OrlanConfiguration& configuration) {
          return orlan::json::print(configuration.encode());
        }));
  });
}

orlan_status orlan_refresh_privacy_text(orlan_text_completion completion, void* context) {
  return onMain(__func__, [&](Host&) {
    Host::plugin().refreshPrivacyText(
        textOutcome<std::string>(completion, context, [](const std::string& text) { return text; }));
  });
}

orlan_status orlan_current_configuration(orlan_string* json) {
  return onMain(__func__, [&](Host&) {
    needed(json, "json");
    const auto configuration = Host::plugin().getCurrentConfiguration();
    *json = configuration ? given(orlan::json::print(configuration->encode())) : absent();
  });
}

orlan_status orlan_privacy_text(orlan_string* text) {
  return onMain(__func__,
                [&](Host&) { give(text, "text", [&] { return Host::plugin().getPrivacyText(); }); });
}

orlan_status orlan_set_correlation_id(orlan_string correlation_id) {
  return onMain(__func__,
                [&](Host&) { Host::plugin().setCorrelationId(text(correlation_id, "correlation_id")); });
}

orlan_status orlan_correlation_id(orlan_string* correlation_id) {
  return onMain(__func__, [&](Host&) {
    give(correlation_id, "correlation_id", [&] { return Host::plugin().getCorrelationId(); });
  });
}

orlan_status orlan_clear_correlation_id(void) {
  return onMain(__func__, [](Host&) { Host::plugin().clearCorrelationId(); });
}

orlan_status orlan_update_apns_token(const void* bytes, size_t length) {
  return onMain(__func__, [&](Host&) {
    orlan::OrlanPlugin::updateAPNsToken(orlan::c::bytes({static_cast<const char*>(bytes), length}, "bytes"));
  });
}

orlan_status orlan_update_fcm_token(orlan_string token) {
  return onMain(__func__, [&](Host&) { orlan::OrlanPlugin::updateFCMToken(text(token, "token")); });
}

orlan_status orlan_refetch_geofence(void) {
  return onMain(__func__, [](Host&) { Host::plugin().refetchGeofence(); });
}

orlan_status orlan_request_location_when_in_use(void) {
  return onMain(__func__, [](Host&) { Host::plugin().requestLocationWhenInUse(); });
}

orlan_status orlan_request_location_always(void) {
  return onMain(__func__, [](Host&) { Host::plugin().requestLocationAlways(); });
}

orlan_status orlan_request_push_permission(void) {
  return onMain(__func__, [](Host&) { Host::plugin().requestPushPermission(); });
}

orlan_status orlan_location_authorization(int64_t* status) {
  return onMain(__func__,
                [&](Host&) { needed(status, "status") = Host::plugin().locationAuthorizationStatusRaw(); });
}

orlan_status orlan_push_authorization(int64_t* status) {
  return onMain(__func__,
                [&](Host&) { needed(status, "status") = Host::plugin().pushAuthorizationStatusRaw(); });
}

orlan_status orlan_log_file_path(orlan_string* path) {
  return onMain(__func__, [&](Host&) { give(path, "path", [&] { return Host::plugin().logFileURL(); }); });
}

orlan_status orlan_clear_logs(void) {
  return onMain(__func__, [](Host&) { Host::plugin().clearLogs(); });
}

orlan_status orlan_log(int32_t level, orlan_string message) {
  return guarded(__func__, [&] {
    static_cast<void>(hostOnAnyThread());
    orlan::Logger& logger = Host::services().logger;
    const auto line = text(message, "message");
    switch (level) {
      case ORLAN_LOG_INFO:
        return logger.log(line);
      case ORLAN_LOG_WARN:
        return logger.warn(line);
      case ORLAN_LOG_ERROR:
        return logger.error(line);
      case ORLAN_LOG_BREADCRUMB:
        return logger.breadcrumb(line);
      default:
        throw Misuse{ORLAN_INVALID_ARGUMENT, "there is no such level"};
    }
  });
}

orlan_status orlan_transform(orlan_string given_text, orlan_string* upper) {
  return onMain(__func__, [&](Host&) {
    give(upper, "upper", [&] { return Host::plugin().transform(text(given_text, "text")); });
  });
}

orlan_status orlan_notification_stats(orlan_string* text) {
  return onMain(__func__,
                [&](Host&) { give(text, "text", [&] { return Host::plugin().getNotificationStats(); }); });
}

orlan_status orlan_reset_notification_stats(void) {
  return onMain(__func__, [](Host&) { Host::plugin().resetNotificationStats(); });
}

orlan_status orlan_record_fg_notification(orlan_string activation) {
  return onMain(__func__,
                [&](Host&) { Host::plugin().recordFGNotification(text(activation, "activation")); });
}

orlan_status orlan_record_bg_notification(orlan_string activation) {
  return onMain(__func__,
                [&](Host&) { Host::plugin().recordBGNotification(text(activation, "activation")); });
}

orlan_status orlan_notification_telemetry(orlan_string* json) {
  return onMain(__func__, [&](Host&) {
    give(json, "json", [&] { return orlan::json::print(Host::plugin().notificationTelemetry()); });
  });
}

orlan_status orlan_submit_survey_response(orlan_string notification_id, orlan_string location_id,
                                          orlan_string answers, orlan_outcome_completion completion,
                                          void* context) {
  return onMain(__func__, [&](Host&) {
    const std::string notification(text(notification_id, "notification_id"));
    const auto location = optionalText(location_id, "location_id");
    const auto list = orlan::answersFromBridged(jsonValue(answers, "answers"));
    Host::plugin().submitSurveyResponse(notification, location, list, outcome(completion, context));
  });
}

orlan_status orlan_survey_answer_is_valid(orlan_string answer, bool* valid) {
  return guarded(__func__, [&] {
    needed(valid, "valid");
    const auto decoded = orlan::json::decodeText<orlan::SurveyAnswer>(bytes(answer, "answer"));
    *valid = decoded && orlan::isValid(*decoded);
  });
}

orlan_status orlan_track_survey_event(orlan_string notification_id, orlan_string location_id,
                                      orlan_string activity, orlan_outcome_completion completion,
                                      void* context) {
  return onMain(__func__, [&](Host&) {
    const std::string notification(text(notification_id, "notification_id"));
    const auto location = optionalText(location_id, "location_id");
    const std::string event(text(activity, "activity"));
    Host::plugin().trackSurveyEvent(notification, location, event, outcome(completion, context));
  });
}
