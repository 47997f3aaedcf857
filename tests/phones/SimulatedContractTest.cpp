#include <functional>

#include "phones/simulated/SimulatedPhone.hpp"
#include "tests/phones/contract/FilesContract.hpp"
#include "tests/phones/contract/HttpContract.hpp"
#include "tests/phones/contract/LocationContract.hpp"
#include "tests/phones/contract/NotificationContract.hpp"
#include "tests/phones/contract/QueueContract.hpp"
#include "tests/phones/contract/StoreContract.hpp"

namespace orlan {
namespace {

/// The simulated phone, its patience and its time being virtual.
class SimulatedUnderContract {
 public:
  Platform platform() { return phone_.platform(); }
  void observe(phone::PhoneObserver& observer) { phone_.observe(observer); }
  bool runUntil(const std::function<bool()>& done) {
    world_.settle();
    for (int i = 0; i < 5000 && !done(); ++i) world_.runFor(std::chrono::milliseconds(1));
    return done();
  }
  void settle() { world_.settle(); }
  void pass(Duration time) { world_.runFor(time); }
  Duration monotonic() { return world_.now(); }
  phone::LocationHub& locations() { return phone_.locations(); }
  phone::LocalNotificationCenter& notifications() { return phone_.notifications(); }
  phone::ApplicationModel& application() { return phone_.application(); }
  void serve(const std::string& path, int status, const std::string& body, Duration delay) {
    phone_.http().answer("GET", path, {sim::HttpAnswer::reply(status, body).after(delay)});
  }
  std::string url(const std::string& path) { return "https://api.example" + path; }
  std::string unreachableUrl() { return url("/nobody"); }

 private:
  sim::World world_;
  sim::SimulatedPhone phone_{world_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, StoreContract, SimulatedUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, FilesContract, SimulatedUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, QueueContract, SimulatedUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, HttpContract, SimulatedUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, NotificationContract, SimulatedUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, LocationContract, SimulatedUnderContract);

}  // namespace
}  // namespace orlan
