#include <functional>
#include <thread>

#include "c/TablesOverSimulated.hpp"
#include "tests/phones/contract/FilesContract.hpp"
#include "tests/phones/contract/HttpContract.hpp"
#include "tests/phones/contract/LocationContract.hpp"
#include "tests/phones/contract/QueueContract.hpp"
#include "tests/phones/contract/StoreContract.hpp"

namespace orlan {
namespace {

/// The phone made of tables; `bare` with the library's own defaults, whose queues are threads.
template <bool bare>
class TablesUnderContract {
 public:
  Platform platform() { return tables_.platform(); }
  void observe(phone::PhoneObserver& observer) { tables_.phone.observe(observer); }
  bool runUntil(const std::function<bool()>& done) {
    settle();
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    for (int i = 0; (i < 5000 || bare) && !done(); ++i) {
      if (std::chrono::steady_clock::now() > limit) break;
      pass(std::chrono::milliseconds(1));
      if (bare) std::this_thread::yield();
    }
    return done();
  }
  void settle() { tables_.world.settle(); }
  void pass(Duration time) { tables_.world.runFor(time); }
  Duration monotonic() { return tables_.world.now(); }
  phone::LocationHub& locations() { return tables_.phone.locations(); }
  void serve(const std::string& path, int status, const std::string& body, Duration delay) {
    tables_.phone.http().answer("GET", path, {sim::HttpAnswer::reply(status, body).after(delay)});
  }
  std::string url(const std::string& path) { return "https://api.example" + path; }
  std::string unreachableUrl() { return url("/nobody"); }

 private:
  test::TablesOverSimulated tables_{bare ? test::TablesOverSimulated::bare : nullptr};
};

using Tables = TablesUnderContract<false>;
using Defaults = TablesUnderContract<true>;

INSTANTIATE_TYPED_TEST_SUITE_P(Tables, StoreContract, Tables);
INSTANTIATE_TYPED_TEST_SUITE_P(Tables, FilesContract, Tables);
INSTANTIATE_TYPED_TEST_SUITE_P(Tables, QueueContract, Tables);
INSTANTIATE_TYPED_TEST_SUITE_P(Tables, HttpContract, Tables);
INSTANTIATE_TYPED_TEST_SUITE_P(Tables, LocationContract, Tables);
INSTANTIATE_TYPED_TEST_SUITE_P(Defaults, StoreContract, Defaults);
INSTANTIATE_TYPED_TEST_SUITE_P(Defaults, FilesContract, Defaults);
INSTANTIATE_TYPED_TEST_SUITE_P(Defaults, QueueContract, Defaults);

}  // namespace
}  // namespace orlan
