#include "tools/orlan/output/shown.hpp"

#include "orlan/base/text.hpp"

namespace orlan::output {

std::string shown(std::string_view text, std::size_t indent) {
  std::string lines;
  for (std::size_t end; (end = text.find('\n')) != std::string_view::npos; text.remove_prefix(end + 1)) {
    lines += text::escapedControls(text.substr(0, end)) + '\n' + std::string(indent, ' ');
  }
  return lines + text::escapedControls(text);
}

}  // namespace orlan::output
