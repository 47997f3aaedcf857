#include <cmath>

#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"
#include "orlan/base/utf8.hpp"

namespace orlan::json {
namespace {

constexpr std::string_view replacement = "\uFFFD";

// The characters of a string that have an escape of their own, and the letters of these.
constexpr std::string_view escaped = "\"\\\b\f\n\r\t";
constexpr std::string_view escapes = "\"\\bfnrt";

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

  /// Why the text is not what the value is; empty when it is.
  [[nodiscard]] std::string_view loss() const { return loss_; }

 private:
  void number(double value) {
    if (std::isfinite(value)) {
      out_ += text::fromDouble(value);
      return;
    }
    out_ += std::isnan(value) ? "\"NaN\"" : value < 0 ? "\"-Infinity\"" : "\"Infinity\"";
    loss_ = "a number is not finite";
  }

  void string(std::string_view value) {
    out_ += '"';
    while (!value.empty()) {
      const text::CodePoint next = text::firstCodePoint(value);
      if (!next.valid()) {
        out_ += replacement;
        loss_ = "a text is not UTF-8";
      } else if (const auto at = escaped.find(value.front()); at != std::string_view::npos) {
        out_ += '\\';
        out_ += escapes[at];
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
  std::string_view loss_;
};

}  // namespace

std::string print(const Value& value) {
  Printer printer("");
  printer.value(value);
  return printer.take();
}

Result<std::string> serialised(const Value& value) {
  Printer printer("");
  printer.value(value);
  if (!printer.loss().empty()) return Unexpected(error(std::string(printer.loss())));
  return printer.take();
}

std::string describe(const Value& value) {
  Printer printer(" ");
  printer.value(value);
  return printer.take();
}

}  // namespace orlan::json
