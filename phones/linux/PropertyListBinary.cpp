#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

#include "orlan/base/Time.hpp"
#include "orlan/base/text.hpp"
#include "phones/linux/PropertyListForms.hpp"

namespace orlan::linuxphone::plist {
namespace {

using Read = Result<json::Value, std::string>;

struct FreeNode {
  void operator()(plist_t node) const { plist_free(node); }
};
struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};
using Node = std::unique_ptr<void, FreeNode>;
template <class T>
using Allocated = std::unique_ptr<T, FreeMemory>;

Read convert(plist_t node, int depth);

Read convertDictionary(plist_t node, int depth) {
  json::Object members;
  plist_dict_iter raw = nullptr;
  plist_dict_new_iter(node, &raw);
  const Allocated<void> iterator(raw);
  while (true) {
    char* name = nullptr;
    plist_t member = nullptr;
    plist_dict_next_item(node, raw, &name, &member);
    const Allocated<char> key(name);
    if (member == nullptr) return json::Value(std::move(members));
    auto value = convert(member, depth + 1);
    if (!value) return value;
    members.set(key ? key.get() : "", std::move(*value));
  }
}

Read convertArray(plist_t node, int depth) {
  json::Array elements;
  for (std::uint32_t i = 0; i < plist_array_get_size(node); ++i) {
    auto value = convert(plist_array_get_item(node, i), depth + 1);
    if (!value) return value;
    elements.push_back(std::move(*value));
  }
  return json::Value(std::move(elements));
}

Read convertText(plist_t node) {
  char* characters = nullptr;
  plist_get_string_val(node, &characters);
  const Allocated<char> held(characters);
  if (!held || !text::isUtf8(held.get())) return Unexpected(std::string("a string that is not valid text"));
  return json::Value(held.get());
}

json::Value convertData(plist_t node) {
  char* data = nullptr;
  std::uint64_t size = 0;
  plist_get_data_val(node, &data, &size);
  const Allocated<char> held(data);
  return json::Value(Bytes{held ? std::string(held.get(), size) : std::string()});
}

json::Value convertDate(plist_t node) {
  std::int32_t seconds = 0;  // since 2001
  std::int32_t microseconds = 0;
  plist_get_date_val(node, &seconds, &microseconds);
  return json::Value(isoDateTime(fromSecondsSince2001(seconds)));
}

Read convert(plist_t node, int depth) {
  if (depth > deepest) return Unexpected(std::string("nested too deeply"));
  std::uint8_t boolean = 0;
  std::uint64_t integer = 0;
  double real = 0.0;
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
      plist_get_bool_val(node, &boolean);
      return json::Value(boolean != 0);
    case PLIST_UINT:
      plist_get_uint_val(node, &integer);
      return json::Value(static_cast<std::int64_t>(integer));  // negative ones come unsigned
    case PLIST_UID:
      plist_get_uid_val(node, &integer);
      return json::Value(static_cast<std::int64_t>(integer));
    case PLIST_REAL:
      plist_get_real_val(node, &real);
      return json::Value(real);
    case PLIST_STRING:
      return convertText(node);
    case PLIST_DATA:
      return convertData(node);
    case PLIST_DATE:
      return convertDate(node);
    case PLIST_ARRAY:
      return convertArray(node, depth);
    case PLIST_DICT:
      return convertDictionary(node, depth);
    default:
      return Unexpected(std::string("a value of an unknown kind"));
  }
}

}  // namespace

Read readBinary(std::string_view bytes) {
  plist_t root = nullptr;
  plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
  const Node held(root);
  if (!held) return Unexpected(std::string("the binary property list is damaged"));
  return convert(root, 1);
}

}  // namespace orlan::linuxphone::plist
