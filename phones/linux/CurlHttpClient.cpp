#include "phones/linux/CurlHttpClient.hpp"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "orlan/platform/Url.hpp"
#include "orlan/platform/httpRules.hpp"
#include "phones/common/HttpCall.hpp"
#include "phones/common/Threads.hpp"
#include "phones/linux/HttpTransfer.hpp"

namespace orlan::linuxphone {
namespace {

constexpr auto longestPoll = std::chrono::minutes(1);  // libcurl's own timers end it earlier
constexpr long connectionsPerHost = 6;
constexpr long keptConnections = 24;  // libcurl's own limit shrinks with the requests under way

/// Once a process, before the first handle.
void startLibrary() {
  static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
  (void)started;
}

}  // namespace

/// The client's thread and what it shares with the senders.
class CurlHttpClient::Engine {
 public:
  using Call = std::shared_ptr<phone::HttpCall>;

  Engine(phone::PhoneObserver& observer, HttpOptions options)
      : observer_(observer), options_(std::move(options)), multi_(curl_multi_init()) {
    curl_multi_setopt(multi_.get(), CURLMOPT_MAX_HOST_CONNECTIONS, connectionsPerHost);
    curl_multi_setopt(multi_.get(), CURLMOPT_MAXCONNECTS, keptConnections);
  }

  // Any thread.
  Call send(HttpRequest request, HttpDone done);
  void forget(const Call& call);
  void close();

  // Client's thread.
  void run();

 private:
  using Transfer = std::shared_ptr<HttpTransfer>;

  void post(std::function<void()> order);
  bool obeyOrders();
  void begin(const Call& call, Transfer transfer);
  void drop(const Call& call);
  bool reportFinished();
  void end(CURL* easy, CURLcode code);
  int endOverdue();
  void cancelAll();

  phone::PhoneObserver& observer_;
  const HttpOptions options_;
  std::atomic<phone::RequestId> sent_ = 0;

  std::mutex mutex_;
  std::vector<std::function<void()>> orders_;  // for the client's thread
  bool closing_ = false;

  std::unique_ptr<CURLM, Releasing<curl_multi_cleanup>> multi_;
  std::map<Call, Transfer> transfers_;  // client's thread
};

// What is refused never becomes a request, so that nobody is told of one.
CurlHttpClient::Engine::Call CurlHttpClient::Engine::send(HttpRequest request, HttpDone done) {
  if (auto refusal = phone::refusal(request)) {
    auto call = std::make_shared<phone::HttpCall>(phone::HttpCall::unseen, std::move(done));
    post([this, call, why = std::move(*refusal)] { call->finish(observer_, Unexpected(why)); });
    return call;
  }
  const phone::RequestId id = ++sent_;
  auto call = std::make_shared<phone::HttpCall>(id, std::move(done));
  observer_.request(id, request);  // before the answer can come
  auto transfer = std::make_shared<HttpTransfer>(std::move(request), options_);
  post([this, call, transfer = std::move(transfer)] { begin(call, transfer); });
  return call;
}

void CurlHttpClient::Engine::forget(const Call& call) {
  call->cancel();
  post([this, call] { drop(call); });
}

void CurlHttpClient::Engine::post(std::function<void()> order) {
  {
    const std::lock_guard lock(mutex_);
    orders_.push_back(std::move(order));
  }
  curl_multi_wakeup(multi_.get());
}

void CurlHttpClient::Engine::close() {
  {
    const std::lock_guard lock(mutex_);
    closing_ = true;
  }
  curl_multi_wakeup(multi_.get());
}

void CurlHttpClient::Engine::run() {
  while (obeyOrders()) {
    // After an end it goes round again: a request that waited for a connection may have got one, and libcurl
    // can lose the timer that would tell us.
    int running = 0;
    do curl_multi_perform(multi_.get(), &running);
    while (reportFinished());
    curl_multi_poll(multi_.get(), nullptr, 0, endOverdue(), nullptr);
  }
}

/// Whether to go on.
bool CurlHttpClient::Engine::obeyOrders() {
  while (true) {
    std::vector<std::function<void()>> orders;
    bool closing = false;
    {
      const std::lock_guard lock(mutex_);
      orders.swap(orders_);
      closing = closing_;
    }
    for (auto& order : orders) std::exchange(order, nullptr)();
    if (!closing) return true;
    cancelAll();
    const std::lock_guard lock(mutex_);
    if (orders_.empty()) return false;  // else somebody sent from inside an answer
  }
}

void CurlHttpClient::Engine::begin(const Call& call, Transfer transfer) {
  curl_easy_setopt(transfer->easy(), CURLOPT_PRIVATE, call.get());
  if (curl_multi_add_handle(multi_.get(), transfer->easy()) != CURLM_OK) {
    return call->finish(observer_, Unexpected(urlErrors::other("the request could not be started")));
  }
  transfers_.emplace(call, std::move(transfer));
}

void CurlHttpClient::Engine::drop(const Call& call) {
  const auto found = transfers_.find(call);
  if (found == transfers_.end()) return;
  curl_multi_remove_handle(multi_.get(), found->second->easy());
  transfers_.erase(found);
}

/// Whether any request has ended.
bool CurlHttpClient::Engine::reportFinished() {
  bool any = false;
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
    if (message->msg != CURLMSG_DONE) continue;
    end(message->easy_handle, message->data.result);
    any = true;
  }
  return any;
}

void CurlHttpClient::Engine::end(CURL* easy, CURLcode code) {
  phone::HttpCall* key = nullptr;
  curl_easy_getinfo(easy, CURLINFO_PRIVATE, &key);
  const auto found = transfers_.find(Call(Call(), key));
  assert(found != transfers_.end());
  auto ended = transfers_.extract(found);
  auto result = ended.mapped()->result(code);
  curl_multi_remove_handle(multi_.get(), easy);
  ended.mapped().reset();
  ended.key()->finish(observer_, std::move(result));
}

/// The milliseconds until the next one will be overdue; none when one was, which may let others go on.
int CurlHttpClient::Engine::endOverdue() {
  const auto now = std::chrono::steady_clock::now();
  auto next = now + longestPoll;
  std::vector<Call> overdue;
  for (const auto& [call, transfer] : transfers_) {
    if (transfer->deadline() <= now) overdue.push_back(call);
    next = std::min(next, std::max(transfer->deadline(), now));
  }
  for (const Call& call : overdue) {
    drop(call);
    call->finish(observer_, Unexpected(urlErrors::timedOut()));
  }
  if (!overdue.empty()) return 0;
  return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(next - now).count());
}

void CurlHttpClient::Engine::cancelAll() {
  for (auto ending = std::move(transfers_); auto& [call, transfer] : ending) {
    curl_multi_remove_handle(multi_.get(), transfer->easy());
    call->finish(observer_, Unexpected(urlErrors::cancelled()));
  }
  transfers_.clear();
}

CurlHttpClient::CurlHttpClient(phone::PhoneObserver& observer, HttpOptions options) {
  startLibrary();
  engine_ = std::make_shared<Engine>(observer, std::move(options));
  thread_ = phone::startThread("http", [engine = engine_] { engine->run(); });
}

CurlHttpClient::~CurlHttpClient() {
  assert(std::this_thread::get_id() != thread_.get_id());
  engine_->close();
  thread_.join();
}

bool CurlHttpClient::isUrl(std::string_view text) const {
  return isSecureUrl(text);
}

Subscription CurlHttpClient::send(HttpRequest request, HttpDone done) {
  const auto call = engine_->send(std::move(request), std::move(done));
  return Subscription::onCancel([engine = std::weak_ptr<Engine>(engine_), call] {
    if (const auto held = engine.lock()) {
      held->forget(call);
    } else {
      call->cancel();
    }
  });
}

}  // namespace orlan::linuxphone
