#include "phones/linux/PropertyList.hpp"

#include "phones/linux/Errors.hpp"
#include "phones/linux/PropertyListForms.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::linuxphone {
namespace {

Result<json::Value, std::string> readEither(std::string_view bytes) {
  if (bytes.empty()) return Unexpected(std::string("the file is empty"));
  if (bytes.size() > longestPropertyList) return Unexpected(std::string("the file is too long"));
  return bytes.starts_with("bplist") ? plist::readBinary(bytes) : plist::readXml(bytes);
}

Result<json::Object, std::string> readDictionary(std::string_view bytes) {
  auto value = readEither(bytes);
  if (!value) return Unexpected(value.error());
  if (json::Object* dictionary = value->object()) return std::move(*dictionary);
  return Unexpected("expected a dictionary, found " + std::string(json::kindName(*value)));
}

}  // namespace

Result<json::Object> parsePropertyList(std::string_view bytes) {
  auto dictionary = readDictionary(bytes);
  if (!dictionary) return Unexpected(errors::propertyList(dictionary.error()));
  return std::move(*dictionary);
}

Result<json::Object> readPropertyList(const std::string& path) {
  const auto bytes = disk::read(path, longestPropertyList);
  if (!bytes) return Unexpected(errors::propertyList(path + ": " + bytes.error().message()));
  auto dictionary = readDictionary(*bytes);
  if (!dictionary) return Unexpected(errors::propertyList(path + ": " + dictionary.error()));
  return std::move(*dictionary);
}

}  // namespace orlan::linuxphone
