#pragma once

#include "orlan/platform/Application.hpp"
#include "orlan/platform/Clock.hpp"
#include "orlan/platform/Console.hpp"
#include "orlan/platform/DeviceInfo.hpp"
#include "orlan/platform/FileSystem.hpp"
#include "orlan/platform/HttpClient.hpp"
#include "orlan/platform/KeyValueStore.hpp"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/NotificationCenter.hpp"
#include "orlan/platform/RandomSource.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// A phone, as the library sees it: references to its parts. The phone outlives whoever holds this.
struct Platform {
  MainLoop& main;
  Queues& queues;
  Clock& clock;
  RandomSource& random;
  KeyValueStore& store;
  FileSystem& files;
  HttpClient& http;
  LocationService& locations;
  NotificationCenter& notifications;
  Application& application;
  DeviceInfo& device;
  Bundle& bundle;
  Console& console;
  SystemLog& systemLog;
};

}  // namespace orlan
