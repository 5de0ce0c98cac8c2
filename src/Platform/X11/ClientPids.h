// The process behind a window: as the server knows it, else as the window tells, else a number made up for the client.
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

    // Has the server's answer ready for these windows, which are held; asks once per client, and for all of them
    // together.
    void prepare(const std::vector<WindowId> &windows);
    // Positive for a process on this machine, else negative and the same for all windows of that client.
    Pid of(const WindowRecord &window) const;
    // A client's number goes to another client once it has ended, so the answer is kept as long as a window is held.
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
        Pid pid = 0;  // 0 where the server does not know
    };
    std::unordered_map<std::uint32_t, Client> clients;
};

}  // namespace korvane::platform::x11
