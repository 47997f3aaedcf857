#pragma once

/// Where the identity of the device and of the host's key live in the key-value store.
namespace orlan::storeKeys {

inline constexpr char apiKey[] = "Orlan.APIKey";                             // string
inline constexpr char deviceID[] = "Orlan.DeviceID";                         // string
inline constexpr char orlanID[] = "Orlan.OrlanID";                           // string
inline constexpr char deviceRegistered[] = "Orlan.DeviceRegistered.v1";      // boolean
inline constexpr char segments[] = "Orlan.Segments";                         // string, joined with ","
inline constexpr char lastSyncedToken[] = "Orlan.LastSyncedDeviceToken.v1";  // string
inline constexpr char environment[] = "Orlan.Environment.v1";                // string
inline constexpr char correlationID[] = "Orlan.CorrelationID";               // string
inline constexpr char configuration[] = "Orlan.Configuration";               // bytes

}  // namespace orlan::storeKeys
