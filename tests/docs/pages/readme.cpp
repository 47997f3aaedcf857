// The example of README.md, compiled.

#include <cstdio>
#include <orlan/orlan.hpp>
#include <phones/linux/LinuxPhone.hpp>

struct Host : orlan::OrlanPluginDelegate {
  void didAuthenticate(orlan::OrlanPlugin&, const std::string& device, const std::string&) override {
    std::printf("running as %s\n", device.c_str());
  }
  void didFailWith(orlan::OrlanPlugin&, const orlan::Error& error) override {
    std::printf("%s\n", error.description.c_str());
  }
};

int main() {
  orlan::linuxphone::LinuxPhone phone({.home = "/tmp/my-app"});
  if (auto installed = orlan::Runtime::install(phone.platform()); !installed) return 1;
  const auto host = std::make_shared<Host>();
  orlan::OrlanPlugin::shared().start("my-api-key", orlan::Config::Environment::staging, {"vip"}, host);
  phone.run();  // until somebody calls phone.stop()
  orlan::Runtime::uninstall();
}
