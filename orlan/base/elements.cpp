#include "orlan/base/elements.hpp"

#include <algorithm>
#include <optional>
#include <vector>

namespace orlan::json {
namespace {

/// Cuts the text into values at its brackets and quotes and has each parsed. Nothing depends on a cut being
/// right but that the parts are valid: then so is what they were cut from.
class ElementReader {
 public:
  ElementReader(std::string_view text, std::span<const std::string_view> arrays,
                FunctionRef<bool(std::size_t, Node)> visit)
      : rest_(text), arrays_(arrays), visit_(visit), seen_(arrays.size()) {}

  bool read() {
    if (!take('{')) return false;
    do {
      if (!readMember()) return false;
    } while (take(','));
    if (!take('}')) return false;
    skipSpace();
    return rest_.empty() && std::find(seen_.begin(), seen_.end(), false) == seen_.end();
  }

 private:
  bool readMember() {
    const auto key = next();
    const auto name = key ? key->string() : std::nullopt;
    if (!name) return false;
    const auto array =
        static_cast<std::size_t>(std::find(arrays_.begin(), arrays_.end(), *name) - arrays_.begin());
    if (!take(':')) return false;
    return array == arrays_.size() ? next().has_value() : readArray(array);
  }

  bool readArray(std::size_t array) {
    if (seen_[array] || !take('[')) return false;
    seen_[array] = true;
    if (take(']')) return true;
    do {
      const auto element = next();
      if (!element || !visit_(array, *element)) return false;
    } while (take(','));
    return take(']');
  }

  /// The value that comes now, valid until the next one.
  std::optional<Node> next() {
    skipSpace();
    const std::string_view value = rest_.substr(0, lengthOfValue());
    rest_.remove_prefix(value.size());
    return parser_.parse(value);
  }

  [[nodiscard]] std::size_t lengthOfValue() const {
    std::size_t depth = 0;
    std::size_t at = 0;
    while (at < rest_.size()) {
      const char c = rest_[at];
      if (c == '"') {
        at = endOfString(at);
      } else {
        ++at;
        if (c == '{' || c == '[') {
          ++depth;
          continue;
        }
        if (depth > 0 && c != '}' && c != ']') continue;
        if (depth == 0) return std::min(rest_.find_first_of(",:]} \t\r\n"), rest_.size());
        --depth;
      }
      if (depth == 0) return at;
    }
    return at;
  }

  /// Behind the string whose quote is at `at`.
  [[nodiscard]] std::size_t endOfString(std::size_t at) const {
    for (++at; at < rest_.size() && rest_[at] != '"'; ++at) {
      if (rest_[at] == '\\') ++at;
    }
    return std::min(at + 1, rest_.size());
  }

  bool take(char wanted) {
    skipSpace();
    if (!rest_.starts_with(wanted)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  void skipSpace() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size())); }

  std::string_view rest_;
  std::span<const std::string_view> arrays_;
  FunctionRef<bool(std::size_t, Node)> visit_;
  std::vector<bool> seen_;
  PartParser parser_{2};  // an element is in an array in an object
};

}  // namespace

bool eachElement(std::string_view text, std::span<const std::string_view> arrays,
                 FunctionRef<bool(std::size_t, Node)> visit) {
  return ElementReader(text, arrays, visit).read();
}

}  // namespace orlan::json
