#include "orlan/backend/LogBlocks.hpp"

#include <fmt/core.h>

#include <vector>

#include "orlan/base/text.hpp"

namespace orlan::logBlocks {
namespace {

std::string_view shown(const HttpHeader& header) {
  return header.first == "x-app-api-key" ? "(redacted)" : std::string_view(header.second);
}

std::string_view bodyOr(const std::optional<std::string>& body, std::string_view otherwise) {
  return body ? text::utf8Or(*body, otherwise) : otherwise;
}

}  // namespace

std::string_view shortCloser() {
  return "\n└────────────────────────────────────────────";
}

std::string_view longCloser() {
  return "\n└──────────────────────────────────────────────────────";
}

std::string opening(std::string_view title, const HttpRequest& request) {
  auto block = fmt::format("┌─{}\n│ URL: {}\n│ Headers:", title, request.url);
  for (const auto& header : request.headers) {
    block += fmt::format("\n│   {}: {}", header.first, shown(header));
  }
  return block;
}

std::string textRequest(std::string_view title, const HttpRequest& request) {
  return fmt::format("{}\n│ Body:\n{}{}", opening(title, request),
                     text::utf8Or(request.body.value_or(""), "<non-utf8>"), shortCloser());
}

std::string formRequest(std::string_view title, const HttpRequest& request,
                        std::span<const FormField> fields) {
  auto block = opening(title, request) + "\n│ Fields:";
  for (const auto& field : fields) block += fmt::format("\n│   {:<23} = {}", field.name, field.value);
  return block.append(longCloser());
}

std::string response(int status, const HttpReply& reply) {
  std::vector<std::string> lines;
  for (const auto& [name, value] : reply.headers) lines.push_back(fmt::format("│   {}: {}", name, value));
  return fmt::format("┌─📬  HTTP {}\n│ Headers:\n{}\n│ Raw body:\n{}{}", status, text::joined(lines, "\n"),
                     bodyOr(reply.body, "<binary>"), shortCloser());
}

std::string uploadResponse(int status, const HttpReply& reply) {
  return fmt::format("┌─📬  HTTP {} • {}\n│ Raw body:\n{}{}", status, statusPhrase(status),
                     bodyOr(reply.body, "<binary>"), longCloser());
}

}  // namespace orlan::logBlocks
