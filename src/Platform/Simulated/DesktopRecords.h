// What the simulated desktop consists of, in the form that a test writes.
#pragma once

#include "Ports/Accessibility.h"
#include "Ports/Applications.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace korvane::platform::simulated {

enum class Behaviour {
    passive,  // actions are recorded but change nothing
    live,     // actions take effect as on a desktop, and the applications announce it at the next turn of the loop
};

enum class CloseButton { works, fails, none };

struct Window {
    std::uint64_t hash = 0;  // within one application, equal hashes mean the same window
    std::optional<std::string> title;
    std::optional<platform::Value> identifier;  // text or a value of another type; absent: no attribute
    std::optional<bool> minimized = false;      // absent: can't be read
    CloseButton closeButton = CloseButton::works;
    platform::AxStatus readStatus = platform::AxStatus::success;  // every read returns it if it is anything else
};

struct Process {
    platform::Application application;
    std::optional<std::vector<Window>> windows = std::vector<Window>{};  // absent: can't be read
    std::optional<std::uint64_t> focusedWindow;                          // its hash
    platform::ImagePtr icon;
};

// An element of the dock's tree. An absent value can't be read; a value that can be read need not be text.
struct DockItem {
    std::optional<platform::Value> title, subrole, statusLabel;
    std::optional<std::vector<DockItem>> children;
};

}  // namespace korvane::platform::simulated
