// Results are asked for their error; nothing here may throw instead.
#define SIMDJSON_EXCEPTIONS 0
#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

#include "orlan/base/ascii.hpp"
#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"

namespace orlan::json {
namespace {

namespace dom = simdjson::dom;
namespace ondemand = simdjson::ondemand;

// Whatever walks a value does so by recursion: this bounds its stack, on a thread with a small one too.
constexpr std::size_t deepest = 512;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// What stands in the tree for a number beyond every double. Nobody else sends this one.
constexpr std::string_view beyondText = "1.7976931348623157e308";
constexpr double beyond = std::numeric_limits<double>::max();

std::string_view reason(simdjson::error_code code) {
  constexpr std::pair<simdjson::error_code, std::string_view> known[] = {
      {simdjson::EMPTY, "the text is empty"},
      {simdjson::UTF8_ERROR, "the text is not UTF-8"},
      {simdjson::DEPTH_ERROR, "arrays or objects are nested too deeply"},
      {simdjson::STRING_ERROR, "a string has a wrong escape"},
      {simdjson::UNESCAPED_CHARS, "a string has a line break or another control character in it"},
      {simdjson::UNCLOSED_STRING, "a string does not end"},
      {simdjson::NUMBER_ERROR, "a number is malformed or too large"},
      {simdjson::CAPACITY, "the text is too large"},
      {simdjson::MEMALLOC, "the text is too large"}};
  for (const auto& [each, words] : known) {
    if (each == code) return words;
  }
  return "not valid JSON";
}

/// Whether a number stands as the grammar wants it but no 64-bit type holds it. What is left to look at is
/// what the C library reads besides.
bool isTooLarge(std::string_view token) {
  const std::string_view digits = token.substr(token.starts_with('-') ? 1 : 0);
  const auto isDigitAt = [&](std::size_t at) { return at < digits.size() && ascii::isDigit(digits[at]); };
  const auto point = digits.find('.');
  if (!isDigitAt(0) || (digits[0] == '0' && isDigitAt(1))) return false;
  if (point != std::string_view::npos && !isDigitAt(point + 1)) return false;
  const auto value = text::toDouble(token);
  const bool isWhole = token.find_first_of(".eE") == std::string_view::npos;
  return value && (std::isinf(*value) || (isWhole && !text::toInteger(token)));
}

/// Walks a text that the tree's parser refused until the other parser stumbles as well: only that one knows
/// where it is, and goes on behind a number that no 64-bit type holds.
class Walk {
 public:
  explicit Walk(std::string_view text) : padded_(text), all_(text) {}

  /// What is wrong with the text; nothing when only numbers are too large, unless `exact`.
  simdjson::error_code run(bool exact) {
    exact_ = exact;
    ondemand::value root;
    if (const auto code = parser_.iterate(padded_).get(document_)) return code;
    if (const auto code = document_.get_value().get(root)) return code;
    isUnderWay_ = true;
    return value(root, 1);
  }

  /// " at line 3, column 7" (in characters, from 1) of what is wrong, where that can be told.
  [[nodiscard]] std::string place(simdjson::error_code code) {
    const char* at = string_;  // of a faulty string the parser knows only the end
    if (!isUnderWay_) return {};
    if (code != simdjson::STRING_ERROR && document_.current_location().get(at)) {
      return " at the end of the text";  // a fault behind the value leaves the parser there
    }
    const auto offset = static_cast<std::size_t>(at - padded_.data());
    if (offset > all_.size()) return {};
    const std::string_view before = all_.substr(0, offset);
    const auto lineStart = static_cast<std::ptrdiff_t>(before.rfind('\n') + 1);  // none: npos + 1 is 0
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const auto column =
        std::count_if(before.begin() + lineStart, before.end(), [](char c) { return (c & 0xC0) != 0x80; }) +
        1;
    return " at line " + std::to_string(line) + ", column " + std::to_string(column);
  }

  /// The text with numbers that the tree can hold in the place of those that are too large.
  [[nodiscard]] std::string fitting() const {
    std::string out;
    const char* from = padded_.data();
    for (const std::string_view token : large_) {
      out.append(from, token.data());
      const bool isBeyond = std::isinf(*text::toDouble(token));
      out.append(isBeyond ? beyondText : token).append(isBeyond ? "" : "e0");  // a large integer is a double
      from = token.data() + token.size();
    }
    return out.append(from, padded_.data() + padded_.size());
  }

 private:
  simdjson::error_code value(ondemand::value value, std::size_t depth) {
    if (depth > deepest) return simdjson::DEPTH_ERROR;
    ondemand::json_type type{};
    if (const auto code = value.type().get(type)) return code;
    switch (type) {
      case ondemand::json_type::array:
        return array(value, depth);
      case ondemand::json_type::object:
        return object(value, depth);
      case ondemand::json_type::string:
        if (const auto code = value.current_location().get(string_)) return code;
        return value.get_string().error();
      case ondemand::json_type::number:
        return number(value);
      case ondemand::json_type::boolean:
        return value.get_bool().error();
      case ondemand::json_type::null:
        break;
    }
    return value.is_null().error();
  }

  simdjson::error_code number(ondemand::value& value) {
    const auto code = value.get_number().error();
    const std::string_view token = text::trimmed(value.raw_json_token());
    if (code != simdjson::NUMBER_ERROR || exact_ || !isTooLarge(token)) return code;
    large_.push_back(token);
    return simdjson::SUCCESS;
  }

  simdjson::error_code array(ondemand::value& value, std::size_t depth) {
    ondemand::array array;
    if (const auto code = value.get_array().get(array)) return code;
    for (auto next : array) {
      ondemand::value element;
      if (const auto code = next.get(element)) return code;
      if (const auto code = this->value(element, depth + 1)) return code;
    }
    return simdjson::SUCCESS;
  }

  simdjson::error_code object(ondemand::value& value, std::size_t depth) {
    ondemand::object object;
    if (const auto code = value.get_object().get(object)) return code;
    for (auto next : object) {
      ondemand::field member;
      std::string_view key;
      if (const auto code = std::move(next).get(member)) return code;
      string_ = member.key().raw() - 1;  // its quote
      if (const auto code = member.unescaped_key().get(key)) return code;
      if (const auto code = this->value(member.value(), depth + 1)) return code;
    }
    return simdjson::SUCCESS;
  }

  simdjson::padded_string padded_;
  std::string_view all_;
  ondemand::parser parser_;
  ondemand::document document_;
  bool exact_ = false;
  bool isUnderWay_ = false;
  const char* string_ = nullptr;  // where the last one began
  std::vector<std::string_view> large_;
};

template <class Cursor>
dom::element element(const Cursor& cursor) {
  return std::bit_cast<dom::element>(cursor);
}

template <class T, class Cursor>
std::optional<T> valueOf(const Cursor& cursor) {
  T value{};
  if (element(cursor).template get<T>().get(value) != simdjson::SUCCESS) return std::nullopt;
  return value;
}

}  // namespace

struct Document::Tree {
  dom::document parsed;  // cursors point here: never moves

  simdjson::error_code read(std::string_view text) {
    dom::parser parser;
    const auto capacity = std::max(text.size(), dom::MINIMAL_DOCUMENT_CAPACITY);
    if (const auto code = parser.allocate(capacity, deepest)) return code;
    return parser.parse_into_document(parsed, text.data(), text.size()).error();
  }
};

Document::Document(std::unique_ptr<Tree> tree) : tree_(std::move(tree)) {}
Document::Document(Document&&) noexcept = default;
Document& Document::operator=(Document&&) noexcept = default;
Document::~Document() = default;

Result<Document> Document::read(std::string_view text, bool exact) {
  if (text.empty()) text = "";  // the parser copies even nothing, but not from a null pointer
  if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
  auto tree = std::make_unique<Tree>();
  if (const auto code = tree->read(text)) {
    Walk walk(text);
    const auto stumbled = walk.run(exact);
    const bool isTooLarge = code == simdjson::NUMBER_ERROR && stumbled == simdjson::SUCCESS;
    if (!isTooLarge || tree->read(walk.fitting()) != simdjson::SUCCESS) {
      return Unexpected(error(std::string(reason(code)) + walk.place(stumbled)));
    }
  }
  return Document(std::move(tree));
}

Result<Document> Document::parse(std::string_view text) {
  return read(text, false);
}

Result<Value> parse(std::string_view text) {
  const auto document = Document::read(text, true);
  if (!document) return Unexpected(document.error());
  return document->root().value();
}

Node Document::root() const {
  return Node(std::bit_cast<Node::Cursor>(dom::element(tree_->parsed.root())));
}

struct PartParser::Memory {
  explicit Memory(std::size_t deepestPart) : depth(deepestPart) {}
  const std::size_t depth;
  dom::parser parser;
};

PartParser::PartParser(std::size_t around) : memory_(std::make_unique<Memory>(deepest - around)) {}
PartParser::~PartParser() = default;

std::optional<Node> PartParser::parse(std::string_view part) {
  dom::parser& parser = memory_->parser;
  const std::size_t wanted = std::max(part.size(), dom::MINIMAL_DOCUMENT_CAPACITY);
  if (parser.capacity() < wanted && parser.allocate(std::bit_ceil(wanted), memory_->depth)) {
    return std::nullopt;
  }
  dom::element root;
  if (parser.parse(part.data(), part.size()).get(root)) return std::nullopt;
  return Node(std::bit_cast<Node::Cursor>(root));
}

Kind Node::kind() const {
  switch (element(cursor_).type()) {
    case dom::element_type::ARRAY:
      return Kind::array;
    case dom::element_type::OBJECT:
      return Kind::object;
    case dom::element_type::INT64:
      return Kind::integer;
    case dom::element_type::UINT64:
    case dom::element_type::DOUBLE:
      return Kind::real;
    case dom::element_type::STRING:
      return Kind::string;
    case dom::element_type::BOOL:
      return Kind::boolean;
    case dom::element_type::NULL_VALUE:
      break;
  }
  return Kind::null;
}

std::optional<bool> Node::boolean() const {
  return valueOf<bool>(cursor_);
}

std::optional<std::int64_t> Node::integer() const {
  if (const auto whole = valueOf<std::int64_t>(cursor_)) return whole;
  if (element(cursor_).type() != dom::element_type::DOUBLE) return std::nullopt;
  constexpr double end = 9223372036854775808.0;  // 2^63, the first that does not fit
  const double real = number().value_or(end);
  if (!(real >= -end && real < end) || std::trunc(real) != real) return std::nullopt;
  return static_cast<std::int64_t>(real);
}

std::optional<double> Node::number() const {
  const auto value = valueOf<double>(cursor_);
  return value == beyond ? std::nullopt : value;
}

std::optional<std::string_view> Node::string() const {
  return valueOf<std::string_view>(cursor_);
}

bool Node::elements(FunctionRef<bool(Node)> visit) const {
  const auto array = valueOf<dom::array>(cursor_);
  return !array || std::all_of(array->begin(), array->end(),
                               [&](dom::element child) { return visit(Node(std::bit_cast<Cursor>(child))); });
}

bool Node::members(FunctionRef<bool(std::string_view, Node)> visit) const {
  dom::object object;
  if (element(cursor_).get_object().get(object) != simdjson::SUCCESS) return true;
  for (const dom::key_value_pair member : object) {
    if (!visit(member.key, Node(std::bit_cast<Cursor>(member.value)))) return false;
  }
  return true;
}

std::size_t Node::size() const {
  if (const auto array = valueOf<dom::array>(cursor_)) return array->size();
  const auto object = valueOf<dom::object>(cursor_);
  return object ? object->size() : 0;
}

}  // namespace orlan::json

// Here because of the parser's library, which checks text many times faster than one character at a time;
// every log line is checked.
bool orlan::text::isUtf8(std::string_view bytes) {
  return simdjson::validate_utf8(bytes.data(), bytes.size());
}
