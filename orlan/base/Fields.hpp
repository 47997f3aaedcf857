#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "orlan/base/Enumeration.hpp"
#include "orlan/base/json.hpp"

/// The JSON form of records, said once a record and used in both directions:
///
///     template <> struct Fields<GeofencePoint> {
///       using R = GeofencePoint;
///       static constexpr std::tuple list{field("position", &R::position),
///                                        field("latitude", &R::latitude, DegreesText{})};
///     };
///
/// Decoding: a member of type `std::optional` may be missing or null, every other must be there with its
/// type; unknown keys are ignored; of duplicate keys the last wins. Encoding: an absent optional is left out.
/// A codec changes the form of one field: `static bool decode(json::Node, M&, Failure&)` and
/// `static json::Value encode(const M&)`.
namespace orlan {

template <class R>
struct Fields;

template <class R>
concept Record = requires {
  Fields<R>::list;
};

namespace json {

/// Where and why decoding failed; the path grows from the inside out while the calls return.
struct Failure {
  std::string path;
  std::string reason;

  bool expected(std::string_view what, Node found);  // always false, for `return failure.expected(…)`
  void under(std::string_view key);
  void under(std::size_t index);
  [[nodiscard]] Error error() const;
};

template <class T>
bool decode(Node node, T& out, Failure& failure);
template <class T>
Value encode(const T& value);

/// The form that follows from the member's type.
struct Standard {
  template <class T>
  static bool decode(Node node, T& out, Failure& failure) {
    return json::decode(node, out, failure);
  }
  template <class T>
  static Value encode(const T& value) {
    return json::encode(value);
  }
};

}  // namespace json

template <class R, class M, class Codec>
struct Field {
  std::string_view key;
  M R::*member;
};

template <class Codec = json::Standard, class R, class M>
constexpr Field<R, M, Codec> field(std::string_view key, M R::*member) {
  return {key, member};
}
template <class R, class M, class Codec>
constexpr Field<R, M, Codec> field(std::string_view key, M R::*member, Codec) {
  return {key, member};
}

namespace json {

template <class T>
struct IsOptional : std::false_type {};
template <class T>
struct IsOptional<std::optional<T>> : std::true_type {};
template <class T>
struct IsVector : std::false_type {};
template <class T>
struct IsVector<std::vector<T>> : std::true_type {};
template <class T>
struct IsMap : std::false_type {};
template <class T>
struct IsMap<std::map<std::string, T>> : std::true_type {};

bool decodeScalar(Node node, bool& out, Failure& failure);
bool decodeScalar(Node node, std::int64_t& out, Failure& failure);
bool decodeScalar(Node node, double& out, Failure& failure);
bool decodeScalar(Node node, std::string& out, Failure& failure);
bool decodeScalar(Node node, std::string_view& out, Failure& failure);  // lives as long as the document

/// `Fields<R>::list` as rows that a loop can walk.
template <class R>
struct FieldRows {
  struct Row {
    std::string_view key;
    bool isOptional;
    bool (*decode)(Node node, R& record, Failure& failure, bool again);
  };

  template <std::size_t I>
  static constexpr Row row() {
    constexpr auto& field = std::get<I>(Fields<R>::list);
    return []<class Member, class Codec>(const Field<R, Member, Codec>& known) -> Row {
      return {known.key, IsOptional<Member>::value, &decodeRow<I, Member, Codec>};
    }(field);
  }

  /// `again`: the key is there a second time, and nothing of the first value may shine through.
  template <std::size_t I, class Member, class Codec>
  static bool decodeRow(Node node, R& record, Failure& failure, bool again) {
    constexpr auto& field = std::get<I>(Fields<R>::list);
    Member& member = record.*field.member;
    if (again) member = Member{};
    const bool ok = Codec::decode(node, member, failure);
    if (!ok) failure.under(field.key);
    return ok;
  }

  static constexpr std::size_t count = std::tuple_size_v<std::remove_cvref_t<decltype(Fields<R>::list)>>;
  static constexpr std::array<Row, count> rows = []<std::size_t... I>(std::index_sequence<I...>) {
    return std::array<Row, count>{row<I>()...};
  }
  (std::make_index_sequence<count>{});
};

template <class R>
bool decodeRecord(Node node, R& record, Failure& failure) {
  if (node.kind() != Kind::object) return failure.expected("an object", node);
  constexpr auto& rows = FieldRows<R>::rows;
  std::bitset<rows.size()> seen;
  std::size_t next = 0;  // members mostly come in the order of the list
  const auto take = [&](std::string_view key, Node value) {
    for (std::size_t tried = 0; tried < rows.size(); ++tried) {
      const std::size_t at = (next + tried) % rows.size();
      if (rows[at].key != key) continue;
      next = at + 1;
      const bool again = seen[at];
      seen.set(at);
      return rows[at].decode(value, record, failure, again);
    }
    return true;
  };
  if (!node.members(take)) return false;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (seen[i] || rows[i].isOptional) continue;
    failure.reason = "missing";
    failure.under(rows[i].key);
    return false;
  }
  return true;
}

template <class T>
bool decode(Node node, T& out, Failure& failure) {
  if constexpr (IsOptional<T>::value) {
    if (node.kind() == Kind::null) {
      out.reset();
      return true;
    }
    return decode(node, out.emplace(), failure);
  } else if constexpr (IsVector<T>::value) {
    if (node.kind() != Kind::array) return failure.expected("an array", node);
    out.clear();
    out.reserve(node.size());
    return node.elements([&](Node element) {
      if (decode(element, out.emplace_back(), failure)) return true;
      failure.under(out.size() - 1);
      return false;
    });
  } else if constexpr (IsMap<T>::value) {
    if (node.kind() != Kind::object) return failure.expected("an object", node);
    out.clear();
    return node.members([&](std::string_view key, Node value) {
      if (decode(value, out[std::string(key)] = {}, failure)) return true;
      failure.under(key);
      return false;
    });
  } else if constexpr (RawRepresentable<T>) {
    using Raw = std::conditional_t<std::is_same_v<RawValue<T>, std::string_view>, std::string, std::int64_t>;
    Raw raw{};
    if (!decodeScalar(node, raw, failure)) return false;
    const auto known = fromRawValue<T>(raw);
    if (!known) return failure.expected("a known value", node);
    out = *known;
    return true;
  } else if constexpr (Record<T>) {
    return decodeRecord(node, out, failure);
  } else {
    return decodeScalar(node, out, failure);
  }
}

template <class R>
Value encodeRecord(const R& record) {
  Object object;
  auto add = [&]<class M, class Codec>(const Field<R, M, Codec>& field) {
    const M& member = record.*field.member;
    if constexpr (IsOptional<M>::value) {
      if (!member) return;
    }
    object.set(field.key, Codec::encode(member));
  };
  std::apply([&](const auto&... field) { (add(field), ...); }, Fields<R>::list);
  return object;
}

template <class T>
Value encode(const T& value) {
  if constexpr (IsOptional<T>::value) {
    return value ? encode(*value) : Value();
  } else if constexpr (IsVector<T>::value) {
    Array array;
    array.reserve(value.size());
    for (const auto& element : value) array.push_back(encode(element));
    return array;
  } else if constexpr (IsMap<T>::value) {
    std::vector<Object::Member> members;
    members.reserve(value.size());
    for (const auto& [key, element] : value) members.emplace_back(key, encode(element));
    return Object(std::move(members));
  } else if constexpr (RawRepresentable<T>) {
    return Value(rawValue(value));
  } else if constexpr (Record<T>) {
    return encodeRecord(value);
  } else {
    return Value(value);
  }
}

/// Whether a decoded `T` has views into the document that it comes from.
template <class T>
constexpr bool hasViews() {
  if constexpr (IsOptional<T>::value || IsVector<T>::value) {
    return hasViews<typename T::value_type>();
  } else if constexpr (IsMap<T>::value) {
    return hasViews<typename T::mapped_type>();
  } else if constexpr (Record<T>) {
    return std::apply(
        []<class... M, class... Codec>(const Field<T, M, Codec>&...) { return (hasViews<M>() || ...); },
        Fields<T>::list);
  } else {
    return std::is_same_v<T, std::string_view>;
  }
}

/// A whole text as a record (or a list or map of records). The error names the path of what is wrong:
/// `geoCampaign[3].locations: expected an array, found a string`. Not for records with views: decode those
/// from a `Document` that stays.
template <class T>
requires(!hasViews<T>()) [[nodiscard]] Result<T> decodeText(std::string_view text) {
  auto document = Document::parse(text);
  if (!document) return Unexpected(document.error());
  T out{};
  Failure failure;
  if (!decode(document->root(), out, failure)) return Unexpected(failure.error());
  return out;
}

/// A record (or a list or map of records) as a text; an error where JSON has no form for what is in it. So
/// what a host hands over is sent as it is or not at all.
template <class T>
[[nodiscard]] Result<std::string> encodeText(const T& value) {
  return serialised(encode(value));
}

}  // namespace json
}  // namespace orlan
