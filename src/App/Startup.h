// The reasons not to start, each with the one line that says so.
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

// Arguments, and a session that has no X11 display to offer.
std::optional<Refusal> refusalBeforeStart(int argumentCount, const char *display, const char *waylandDisplay);

// Whether the X server of that name answers. The toolkit itself would end the program with lines of its own.
bool canOpenDisplay(const std::string &display);

// Keeps a second program off the same display for as long as it lives.
class SingleInstance {
public:
    explicit SingleInstance(const std::string &display);
    // Absent when this is the only one, and where no folder can be written to, which keeps nobody from starting. A lock
    // of a program that died does not count. A second start ends with status 0; another user's file in the lock's
    // place is reported, with status 1.
    std::optional<Refusal>
    claim(const std::vector<std::filesystem::path> &folders = platform::InstanceLock::standardFolders());

private:
    std::string display;
    platform::InstanceLock lock;
};

}  // namespace korvane
