#include "phones/linux/Errors.hpp"

#include <utility>

#include "orlan/base/text.hpp"

namespace orlan::linuxphone::errors {

Error propertyList(std::string what) {
  return {"PropertyList", -1, text::escapedControls(what)};
}

Error track(std::string what) {
  return {"Track", -1, text::escapedControls(what)};
}

}  // namespace orlan::linuxphone::errors
