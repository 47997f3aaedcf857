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

namespace orlan::linuxphone {
namespace {

/// Answers by path, as a phone's contract wants it.
class Pages {
 public:
  void serve(const std::string& path, int status, const std::string& body, Duration delay) {
    const std::lock_guard lock(mutex_);
    pages_[path] = {test::plainReply(status, body), delay};
  }
  void talk(test::Peer& peer) {
    for (std::string request = peer.readRequest(); !request.empty(); request = peer.readRequest()) {
      const Page page = find(request);
      peer.wait(std::chrono::ceil<std::chrono::milliseconds>(page.delay));
      if (!peer.write(page.reply)) return;
    }
  }

 private:
  struct Page {
    std::string reply = test::plainReply(404, "");
    Duration delay{};
  };
  Page find(const std::string& request) {
    const auto begin = request.find(' ') + 1;
    const std::lock_guard lock(mutex_);
    return pages_[request.substr(begin, request.find(' ', begin) - begin)];
  }

  std::mutex mutex_;
  std::map<std::string, Page> pages_;
};

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
  Duration monotonic() { return RealTime().monotonicNow(); }
  phone::LocationHub& locations() { return phone_.locations(); }
  phone::LocalNotificationCenter& notifications() { return phone_.notifications(); }
  phone::ApplicationModel& application() { return phone_.application(); }
  void serve(const std::string& path, int status, const std::string& body, Duration delay) {
    pages_.serve(path, status, body, delay);
  }
  std::string url(const std::string& path) { return server_.url(path); }
  std::string unreachableUrl() { return nobody_.url(); }

 private:
  test::TemporaryDirectory home_;
  test::Port nobody_;
  Pages pages_;
  test::LoopbackServer server_{[this](test::Peer& peer) { pages_.talk(peer); }};
  LinuxPhone phone_{{.home = home_.path(), .console = {}, .systemLog = {}}};
};

}  // namespace
}  // namespace orlan::linuxphone

namespace orlan {

using linuxphone::LinuxUnderContract;
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, StoreContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, FilesContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, QueueContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, HttpContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, NotificationContract, LinuxUnderContract);
INSTANTIATE_TYPED_TEST_SUITE_P(Linux, LocationContract, LinuxUnderContract);

}  // namespace orlan
