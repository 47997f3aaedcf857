#include "orlan/backend/Multipart.hpp"

#include <fmt/core.h>

namespace orlan {

std::string multipartBody(std::string_view boundary, std::span<const FormField> fields) {
  std::string body;
  for (const auto& field : fields) {
    body += fmt::format("--{}\r\nContent-Disposition: form-data; name=\"{}\"\r\n\r\n{}\r\n", boundary,
                        field.name, field.value);
  }
  return body += fmt::format("--{}--\r\n", boundary);
}

std::string multipartContentType(std::string_view boundary) {
  return fmt::format("multipart/form-data; boundary={}", boundary);
}

}  // namespace orlan
