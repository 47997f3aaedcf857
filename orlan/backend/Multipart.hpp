#pragma once

#include <span>
#include <string>
#include <string_view>

namespace orlan {

/// One text part of a form.
struct FormField {
  std::string_view name;  // a literal
  std::string value;
};

/// The fields as a multipart form, in their order, values as they are. The boundary must not occur in them.
[[nodiscard]] std::string multipartBody(std::string_view boundary, std::span<const FormField> fields);

/// The content type that goes with it.
[[nodiscard]] std::string multipartContentType(std::string_view boundary);

}  // namespace orlan
