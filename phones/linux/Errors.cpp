#include "phones/linux/Errors.hpp"

#include "orlan/base/text.hpp"

namespace orlan::linuxphone::errors {

Error propertyList(std::string_view what) {
  return {"PropertyList", -1, text::escapedControls(what)};
}

Error track(std::string_view what) {
  return {"Track", -1, text::escapedControls(what)};
}

}  // namespace orlan::linuxphone::errors
