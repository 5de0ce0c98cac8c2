// A program with windows that does what a test tells it, as a process of its own.
#pragma once

#include "tests/support/XServer.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::testing {

class SampleClient {
public:
    // The name is the window class of its windows.
    SampleClient(const XServer &server, const std::string &name);

    int pid() const { return process->pid(); }
    bool running() { return process->running(); }
    void signal(int number) { process->signal(number); }
    void end() { process->end(); }

    // Windows have numbers of the test's choosing; the identifier is the server's. Each call returns when the server
    // has done it.
    std::uint32_t open(int window, const std::string &title);
    // Not shown yet.
    std::uint32_t create(int window, const std::string &title);
    std::uint32_t identifier(int window);
    void show(int window) { tell("map " + std::to_string(window)); }
    void withdraw(int window) { tell("unmap " + std::to_string(window)); }
    void destroy(int window) { tell("destroy " + std::to_string(window)); }
    void retitle(int window, const std::string &title) { tell("title " + std::to_string(window) + " " + title); }
    // A window that is asked to close goes away; from now on this one stays, or first opens the window "Save changes?".
    void refuseToClose(int window) { tell("refuse " + std::to_string(window)); }
    void askBeforeClosing(int window) { tell("ask " + std::to_string(window)); }
    void remove(int window, const std::string &property);
    void setAtoms(int window, const std::string &property, const std::vector<std::string> &names);
    void setBytes(int window, const std::string &property, const std::string &type, std::string_view bytes);
    void setNumbers(int window, const std::string &property, const std::string &type,
                    const std::vector<std::uint32_t> &numbers);
    void setTransient(int window, std::uint32_t owner, bool modal);
    // Shows so many windows, numbered from that one.
    void openMany(int first, int count);

private:
    std::string tell(const std::string &command);
    void setRaw(int window, const std::string &property, const std::string &type, int format, std::string_view bytes);

    std::unique_ptr<Process> process;
};

}  // namespace korvane::testing
