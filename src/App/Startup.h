// The reasons not to start, each with the one line that says so.
#pragma once

#include <QLockFile>
#include <memory>
#include <optional>
#include <string>

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
    // Names the display in the user's runtime directory.
    explicit SingleInstance(const std::string &display);
    // Absent when this is the only one. A lock left behind by a program that died does not count.
    std::optional<Refusal> claim();

private:
    std::string display;
    std::unique_ptr<QLockFile> lock;
};

}  // namespace korvane
