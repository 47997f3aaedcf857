#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "orlan/base/FunctionRef.hpp"
#include "orlan/base/json.hpp"

namespace orlan::json {

/// Reads the text of an object with long `arrays` element by element, in the memory that one of them needs: a
/// tree of the whole text takes many times its size. Visits the elements in the order of the text; a node is
/// valid inside its visit only. True when the whole text is valid, each of the arrays is there once, and
/// `visit` never said false. Otherwise a `Document` of the same text tells what it is about it: a text may be
/// merely unusual.
[[nodiscard]] bool eachElement(std::string_view text, std::span<const std::string_view> arrays,
                               FunctionRef<bool(std::size_t array, Node element)> visit);

}  // namespace orlan::json
