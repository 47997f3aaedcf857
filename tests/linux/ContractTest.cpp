#include <functional>
#include <map>
#include <mutex>

#include "linux/LoopbackServer.hpp"
#include "linux/TemporaryDirectory.hpp"
#include "phones/linux/LinuxPhone.hpp"
#include "tests/phones/contract/FilesContract.hpp"
#include "tests/phones/contract/HttpContract.hpp"
#include "tests/phones/contract/LocationContract.hpp"
#include "tests/phones/contract/NotificationContract.hpp"
#include "tests/phones/contract/QueueContract.hpp"
#include "tests/phones/contract/StoreContract.hpp"

namespace orlan {
namespace {

using linuxphone::test::Peer;

class LinuxUnderContract {
 public:
  Platform platform() { return phone_.platform(); }
  void observe(phone::PhoneObserver& observer) { phone_.observe(observer); }
  bool runUntil(const std::function<bool()>& done) {
    // Woken now and then, because other threads may be what is waited for.
    const auto waking = phone_.main().every(std::chrono::milliseconds(1), [] {});
    return phone_.main().runUntil(done, std::chrono::seconds(10));
  }
  void settle() { phone_.main().runPosted(); }
  void pass(Duration time) {
    const Duration end = monotonic() + time;
    (void)runUntil([&] { return monotonic() >= end; });
  }
  Duration monotonic() { return linuxphone::RealTime().monotonicNow(); }
  phone::LocationHub& locations() { return phone_.locations(); }
  phone::LocalNotificationCenter& notifications() { return phone_.notifications(); }
  phone::ApplicationModel& application() { return phone_.application(); }
  void serve(const std::string& path, int status, const std::string& body, Duration delay) {
    const std::lock_guard lock(mutex_);
    pages_[path] = {linuxphone::test::plainReply(status, body), delay};
  }
  std::string url(const std::string& path) { return server_.url(path); }
  std::string unreachableUrl() { return nobody_.url(); }

 private:
  void talk(Peer& peer) {
    peer.answerEach([&](const std::string& path) {
      const auto [reply, delay] = page(path);
      peer.wait(std::chrono::ceil<std::chrono::milliseconds>(delay));
      return reply;
    });
  }
  std::pair<std::string, Duration> page(const std::string& path) {
    const std::lock_guard lock(mutex_);
    return pages_[path];
  }

  linuxphone::test::TemporaryDirectory home_;
  linuxphone::test::Port nobody_;
  std::mutex mutex_;
  std::map<std::string, std::pair<std::string, Duration>> pages_;
  linuxphone::test::LoopbackServer server_{[this](Peer& peer) { talk(peer); }};
  linuxphone::LinuxPhone phone_{{.home = home_.path(), .console = {}, .systemLog = {}}};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, StoreContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, FilesContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, QueueContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, HttpContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, NotificationContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, LocationContract, LinuxUnderContract);

}  // namespace
}  // namespace orlan
