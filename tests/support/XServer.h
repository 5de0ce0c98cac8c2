// An X server of a test's own, without a screen to look at, and what runs on it. All of it ends with the object.
#pragma once

#include "tests/support/Process.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace korvane::testing {

class XServer {
public:
    explicit XServer(const std::string &size = "1280x1024", const std::vector<std::string> &options = {});
    ~XServer();
    XServer(const XServer &) = delete;
    XServer &operator=(const XServer &) = delete;

    // ":40"; empty when the server did not start.
    const std::string &display() const { return name; }
    // Of programs on this server: the display and a home of their own.
    std::map<std::string, std::string> environment() const;

    // Ends the one that runs. The new one is ready once it says so on the root window, which the caller waits for.
    void startManager(const std::vector<std::string> &command);
    // Returns once it has ended.
    void stopManager(int signal);
    // Returns at once.
    void signalManager(int signal);
    bool hasManager() const { return manager != nullptr; }

    std::unique_ptr<Process> start(const std::vector<std::string> &command, bool pipes = false) const;
    // Runs a program to its end.
    void run(const std::vector<std::string> &command) const;
    // Stops it answering, and lets it go on.
    void suspend(bool suspended);
    // As if its machine were switched off.
    void kill();

private:
    std::filesystem::path home;
    std::string name;
    std::unique_ptr<Process> server, manager;
};

}  // namespace korvane::testing
