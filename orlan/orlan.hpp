#pragma once

/// Everything a host application needs: install a phone with `Runtime::install`, then start the library
/// through `OrlanPlugin::shared()`.
#include "orlan/campaigns/CampaignFields.hpp"
#include "orlan/geofence/BackgroundRegionMonitor.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"
#include "orlan/geofence/GeofenceService.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/notifications/NotificationBridge.hpp"
#include "orlan/notifications/NotificationEnvelope.hpp"
#include "orlan/notifications/NotificationManager.hpp"
#include "orlan/notifications/NotificationPermissionManager.hpp"
#include "orlan/sdk/LocationPermissionManager.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "orlan/surveys/AnswerValidation.hpp"
