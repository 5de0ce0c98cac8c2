// A message bus of a test's own at an address that stays, so that it can end and come back.
#pragma once

#include "Platform/Linux/GlibPointers.h"
#include "tests/support/Process.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace korvane::platform {

class PrivateBus {
public:
    // Becomes what that variable of the environment names.
    explicit PrivateBus(const char *variable)
        : socket(::testing::TempDir() + "korvane-bus-" + std::to_string(getpid()) + "-" + variable)
    {
        setenv(variable, address().c_str(), 1);
        start();
    }
    ~PrivateBus() { stop(); }
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    std::string address() const { return "unix:path=" + socket; }
    void start()
    {
        std::filesystem::remove(socket);
        daemon = std::make_unique<testing::Process>(std::vector<std::string>{"dbus-daemon", "--session", "--nofork",
                                                                             "--nopidfile", "--print-address",
                                                                             "--address=" + address()},
                                                    testing::Process::Options{{}, true, -1});
        EXPECT_TRUE(daemon->readLine()) << "the bus did not start";
    }
    void stop()
    {
        if (daemon)
            daemon->signal(SIGKILL);
        daemon.reset();
        std::filesystem::remove(socket);
    }
    // Neither answers nor goes away.
    void suspend(bool suspended) { daemon->signal(suspended ? SIGSTOP : SIGCONT); }

    // Another program's connection.
    Gobject<GDBusConnection> connect() const
    {
        constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT
                                                                 | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        return Gobject<GDBusConnection>(
            g_dbus_connection_new_for_address_sync(address().c_str(), flags, nullptr, nullptr, nullptr));
    }

private:
    std::string socket;
    std::unique_ptr<testing::Process> daemon;
};

}  // namespace korvane::platform
