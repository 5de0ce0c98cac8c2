// What the system tells of a process.
#pragma once

#include "Ports/Applications.h"

#include <optional>
#include <string>

namespace korvane::platform::x11 {

// Empty when the process is gone or another user's.
std::string executableOf(Pid pid);
std::optional<std::string> processName(Pid pid);

}  // namespace korvane::platform::x11
