// A host application as somebody else would write it: one start on each phone, through installed headers
// alone.
#include <cstdio>
#include <orlan/orlan.hpp>
#include <phones/linux/LinuxPhone.hpp>
#include <phones/simulated/SimulatedPhone.hpp>

namespace {

struct Host : orlan::OrlanPluginDelegate {
  std::string outcome;
  void didAuthenticate(orlan::OrlanPlugin&, const std::string&, const std::string& orlanID) override {
    outcome = orlanID;
  }
  void didFailWith(orlan::OrlanPlugin&, const orlan::Error& error) override { outcome = error.description; }
};

std::string startedAs() {
  orlan::sim::World world;
  orlan::sim::SimulatedPhone phone(world);
  phone.http().answer(
      "POST", "/api/device-registerd/create",
      {orlan::sim::HttpAnswer::reply(200, R"({"data": {"device_id": "d-1", "orlan_id": "o-1"}})")});
  orlan::Runtime runtime(phone.platform());
  const auto host = std::make_shared<Host>();
  runtime.services().plugin->start("api-key", orlan::Config::Environment::staging, {}, host);
  world.runFor(std::chrono::minutes(1));
  return host->outcome;
}

bool installs(const char* home) {
  orlan::linuxphone::LinuxPhone phone({.home = home});
  const auto installed = orlan::Runtime::install(phone.platform());
  const auto again = orlan::Runtime::install(phone.platform());
  orlan::Runtime::uninstall();
  return installed && !again;
}

bool encodes() {
  using Points = std::vector<orlan::GeofencePoint>;
  const auto points =
      orlan::json::decodeText<Points>(R"([{"position":1,"latitude":"51.5","longitude":"0"}])");
  return points && orlan::json::encodeText(*points).value_or("") ==
                       R"([{"position":1,"latitude":51.5,"longitude":0.0}])";
}

}  // namespace

int main(int, char** arguments) {
  if (!encodes()) return 1;
  const auto device = startedAs();
  const bool installed = installs(arguments[1]);
  std::printf("running as %s, %s\n", device.c_str(), installed ? "installed" : "not installed");
  return device == "o-1" && installed ? 0 : 1;
}
