// The windows on the screen as the window server lists them. This is the only list when single windows may not be read.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace korvane::platform {

struct OnScreenWindow {
    std::optional<std::int64_t> layer;  // 0 is the layer of ordinary windows
    std::optional<std::int64_t> ownerPid, number;
    std::optional<std::string> name;
};

class WindowList {
public:
    virtual ~WindowList() = default;
    // Front to back, without desktop elements. Absent when the server does not answer.
    virtual std::optional<std::vector<OnScreenWindow>> onScreen() = 0;
};

}  // namespace korvane::platform
