#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orlan/backend/Config.hpp"

namespace orlan::run {

/// What `orlan run` was asked to do.
struct RunOptions {
  std::string track;                       // GPX or NMEA file
  std::optional<std::string> campaigns;    // a /check-geofence answer for the development backend
  std::optional<std::string> backend;      // base address of a backend that is already there
  std::optional<std::string> platformUrl;  // … of one family alone
  std::optional<std::string> transmissionUrl;
  std::optional<std::string> config;  // OrlanConfig.plist
  std::optional<std::string> apiKey;
  std::vector<std::string> segments;
  std::optional<std::string> home;    // default: the user's XDG directories
  std::optional<std::string> report;  // HTML file to write
  Config::Environment environment = Config::Environment::staging;
  std::string bundleIdentifier = "com.example.host";
  double speed = 1.0;
  bool background = false;            // the application is launched in the background
  std::optional<std::string> script;  // what the person does on the way
  bool json = false;
  bool showLog = false;  // the library's own lines, too

  /// Whether somebody else's backend is used instead of one of our own.
  [[nodiscard]] bool hasBackend() const { return backend || platformUrl || transmissionUrl; }
};

}  // namespace orlan::run
