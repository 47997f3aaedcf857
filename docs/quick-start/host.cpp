// A host application in one file: walks a recorded track through the campaigns of a development backend.
//     first-host TRACK.gpx http://127.0.0.1:8080
#include <cstdio>
#include <orlan/orlan.hpp>
#include <phones/linux/LinuxPhone.hpp>

using namespace orlan;

struct Host : OrlanPluginDelegate {
  std::function<void()> onStarted, onFailed;

  void didAuthenticate(OrlanPlugin&, const std::string& deviceID, const std::string&) override {
    std::printf("running as device %s\n", deviceID.c_str());
    onStarted();
  }
  void didFailWith(OrlanPlugin&, const Error& error) override {
    std::printf("could not start: %s\n", error.description.c_str());
    onFailed();
  }
};

int main(int count, char** arguments) {
  if (count != 3) return 2;
  auto track = linuxphone::readTrack(arguments[1]);
  if (!track) {
    std::fprintf(stderr, "%s\n", track.error().description.c_str());
    return 2;
  }

  // Where the backend answers. Without this the library asks built-in addresses that answer nobody.
  const auto staging = Config::Environment::staging;
  const std::string backend = arguments[2];
  RuntimeOptions options;
  if (!options.urls.setPlatform(staging, backend) ||
      !options.urls.setTransmission(staging, backend + "/api")) {
    return 2;
  }

  // The phone: this machine, standing where the track begins, with a time that runs 600 times as fast.
  linuxphone::PhoneConfig config;
  config.home = "first-host-home";
  config.bundle.identifier = "com.example.first";
  config.location.position = track->fixes.front();
  config.wallClock = track->fixes.front().timestamp;
  config.timeScale = 600;
  config.console = {};  // the log stays in its file
  linuxphone::LinuxPhone phone(std::move(config));

  // The library, on that phone.
  if (const auto installed = Runtime::install(phone.platform(), options); !installed) return 1;
  {
    const auto shown = NotificationManager::shared().publisher().subscribe([](const auto& details) {
      std::printf("%s\n    %s\n", details.headline().c_str(), details.body().c_str());
    });
    const auto host = std::make_shared<Host>();
    host->onStarted = [&] { phone.player().play(std::move(*track), [&] { phone.stop(); }); };
    host->onFailed = [&] { phone.stop(); };
    OrlanPlugin::shared().start("my-api-key", staging, {"walkers"}, host);
    phone.run();  // until somebody calls phone.stop()
    std::printf("%s\nlog: %s\n", OrlanPlugin::shared().getNotificationStats().c_str(),
                OrlanPlugin::shared().logFileURL().c_str());
  }
  Runtime::uninstall();
}
