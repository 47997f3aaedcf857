#include "phones/linux/PropertyList.hpp"

#include <plist/plist.h>

#include <cstdint>
#include <memory>

#include "orlan/base/text.hpp"
#include "phones/linux/Releasing.hpp"
#include "phones/linux/XmlPropertyList.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::linuxphone {
namespace {

/// The binary form is only turned into the other, so that both are read by the same rules. `bytes` is at most
/// `longestPropertyList` long: libplist follows nested objects on the stack.
Result<json::Value, std::string> readBinary(std::string_view bytes) {
  plist_t root = nullptr;
  char* text = nullptr;
  std::uint32_t length = 0;
  plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
  const std::unique_ptr<void, Releasing<plist_free>> heldRoot(root);
  if (root != nullptr) plist_to_xml(root, &text, &length);
  const std::unique_ptr<char, Releasing<plist_to_xml_free>> heldText(text);
  auto value = readXmlPropertyList(std::string_view(text, length));
  if (!value) return Unexpected(std::string("the binary property list is damaged"));
  return value;
}

Result<json::Object> readDictionary(std::string_view bytes, const std::string& place) {
  auto wrong = [&](const std::string& what) {
    return Unexpected(Error{"PropertyList", -1, text::escapedControls(place + what)});
  };
  if (bytes.empty()) return wrong("the file is empty");
  if (bytes.size() > longestPropertyList) return wrong("the file is too long");
  auto value = bytes.starts_with("bplist") ? readBinary(bytes) : readXmlPropertyList(bytes);
  if (!value) return wrong(value.error());
  if (json::Object* dictionary = value->object()) return std::move(*dictionary);
  return wrong("expected a dictionary, found " + std::string(json::kindName(*value)));
}

}  // namespace

Result<json::Object> parsePropertyList(std::string_view bytes) {
  return readDictionary(bytes, "");
}

Result<json::Object> readPropertyList(const std::string& path) {
  const auto bytes = disk::read(path, longestPropertyList);
  if (bytes) return readDictionary(*bytes, path + ": ");
  return Unexpected(Error{"PropertyList", -1, text::escapedControls(path + ": " + bytes.error().message())});
}

}  // namespace orlan::linuxphone
