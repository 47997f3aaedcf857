// The example of phones/linux/README.md, compiled.

#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "phones/linux/LinuxPhone.hpp"
#include "phones/linux/SignalStop.hpp"

using namespace orlan;

int main() {
  auto track = linuxphone::readTrack("walk.gpx");  // or NMEA; an error names file and line
  if (!track) return 2;

  linuxphone::PhoneConfig config;
  config.home = "/var/lib/kiosk";  // empty: the user's XDG directories
  config.bundle.identifier = "com.example.kiosk";
  config.bundle.propertyListFiles = {{"OrlanConfig", "/etc/kiosk/OrlanConfig.plist"}};
  linuxphone::LinuxPhone phone(std::move(config));
  linuxphone::SignalStop stop(phone.main(), [&](int) { phone.stop(); });  // Ctrl-C

  Runtime runtime(phone.platform());  // the library, on this phone
  runtime.services().plugin->start("api-key", Config::Environment::staging, {}, {});
  phone.player().play(std::move(*track), [&] { phone.stop(); });
  phone.run();  // until somebody stops it
}
