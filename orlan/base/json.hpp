#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "orlan/base/Bytes.hpp"
#include "orlan/base/FunctionRef.hpp"
#include "orlan/base/Result.hpp"

/// Values of the kind that JSON, property lists, user-info dictionaries and the key-value store have in
/// common.
namespace orlan::json {

class Value;
using Array = std::vector<Value>;

/// String keys and values in the order of insertion. Look-up is linear: these objects are small.
class Object {
 public:
  using Member = std::pair<std::string, Value>;

  Object() = default;
  Object(std::initializer_list<Member> members);

  /// Of members with the same key the last wins, in the place of the first. Linear, unlike so many `set`.
  explicit Object(std::vector<Member> members);

  /// Null pointer when there is no such key. A key with a null value is there.
  [[nodiscard]] const Value* find(std::string_view key) const;
  [[nodiscard]] Value* find(std::string_view key);

  /// Replaces the value of a known key in its place, or appends.
  void set(std::string_view key, Value value);
  void remove(std::string_view key);

  [[nodiscard]] std::size_t size() const;
  [[nodiscard]] bool empty() const;
  [[nodiscard]] std::vector<Member>::const_iterator begin() const;
  [[nodiscard]] std::vector<Member>::const_iterator end() const;

  friend bool operator==(const Object& a, const Object& b);

 private:
  std::vector<Member> members_;
};

/// Null, boolean, 64-bit integer, double, text, bytes, array or object. Integers and doubles are kept apart,
/// and so are null and "not there". An integer above the signed 64-bit range becomes a double.
class Value {
 public:
  Value() = default;
  Value(std::nullptr_t) {}                                        // NOLINT implicit
  Value(bool value) : state_(value) {}                            // NOLINT implicit
  Value(std::int64_t value) : state_(value) {}                    // NOLINT implicit
  Value(int value) : state_(static_cast<std::int64_t>(value)) {}  // NOLINT implicit
  Value(double value) : state_(value) {}                          // NOLINT implicit
  Value(std::string value) : state_(std::move(value)) {}          // NOLINT implicit
  Value(std::string_view value) : state_(std::string(value)) {}   // NOLINT implicit
  Value(const char* value) : state_(std::string(value)) {}        // NOLINT implicit
  Value(Bytes value) : state_(std::move(value)) {}                // NOLINT implicit
  Value(Array value) : state_(std::move(value)) {}                // NOLINT implicit
  Value(Object value) : state_(std::move(value)) {}               // NOLINT implicit
  template <class T>
  Value(const std::optional<T>& value) : Value(value ? Value(*value) : Value()) {}  // NOLINT implicit

  [[nodiscard]] bool isNull() const { return std::holds_alternative<std::nullptr_t>(state_); }

  /// Each is a null pointer unless the value is exactly of that kind (an integer is no double).
  [[nodiscard]] const bool* boolean() const { return std::get_if<bool>(&state_); }
  [[nodiscard]] const std::int64_t* integer() const { return std::get_if<std::int64_t>(&state_); }
  [[nodiscard]] const double* real() const { return std::get_if<double>(&state_); }
  [[nodiscard]] const std::string* string() const { return std::get_if<std::string>(&state_); }
  [[nodiscard]] const Bytes* bytes() const { return std::get_if<Bytes>(&state_); }
  [[nodiscard]] const Array* array() const { return std::get_if<Array>(&state_); }
  [[nodiscard]] const Object* object() const { return std::get_if<Object>(&state_); }
  [[nodiscard]] Array* array() { return std::get_if<Array>(&state_); }
  [[nodiscard]] Object* object() { return std::get_if<Object>(&state_); }

  /// An integer or a double, as a double.
  [[nodiscard]] std::optional<double> number() const;

  friend bool operator==(const Value& a, const Value& b) { return a.state_ == b.state_; }

 private:
  std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, Bytes, Array, Object> state_ =
      nullptr;
};

/// "an array", "a string", "null": for messages that say what was found.
[[nodiscard]] std::string_view kindName(const Value& value);

/// Compact JSON text: members in order, doubles by `text::fromDouble` (those that are not finite as the texts
/// "NaN", "Infinity", "-Infinity"), bytes as {"base64": …}, bytes of text that are not UTF-8 replaced by
/// U+FFFD.
/// `/` and characters beyond ASCII are written as they are.
[[nodiscard]] std::string print(const Value& value);

/// The same, or an error where JSON has no form for the value: a number that is not finite, or a text that is
/// not UTF-8.
[[nodiscard]] Result<std::string> serialised(const Value& value);

/// A readable rendering for log lines: like JSON, with `, ` and `: ` as separators.
[[nodiscard]] std::string describe(const Value& value);

/// Reads one JSON text. Of duplicate keys the last wins, in the place of the first. A byte-order mark in
/// front is skipped. A number that no 64-bit type holds is refused. The error (domain "JSON") says what is
/// wrong and at which line and column where that is known.
[[nodiscard]] Result<Value> parse(std::string_view text);

enum class Kind { null, boolean, integer, real, string, array, object };

/// One value in a parsed document: a small copyable cursor, valid while its `Document` lives.
class Node {
 public:
  [[nodiscard]] Kind kind() const;
  [[nodiscard]] std::string_view kindName() const;

  /// Each holds a value only when the node is of that kind. `integer` also takes a number with a zero
  /// fraction (`42.0`) inside the 64-bit range; `number` takes integers, those beyond that range too, and
  /// doubles, but none as large as the largest double.
  [[nodiscard]] std::optional<bool> boolean() const;
  [[nodiscard]] std::optional<std::int64_t> integer() const;
  [[nodiscard]] std::optional<double> number() const;
  [[nodiscard]] std::optional<std::string_view> string() const;

  /// Visits the elements or members in order until `visit` returns false; returns false if it did.
  /// On a node of another kind nothing is visited.
  bool elements(FunctionRef<bool(Node)> visit) const;
  bool members(FunctionRef<bool(std::string_view key, Node value)> visit) const;
  [[nodiscard]] std::size_t size() const;  // of an array or object; counts no further than 16,777,215

  [[nodiscard]] Value value() const;

 private:
  friend class Document;
  friend class PartParser;
  struct Cursor {  // what the parser calls an element, taken apart so that it passes in registers
    const void* document;
    std::size_t index;
  };
  explicit Node(Cursor cursor) : cursor_(cursor) {}

  Cursor cursor_;
};

/// A parsed JSON text, owned. Records decode straight from it (`Fields.hpp`). Unlike `parse`, a number of any
/// size does no harm where nobody reads it.
class Document {
 public:
  [[nodiscard]] static Result<Document> parse(std::string_view text);
  Document(Document&&) noexcept;
  Document& operator=(Document&&) noexcept;
  ~Document();

  [[nodiscard]] Node root() const;

 private:
  struct Tree;
  explicit Document(std::unique_ptr<Tree> tree);
  friend Result<Value> parse(std::string_view text);
  static Result<Document> read(std::string_view text, bool exact);
  std::unique_ptr<Tree> tree_;
};

/// Parses one part of a text after the other in memory that it keeps.
class PartParser {
 public:
  /// `around`: in how many arrays and objects the parts are.
  explicit PartParser(std::size_t around);
  ~PartParser();

  /// Nothing for a part that `Document` refuses or holds only with numbers replaced. Valid until the next.
  [[nodiscard]] std::optional<Node> parse(std::string_view part);

 private:
  struct Memory;
  std::unique_ptr<Memory> memory_;
};

/// The error of a JSON text that is not valid, or does not have the form that a record wants.
[[nodiscard]] Error error(std::string description);

}  // namespace orlan::json
