#include <unordered_map>

#include "orlan/base/json.hpp"

namespace orlan::json {
namespace {

// Up to here comparing every key is cheaper than an index.
constexpr std::size_t smallObject = 16;

template <class Members>
auto* findIn(Members& members, std::string_view key) {
  for (auto& member : members) {
    if (member.first == key) return &member.second;
  }
  return static_cast<decltype(&members.front().second)>(nullptr);
}

}  // namespace

Object::Object(std::initializer_list<Member> members) : Object(std::vector<Member>(members)) {}

Object::Object(std::vector<Member> members) {
  const bool isLarge = members.size() > smallObject;
  std::unordered_map<std::string, std::size_t> places;
  members_.reserve(members.size());
  for (Member& member : members) {
    if (!isLarge) {
      set(member.first, std::move(member.second));
    } else if (const auto [known, isNew] = places.try_emplace(member.first, members_.size()); isNew) {
      members_.push_back(std::move(member));
    } else {
      members_[known->second].second = std::move(member.second);
    }
  }
}

const Value* Object::find(std::string_view key) const {
  return findIn(members_, key);
}
Value* Object::find(std::string_view key) {
  return findIn(members_, key);
}

void Object::set(std::string_view key, Value value) {
  if (Value* known = find(key)) {
    *known = std::move(value);
  } else {
    members_.emplace_back(key, std::move(value));
  }
}

void Object::remove(std::string_view key) {
  std::erase_if(members_, [key](const Member& member) { return member.first == key; });
}

std::size_t Object::size() const {
  return members_.size();
}
bool Object::empty() const {
  return members_.empty();
}
std::vector<Object::Member>::const_iterator Object::begin() const {
  return members_.begin();
}
std::vector<Object::Member>::const_iterator Object::end() const {
  return members_.end();
}

bool operator==(const Object& a, const Object& b) {
  return a.members_ == b.members_;
}

std::optional<double> Value::number() const {
  if (const auto* whole = integer()) return static_cast<double>(*whole);
  if (const auto* real = this->real()) return *real;
  return std::nullopt;
}

std::string_view kindName(const Value& value) {
  if (value.isNull()) return "null";
  if (value.boolean()) return "a boolean";
  if (value.integer()) return "an integer";
  if (value.real()) return "a number";
  if (value.string()) return "a string";
  if (value.bytes()) return "bytes";
  return value.array() ? "an array" : "an object";
}

Error error(std::string description) {
  return {"JSON", -1, std::move(description)};
}

}  // namespace orlan::json
