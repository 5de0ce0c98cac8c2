#include "tests/support/XServer.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <unistd.h>

namespace korvane::testing {
namespace {

// The server writes the number of the display that it has found free.
std::string displayFrom(int descriptor)
{
    std::string text;
    pollfd waiting{descriptor, POLLIN, 0};
    char byte = 0;
    while (poll(&waiting, 1, 10'000) > 0 && read(descriptor, &byte, 1) == 1 && byte != '\n')
        text += byte;
    return text.empty() ? "" : ":" + text;
}

}  // namespace

XServer::XServer(const std::string &size, const std::vector<std::string> &options)
{
    std::string pattern = (std::filesystem::temp_directory_path() / "korvane-x-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no directory");
    home = pattern;
    int number[2];
    if (pipe2(number, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    std::vector<std::string> command{
        "Xvfb", "-displayfd", std::to_string(number[1]), "-screen", "0", size + "x24", "-nolisten", "tcp", "-noreset"};
    command.insert(command.end(), options.begin(), options.end());
    server = std::make_unique<Process>(command, Process::Options{{}, false, number[1]});
    close(number[1]);
    name = displayFrom(number[0]);
    close(number[0]);
}

XServer::~XServer()
{
    manager.reset();
    server.reset();
    std::error_code error;
    std::filesystem::remove_all(home, error);
}

std::map<std::string, std::string> XServer::environment() const
{
    const std::string path = home.string();
    return {{"DISPLAY", name},
            {"HOME", path},
            {"XDG_CONFIG_HOME", path + "/config"},
            {"XDG_CACHE_HOME", path + "/cache"},
            {"XDG_DATA_HOME", path + "/data"},
            {"XDG_RUNTIME_DIR", path}};
}

void XServer::startManager(const std::vector<std::string> &command)
{
    manager.reset();
    manager = start(command);
}

void XServer::stopManager(int signal)
{
    if (manager)
        manager->signal(signal);
    manager.reset();
}

void XServer::signalManager(int signal)
{
    if (manager)
        manager->signal(signal);
}

std::unique_ptr<Process> XServer::start(const std::vector<std::string> &command, bool pipes) const
{
    return std::make_unique<Process>(command, Process::Options{environment(), pipes, -1});
}

void XServer::run(const std::vector<std::string> &command) const
{
    const auto process = start(command);
    for (int i = 0; i < 1000 && process->running(); ++i)
        usleep(5'000);
}

void XServer::suspend(bool suspended)
{
    server->signal(suspended ? SIGSTOP : SIGCONT);
}

void XServer::kill()
{
    server->signal(SIGKILL);
    server->end();
}

}  // namespace korvane::testing
