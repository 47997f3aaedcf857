#pragma once

#include <string>

namespace orlan::run {

/// One line on standard error, control characters escaped; gives `status` back. Any thread.
int complain(const std::string& line, int status = 1);

}  // namespace orlan::run
