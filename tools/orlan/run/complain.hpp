#pragma once

#include <string>

namespace orlan::run {

/// One line on standard error, control characters escaped. Any thread.
void complain(const std::string& line);

}  // namespace orlan::run
