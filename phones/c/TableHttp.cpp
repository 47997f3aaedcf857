#include "phones/c/TableHttp.hpp"

#include <utility>
#include <vector>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Values.hpp"
#include "orlan/platform/Url.hpp"
#include "orlan/platform/httpRules.hpp"

namespace orlan::c {

namespace {

void hand(const orlan_http_functions& table, orlan_id id, const HttpRequest& request) {
  std::vector<orlan_header> headers;
  headers.reserve(request.headers.size());
  for (const auto& [name, value] : request.headers) headers.push_back({lent(name), lent(value)});
  orlan_http_request out{};
  out.struct_size = sizeof out;
  out.method = lent(request.method);
  out.url = lent(request.url);
  out.headers = headers.data();
  out.header_count = headers.size();
  out.body = lent(request.body);
  out.timeout = request.timeout.count();
  ask(table.send, table.context, id, &out);
}

}  // namespace

TableHttp::TableHttp(const orlan_http_functions& table, Queues& queues, std::shared_ptr<Tasks> ids)
    : table_(table), queues_(queues), ids_(std::move(ids)) {}

TableHttp::~TableHttp() = default;

std::shared_ptr<phone::HttpCall> TableHttp::Waiting::take(orlan_id id) {
  const std::lock_guard lock(mutex);
  const auto node = calls.extract(id);
  return node.empty() ? nullptr : node.mapped();
}

SerialQueue& TableHttp::queue() {
  std::call_once(made_, [this] { queue_ = queues_.make("com.orlan.http"); });
  return *queue_;
}

bool TableHttp::isUrl(std::string_view text) const {
  return isSecureUrl(text);
}

Subscription TableHttp::send(HttpRequest request, HttpDone done) {
  const orlan_id id = ids_->nextId();
  auto sent = std::make_shared<phone::HttpCall>(phone::HttpCall::unseen, std::move(done));
  queue();
  {
    const std::lock_guard lock(waiting_->mutex);
    waiting_->calls.emplace(id, sent);
  }
  if (const auto why = phone::refusal(request)) {
    answer(id, Unexpected(*why));
  } else if (table_.send == nullptr) {
    answer(id, Unexpected(urlErrors::cannotConnectToHost()));
  } else {
    hand(table_, id, request);
  }
  return Subscription::onCancel([waiting = std::weak_ptr(waiting_), table = table_, sent, id] {
    sent->cancel();
    const auto living = waiting.lock();
    if (living && living->take(id)) ask(table.cancel, table.context, id);
  });
}

bool TableHttp::answer(orlan_id call, Result<HttpReply> outcome) {
  auto waited = waiting_->take(call);
  if (!waited) return false;
  queue().async([waited = std::move(waited), outcome = std::move(outcome)] {
    phone::PhoneObserver nobody;
    waited->finish(nobody, outcome);
  });
  return true;
}

}  // namespace orlan::c
