#include "orlan/base/text.hpp"
#include "tools/orlan/simulate/readers.hpp"

namespace orlan::simulate {
namespace {

std::optional<int> hexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return std::nullopt;
}

}  // namespace

Fix readFix(const Members& members) {
  Fix fix;
  fix.coordinate = {members["latitude"].number(), members["longitude"].number()};
  members.into(fix.accuracy, "accuracy", &Item::number);
  return fix;
}

LocationAuthorization readLocationAuthorization(const Item& status) {
  return *fromRawValue<LocationAuthorization>(status.integer(0, 4));
}

NotificationAuthorization readNotificationAuthorization(const Item& status) {
  return *fromRawValue<NotificationAuthorization>(status.integer(0, 4));
}

ApplicationState readApplicationState(const Item& state) {
  return state.oneOf<ApplicationState>(applicationStates);
}

json::Value readStorable(const Item& item) {
  const json::Value& value = item.value();
  if (value.object() != nullptr) {
    const Members members = item.members({"base64", "text"});
    members.excludes("text", {"base64"});
    if (members.has("text")) return Bytes{members["text"].string()};
    if (auto bytes = text::fromBase64(members["base64"].string())) return Bytes{std::move(*bytes)};
    members["base64"].expected("base64 text");
    return nullptr;
  }
  if (value.isNull() || value.array() != nullptr) {
    item.expected("a string, a number, true, false, {\"base64\": …} or {\"text\": …}");
  }
  return value;
}

std::string readHex(const Item& item) {
  const std::string digits = item.string();
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const auto high = hexDigit(digits[i]);
    const auto low = i + 1 < digits.size() ? hexDigit(digits[i + 1]) : std::nullopt;
    if (!high || !low) {
      item.expected("bytes in hexadecimal digits, two a byte");
      return {};
    }
    bytes += static_cast<char>(*high * 16 + *low);
  }
  return bytes;
}

void checkFileName(const std::string& name, const Item& item) {
  const bool plain = !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos &&
                     name.find('\0') == std::string::npos;
  if (!plain) item.mistaken("expected the name of a file, found " + json::print(name));
}

std::string readFileName(const Item& item) {
  std::string name = item.string();
  checkFileName(name, item);
  return name;
}

}  // namespace orlan::simulate
