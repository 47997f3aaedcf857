#pragma once

#include <string_view>

namespace orlan::simulate {

/// What a scenario may be, as JSON Schema (draft 2020-12): the content of docs/scenario.schema.json.
[[nodiscard]] std::string_view scenarioSchema();

}  // namespace orlan::simulate
