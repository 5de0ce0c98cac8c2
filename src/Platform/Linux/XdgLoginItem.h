// Starting at login, by an entry in the user's autostart directory.
#pragma once

#include "Ports/LoginItem.h"

#include <filesystem>

namespace korvane::platform {

// korvane.desktop in the user's autostart directory; empty without a home.
std::filesystem::path autostartFile();

class XdgLoginItem final : public LoginItem {
public:
    // The entry to keep and the program it has to start.
    XdgLoginItem(std::filesystem::path entry, std::filesystem::path program);

    // Whether there is nothing to write: the entry starts this program, or the user has switched the entry off.
    bool enabled() override;
    // Writes the entry; one that is there keeps what else it holds.
    std::optional<std::string> enable() override;

private:
    std::filesystem::path file, executable;
};

}  // namespace korvane::platform
