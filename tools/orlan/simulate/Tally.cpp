#include "tools/orlan/simulate/Tally.hpp"

#include <fmt/format.h>

namespace orlan::simulate {
namespace {

std::string counted(std::size_t count, std::string_view thing) {
  return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

bool isSuccess(const Result<HttpReply>& result) {
  return result && result->status && *result->status >= 200 && *result->status < 300;
}

}  // namespace

void Tally::response(phone::RequestId, const Result<HttpReply>& result) {
  if (!isSuccess(result)) ++failures_;
}

std::string Tally::text() const {
  return counted(requests_, "request") + (failures_ > 0 ? fmt::format(" ({} failed)", failures_) : "") +
         ", " + counted(notifications_, "notification") + ", " +
         (fixes_ == 1 ? std::string("1 fix") : fmt::format("{} fixes", fixes_)) + ", " +
         counted(lines_, "log line");
}

}  // namespace orlan::simulate
