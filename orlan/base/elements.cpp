#include "orlan/base/elements.hpp"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

namespace orlan::json {
namespace {

// A bracket and a brace differ in one bit, which no other character beside them has.
bool isOpening(char c) {
  return (c | 0x20) == '{';
}
bool isClosing(char c) {
  return (c | 0x20) == '}';
}

/// Where the first value of the text ends, if no string in it has a bracket without its partner. Strings are
/// not looked at: that took five times as long as parsing them.
std::size_t lengthOfContainer(std::string_view text) {
  constexpr std::size_t block = 64;
  std::size_t depth = 0;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::string_view here = text.substr(at, block);
    if (here.size() == block) {
      std::uint8_t opened = 0;
      std::uint8_t closed = 0;
      for (std::size_t i = 0; i < block; ++i) {
        opened += isOpening(here[i]);
        closed += isClosing(here[i]);
      }
      if (depth > closed) {  // nothing can end here
        depth = depth + opened - closed;
        at += block;
        continue;
      }
    }
    for (const char c : here) {
      ++at;
      if (isOpening(c)) ++depth;
      if (isClosing(c) && --depth == 0) return at;
    }
  }
  return at;
}

/// Behind the quote that ends the string with which the text begins.
std::size_t lengthOfString(std::string_view text) {
  std::size_t at = 1;
  while (at < text.size() && text[at] != '"') at += text[at] == '\\' ? 2 : 1;
  return std::min(at + 1, text.size());
}

std::size_t lengthOfValue(std::string_view text) {
  if (text.starts_with('"')) return lengthOfString(text);
  if (!text.empty() && isOpening(text.front())) return lengthOfContainer(text);
  return std::min(text.find_first_of(",:]} \t\r\n"), text.size());
}

/// Cuts the text into values and has each parsed. Nothing depends on a cut being right but that each part is
/// valid: then so is what they were cut from.
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
    const std::string_view value = rest_.substr(0, lengthOfValue(rest_));
    rest_.remove_prefix(value.size());
    return parser_.parse(value);
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
