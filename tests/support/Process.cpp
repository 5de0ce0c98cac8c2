#include "tests/support/Process.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace korvane::testing {

Process::Process(const std::vector<std::string> &command, const Options &options)
{
    int toChild[2] = {-1, -1}, fromChild[2] = {-1, -1};
    if (options.pipes && (pipe2(toChild, O_CLOEXEC) != 0 || pipe2(fromChild, O_CLOEXEC) != 0))
        throw std::runtime_error("no pipe");
    std::vector<char *> arguments;
    for (const std::string &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);
    child = fork();
    if (child < 0)
        throw std::runtime_error("no process");
    if (child == 0) {
        // A test that is killed leaves nothing behind.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (const auto &[name, value] : options.environment)
            setenv(name.c_str(), value.c_str(), 1);
        if (options.pipes) {
            dup2(toChild[0], STDIN_FILENO);
            dup2(fromChild[1], STDOUT_FILENO);
        }
        const int nowhere = open("/dev/null", O_RDWR);
        if (!options.pipes) {
            dup2(nowhere, STDIN_FILENO);
            dup2(nowhere, STDOUT_FILENO);
        }
        dup2(nowhere, STDERR_FILENO);
        if (options.kept >= 0)
            fcntl(options.kept, F_SETFD, 0);
        execvp(arguments.front(), arguments.data());
        _exit(127);
    }
    if (options.pipes) {
        close(toChild[0]);
        close(fromChild[1]);
        input = toChild[1];
        output = fromChild[0];
    }
}

Process::~Process()
{
    end();
    if (input >= 0)
        close(input);
    if (output >= 0)
        close(output);
}

bool Process::running()
{
    if (child > 0 && waitpid(child, nullptr, WNOHANG) == child)
        child = -1;
    return child > 0;
}

void Process::signal(int number)
{
    if (running())
        kill(child, number);
}

void Process::end()
{
    signal(SIGTERM);
    signal(SIGCONT);
    for (int i = 0; i < 200 && running(); ++i)
        usleep(10'000);
    if (!running())
        return;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    child = -1;
}

void Process::write(const std::string &text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const auto count = ::write(input, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR)
            return;
        done += static_cast<std::size_t>(std::max<ssize_t>(0, count));
    }
}

std::optional<std::string> Process::readLine(int milliseconds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;) {
        if (const auto length = unread.find('\n'); length != std::string::npos) {
            std::string line = unread.substr(0, length);
            unread.erase(0, length + 1);
            return line;
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
        pollfd waiting{output, POLLIN, 0};
        if (left <= 0 || poll(&waiting, 1, static_cast<int>(left)) <= 0)
            return std::nullopt;
        char buffer[4096];
        const auto count = read(output, buffer, sizeof buffer);
        if (count <= 0)
            return std::nullopt;
        unread.append(buffer, static_cast<std::size_t>(count));
    }
}

}  // namespace korvane::testing
