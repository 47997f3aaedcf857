#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "tools/orlan/backend/BodyForms.hpp"

namespace orlan::devbackend {
namespace {

/// Bytes that must stand in front of a field's value, or behind the last one.
struct Frame {
  std::string bytes;
  std::size_t mark = 0;  // so many of them end the value before
};

/// Walks along a body that must hold certain bytes at certain places, and stops at the first that it does
/// not: past it there is no telling what belongs to what. `frames`: one more than fields.
void checkFramed(std::string_view body, std::span<const Field> fields, const std::vector<Frame>& frames,
                 Problems& problems) {
  std::size_t at = 0;
  const auto expect = [&](std::string_view bytes, std::string_view where) {
    const auto found = body.substr(at);
    const auto differ = std::mismatch(bytes.begin(), bytes.end(), found.begin(), found.end()).first;
    const auto same = static_cast<std::size_t>(differ - bytes.begin());
    at += same;
    if (same == bytes.size()) return true;
    problems.push_back(fmt::format("body at byte {}, {}: expected {}, found {}", at, where,
                                   excerpt(bytes.substr(same), 80), excerpt(body.substr(at), 80)));
    return false;
  };
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto where = fmt::format("field {}", fields[i].name);
    if (!expect(frames[i].bytes, where)) return;
    const auto mark = std::string_view(frames[i + 1].bytes).substr(0, frames[i + 1].mark);
    const auto end = mark.empty() ? body.size() : body.find(mark, at);
    if (end == std::string_view::npos) {
      problems.push_back(fmt::format("body at byte {}, {}: not ended by {}", at, where, excerpt(mark, 80)));
      return;
    }
    checkValue(fields[i].rule, where, body.substr(at, end - at), problems);
    at = end;
  }
  if (!expect(frames.back().bytes, "the closing line") || at == body.size()) return;
  problems.push_back(fmt::format("body at byte {}: {} bytes behind the end: {}", at, body.size() - at,
                                 excerpt(body.substr(at))));
}

}  // namespace

std::string boundaryOf(const Request& request) {
  constexpr std::string_view prefix = "multipart/form-data; boundary=";
  const auto* type = findHeader(request, "Content-Type");
  return type != nullptr && type->starts_with(prefix) ? type->substr(prefix.size()) : std::string();
}

void checkMultipart(const Request& request, std::span<const Field> parts, Problems& problems) {
  const auto boundary = boundaryOf(request);
  if (boundary.empty()) return;
  const auto mark = boundary.size() + 4;
  std::vector<Frame> frames;
  for (const auto& part : parts) {
    frames.push_back(
        {fmt::format("\r\n--{}\r\nContent-Disposition: form-data; name=\"{}\"\r\n\r\n", boundary, part.name),
         mark});
  }
  frames.front().bytes.erase(0, 2);
  frames.push_back({fmt::format("\r\n--{}--\r\n", boundary), mark});
  checkFramed(request.body, parts, frames, problems);
}

void checkForm(const Request& request, std::span<const Field> fields, Problems& problems) {
  std::vector<Frame> frames;
  for (const auto& field : fields) {
    auto lead = fmt::format("{}{}=", frames.empty() ? "" : "&", field.name);
    const auto size = lead.size();
    frames.push_back({std::move(lead), size});
  }
  frames.emplace_back();
  checkFramed(request.body, fields, frames, problems);
}

}  // namespace orlan::devbackend
