// What the system reports about a process.
#pragma once

#include "Ports/Applications.h"

#include <optional>
#include <string>

namespace korvane::platform::x11 {

// Empty when the process is gone or belongs to another user.
std::string executableOf(Pid pid);
std::optional<std::string> processName(Pid pid);

}  // namespace korvane::platform::x11
