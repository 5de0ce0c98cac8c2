// A program that a test has started, and ends.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace korvane::testing {

class Process {
public:
    struct Options {
        std::map<std::string, std::string> environment;  // beside this program's own
        bool pipes = false;                              // to its standard input and from its output
        int kept = -1;                                   // a descriptor that it inherits under its number
    };

    Process(const std::vector<std::string> &command, const Options &options);
    // Asks it to end, and makes it after two seconds.
    ~Process();
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    pid_t pid() const { return child; }
    bool running();
    void signal(int number);
    // Asks it to end and waits until it has.
    void end();

    void write(const std::string &text);
    // A line of its output without the line's end; absent when none comes in good time.
    std::optional<std::string> readLine(int milliseconds = 5000);

private:
    pid_t child = -1;
    int input = -1, output = -1;
    std::string unread;
};

}  // namespace korvane::testing
