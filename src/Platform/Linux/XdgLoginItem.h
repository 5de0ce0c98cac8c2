// Starts the program at login, with an entry in the user's autostart directory.
#pragma once

#include "Ports/LoginItem.h"

#include <filesystem>

namespace korvane::platform {

// The file korvane.desktop in the user's autostart directory. Empty when the user has no home.
std::filesystem::path autostartFile();

class XdgLoginItem final : public LoginItem {
public:
    // The entry's file and the program that it must start.
    XdgLoginItem(std::filesystem::path entry, std::filesystem::path program);

    // True when nothing has to be written: the entry starts this program, or the user has disabled the entry.
    bool enabled() override;
    // Writes the entry. An existing entry keeps its other contents.
    std::optional<std::string> enable() override;

private:
    std::filesystem::path file, executable;
};

}  // namespace korvane::platform
