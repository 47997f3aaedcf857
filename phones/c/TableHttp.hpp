#pragma once

#include <map>
#include <memory>
#include <mutex>

#include "orlan/c/phone.h"
#include "orlan/platform/HttpClient.hpp"
#include "orlan/platform/SerialQueue.hpp"
#include "phones/c/Tasks.hpp"
#include "phones/common/HttpCall.hpp"

namespace orlan::c {

/// The host's HTTP stack. What must not be sent never reaches it; its answers may come on any thread and at
/// any time, and are handed on by a queue of our own.
class TableHttp final : public HttpClient {
 public:
  TableHttp(const orlan_http_functions& table, Queues& queues, std::shared_ptr<Tasks> ids);
  ~TableHttp() override;

  [[nodiscard]] bool isUrl(std::string_view text) const override;
  [[nodiscard]] Subscription send(HttpRequest request, HttpDone done) override;

  /// False when nobody waits for it.
  bool answer(orlan_id call, Result<HttpReply> outcome);

 private:
  struct Waiting {
    std::mutex mutex;
    std::map<orlan_id, std::shared_ptr<phone::HttpCall>> calls;
    std::shared_ptr<phone::HttpCall> take(orlan_id id);
  };

  SerialQueue& queue();

  const orlan_http_functions table_;
  Queues& queues_;
  const std::shared_ptr<Tasks> ids_;
  const std::shared_ptr<Waiting> waiting_ = std::make_shared<Waiting>();
  std::once_flag made_;
  std::unique_ptr<SerialQueue> queue_;  // made by the first request: a phone begins without threads
};

}  // namespace orlan::c
