// The process behind a window: the server's answer, otherwise the window's own claim, otherwise a made-up number.
#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/WindowRecord.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace korvane::platform::x11 {

class ClientPids {
public:
    explicit ClientPids(Connection &connection);

    // Gets the server's answer for these windows; each of them must be held. Asks once for each client, and for all
    // clients together.
    void prepare(const std::vector<WindowId> &windows);
    // Positive for a process on this machine, otherwise negative. All windows of one client have the same number.
    Pid of(const WindowRecord &window) const;
    // When a client ends, its number is given to another client. So the answer is kept only while a window is held.
    void hold(WindowId window) { ++clients[client(window)].windows; }
    void release(WindowId window);

private:
    std::uint32_t client(WindowId window) const { return window & ~mask; }

    Connection &connection;
    std::uint32_t mask;
    std::string machine;
    struct Client {
        int windows = 0;
        bool asked = false;
        Pid pid = 0;  // 0 when the server does not know it
    };
    std::unordered_map<std::uint32_t, Client> clients;
};

}  // namespace korvane::platform::x11
