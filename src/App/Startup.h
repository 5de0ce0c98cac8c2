// The reasons not to start, each with the one line that the program prints.
#pragma once

#include "Platform/Linux/InstanceLock.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace korvane {

struct Refusal {
    std::string line;
    int status = 1;
};

// Checks the arguments, and whether the session has an X11 display.
std::optional<Refusal> refusalBeforeStart(int argumentCount, const char *display, const char *waylandDisplay);

// Whether the X server with that name answers. Without this check the toolkit would end the program with its own
// messages.
bool canOpenDisplay(const std::string &display);

// While it lives, prevents a second program on the same display.
class SingleInstance {
public:
    explicit SingleInstance(const std::string &display);
    // Absent when this is the only program. Also absent when no folder can be written to, because this must not prevent
    // a start. The lock of a program that died is ignored. A second start ends with status 0. If another user's file
    // has the lock's name, this is reported with status 1.
    std::optional<Refusal>
    claim(const std::vector<std::filesystem::path> &folders = platform::InstanceLock::standardFolders());

private:
    std::string display;
    platform::InstanceLock lock;
};

}  // namespace korvane
