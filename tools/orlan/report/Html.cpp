#include "tools/orlan/report/Html.hpp"

#include <cmath>

#include "orlan/base/text.hpp"

namespace orlan::report {

namespace {

std::string withReferences(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&#39;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string lines;
  std::size_t begin = 0;
  while (true) {
    const std::size_t end = text.find('\n', begin);
    lines += text::escapedControls(text.substr(begin, end - begin));
    if (end == std::string_view::npos) break;
    lines += '\n';
    begin = end + 1;
  }
  return withReferences(lines);
}

std::string number(double value) {
  return std::isfinite(value) ? text::fixed(value, 2) : "0";
}

}  // namespace orlan::report
