#include "tests/Platform/X11/X11Test.h"

#include <sstream>

namespace korvane::platform {

std::vector<std::string> words(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> list;
    for (std::string word; stream >> word;)
        list.push_back(word);
    return list;
}

X11Test::X11Test(const std::string &size, const std::vector<std::string> &options) : server(size, options)
{
    EXPECT_FALSE(server.display().empty()) << "the X server did not start";
}

void X11Test::openPlatform()
{
    platform = X11Platform::open({server.display(), 1, nullptr}, loop, catalogue,
                                 [this](std::string_view name) { return iconFiles[std::string(name)]; });
    ASSERT_TRUE(platform);
}

void X11Test::openDesktop(const std::string &managerCommand)
{
    openPlatform();
    if (!managerCommand.empty())
        startManager(managerCommand);
}

void X11Test::startManager(const std::string &command)
{
    server.startManager(words(command));
    ASSERT_TRUE(waitFor([&] { return accessibility().trusted(); })) << command << " did not start";
    // A manager announces itself before it looks after windows; those shown in between it may overlook.
    testing::SampleClient probe(server, "Probe");
    int window = 0;
    ASSERT_TRUE(loop.turnUntil([&] {
        const auto id = probe.open(++window, "probe");
        return loop.turnUntil([&] { return elementOf(probe.pid(), id) != nullptr; }, Seconds(0.1));
    })) << command
        << " does not manage windows";
    const Pid pid = probe.pid();
    probe.end();
    ASSERT_TRUE(waitFor([&] { return !applications().find(pid); }));
}

std::vector<Element> X11Test::windowElements(Pid pid)
{
    Value value;
    if (accessibility().copy(accessibility().application(pid), "AXWindows", value) != AxStatus::success)
        return {};
    return std::get<std::vector<Element>>(value);
}

Element X11Test::elementOf(Pid pid, std::uint32_t window)
{
    for (const Element &element : windowElements(pid))
        if (accessibility().hash(element) == window)
            return element;
    return nullptr;
}

std::vector<std::string> X11Test::titles(Pid pid)
{
    std::vector<std::string> list;
    for (const Element &element : windowElements(pid)) {
        Value value;
        if (accessibility().copy(element, "AXTitle", value) == AxStatus::success)
            list.push_back(std::get<std::string>(value));
    }
    return list;
}

bool X11Test::minimized(Pid pid, std::uint32_t window)
{
    const Element element = elementOf(pid, window);
    Value value;
    return element && accessibility().copy(element, "AXMinimized", value) == AxStatus::success && std::get<bool>(value);
}

bool X11Test::isActive(Pid pid)
{
    const auto application = applications().find(pid);
    return application && application->active;
}

std::uint64_t X11Test::focused(Pid pid)
{
    Value value;
    if (accessibility().copy(accessibility().application(pid), "AXFocusedWindow", value) != AxStatus::success)
        return 0;
    return accessibility().hash(std::get<Element>(value));
}

bool X11Test::appears(Pid pid, std::uint32_t window)
{
    return waitFor([&] { return elementOf(pid, window) != nullptr; });
}

}  // namespace korvane::platform
