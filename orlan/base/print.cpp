#include <cmath>

#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"
#include "orlan/base/utf8.hpp"

namespace orlan::json {
namespace {

constexpr std::string_view replacement = "\uFFFD";

/// The escape of a character that may not stand in a JSON string as it is; empty for every other.
std::string_view shortEscape(char c) {
  switch (c) {
    case '"':
      return "\\\"";
    case '\\':
      return "\\\\";
    case '\b':
      return "\\b";
    case '\f':
      return "\\f";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return {};
  }
}

class Printer {
 public:
  /// `gap` stands behind every comma and colon.
  explicit Printer(std::string_view gap) : gap_(gap) {}

  void value(const Value& value) {
    if (const auto* flag = value.boolean()) {
      out_ += *flag ? "true" : "false";
    } else if (const auto* whole = value.integer()) {
      out_ += std::to_string(*whole);
    } else if (const auto* real = value.real()) {
      number(*real);
    } else if (const auto* text = value.string()) {
      string(*text);
    } else if (const auto* bytes = value.bytes()) {
      object({{"base64", text::base64(bytes->data)}});
    } else if (const auto* list = value.array()) {
      array(*list);
    } else if (const auto* members = value.object()) {
      object(*members);
    } else {
      out_ += "null";
    }
  }

  std::string take() { return std::move(out_); }

 private:
  void number(double value) {
    if (std::isnan(value)) {
      out_ += "\"NaN\"";
    } else if (std::isinf(value)) {
      out_ += value < 0 ? "\"-Infinity\"" : "\"Infinity\"";
    } else {
      out_ += text::fromDouble(value);
    }
  }

  void string(std::string_view value) {
    out_ += '"';
    while (!value.empty()) {
      const text::CodePoint next = text::firstCodePoint(value);
      if (!next.valid()) {
        out_ += replacement;
      } else if (const auto escape = shortEscape(value.front()); !escape.empty()) {
        out_ += escape;
      } else if (next.value < 0x20) {
        out_ += "\\u00";
        out_ += text::hex(value.substr(0, 1));
      } else {
        out_ += value.substr(0, next.length);
      }
      value.remove_prefix(next.length);
    }
    out_ += '"';
  }

  void array(const Array& elements) {
    out_ += '[';
    bool first = true;
    for (const Value& element : elements) {
      separate(first);
      value(element);
    }
    out_ += ']';
  }

  void object(const Object& members) {
    out_ += '{';
    bool first = true;
    for (const auto& [key, element] : members) {
      separate(first);
      string(key);
      out_ += ':';
      out_ += gap_;
      value(element);
    }
    out_ += '}';
  }

  void separate(bool& first) {
    if (!first) {
      out_ += ',';
      out_ += gap_;
    }
    first = false;
  }

  std::string out_;
  std::string_view gap_;
};

}  // namespace

std::string print(const Value& value) {
  Printer printer("");
  printer.value(value);
  return printer.take();
}

std::string describe(const Value& value) {
  Printer printer(" ");
  printer.value(value);
  return printer.take();
}

}  // namespace orlan::json
