// This program's entry in the list of programs that start with the session.
#pragma once

#include <optional>
#include <string>

namespace korvane::platform {

class LoginItem {
public:
    virtual ~LoginItem() = default;
    virtual bool enabled() = 0;
    // Absent on success, else the error's text.
    virtual std::optional<std::string> enable() = 0;
};

}  // namespace korvane::platform
