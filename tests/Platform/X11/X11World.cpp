#include "tests/Platform/X11/X11World.h"

#include "tests/Platform/X11/X11Test.h"

#include <cmath>

namespace korvane::platform {
namespace {

using testing::SampleClient;

std::string keyName(const HotKey &key)
{
    return std::string(key.modifiers & 4096 ? "ctrl+" : "") + (key.modifiers & 512 ? "shift+" : "") + "Escape";
}

// Borrows the tools of the backend's own tests.
class X11World final : public DesktopWorld, private X11Test {
public:
    X11World() : X11Test("3000x2000")
    {
        // The first screen lies in the middle of the server's space, so that others fit beside it.
        server.run({"xrandr", "--setmonitor", "*FIRST", "1280/338x1024/270+1000+900", "screen"});
        openDesktop();
    }

    Applications &applications() override { return platform->applications(); }
    Accessibility &accessibility() override { return platform->accessibility(); }
    WindowList &windowList() override { return platform->windowList(); }
    Screens &screens() override { return platform->screens(); }
    Pointer &pointer() override { return platform->pointer(); }
    Panels &panels() override { return platform->panels(); }
    HotKeys &hotKeys() override { return platform->hotKeys(); }

    bool waitFor(const std::function<bool()> &condition) override { return loop.turnUntil(condition); }
    void settle() override { loop.turnFor(Seconds(0.15)); }

    Pid start(const std::string &name, const std::string &title) override
    {
        auto client = std::make_unique<SampleClient>(server, name);
        const Pid pid = client->pid();
        clients[pid].program = std::move(client);
        clients[pid].name = name;
        open(pid, title);
        return pid;
    }
    void quit(Pid pid) override { clients.erase(pid); }
    Window open(Pid pid, const std::string &title) override
    {
        Client &client = clients.at(pid);
        const int number = ++client.last;
        const Window window = client.program->open(number, title);
        client.numbers[window] = number;
        EXPECT_TRUE(waitFor([&] { return focused(pid) == window; })) << title << " did not appear";
        return window;
    }
    void close(Pid pid, Window window) override { clients.at(pid).program->destroy(numberOf(pid, window)); }
    void retitle(Pid pid, Window window, const std::string &title) override
    {
        clients.at(pid).program->retitle(numberOf(pid, window), title);
    }
    void click(Pid, Window window) override { server.run({"xdotool", "windowactivate", std::to_string(window)}); }
    void minimize(Pid, Window window) override { server.run({"xdotool", "windowminimize", std::to_string(window)}); }
    void setCloseButton(Pid pid, Window window, bool present) override
    {
        auto &program = *clients.at(pid).program;
        program.setAtoms(numberOf(pid, window), "WM_PROTOCOLS",
                         present ? std::vector<std::string>{"WM_DELETE_WINDOW"} : std::vector<std::string>());
    }
    void setIdentifier(Pid pid, Window window, const std::string &identifier) override
    {
        clients.at(pid).program->setBytes(numberOf(pid, window), "WM_WINDOW_ROLE", "STRING", identifier);
    }

    void setBadge(Pid pid, const std::string &label) override
    {
        BadgedPrograms programs;
        if (!label.empty())
            programs.labels[clients.at(pid).entry()] = label;
        platform->setBadgedPrograms(std::move(programs));
    }
    void setAttention(Pid pid, Window window, bool wanted) override
    {
        constexpr std::uint32_t urgency = 1 << 8;
        clients.at(pid).program->setNumbers(numberOf(pid, window), "WM_HINTS", "WM_HINTS",
                                            {wanted ? urgency : 0, 0, 0, 0, 0, 0, 0, 0, 0});
    }
    void setIcon(Pid pid, Window window) override
    {
        clients.at(pid).program->setNumbers(numberOf(pid, window), "_NET_WM_ICON", "CARDINAL", {1, 1, 0xff204060});
    }
    void rename(Pid pid, Window window, const std::string &name) override
    {
        std::string both = "instance";
        both += '\0';
        both += name;
        both += '\0';
        clients.at(pid).program->setBytes(numberOf(pid, window), "WM_CLASS", "STRING", both);
    }
    void install(Pid pid, const std::string &name) override
    {
        const Client &client = clients.at(pid);
        catalogue.byClass[client.name] = {name, "org.example." + client.name, "/applications/" + client.entry(), ""};
        catalogue.change();
    }

    void setFurtherScreens(const std::vector<Rect> &frames) override
    {
        for (int i = 0; i < further; ++i)
            server.run({"xrandr", "--delmonitor", "FURTHER" + std::to_string(i)});
        further = 0;
        const auto text = [](double number) { return std::to_string(std::lround(number)); };
        for (const Rect &frame : frames) {
            const double x = 1000 + frame.x, y = 900 + 1024 - (frame.y + frame.height);
            server.run({"xrandr", "--setmonitor", "FURTHER" + std::to_string(further++),
                        text(frame.width) + "/200x" + text(frame.height) + "/200+" + text(x) + "+" + text(y), "none"});
        }
    }
    void press(const HotKey &key) override
    {
        // As fast as fingers are, no faster: the key has been up for a moment.
        loop.turnFor(Seconds(0.08));
        server.run({"xdotool", "key", keyName(key)});
    }
    void takeKey(const HotKey &key) override
    {
        other = X11Platform::open({server.display(), 1, nullptr}, loop, catalogue, {});
        taken = other->hotKeys().add(key);
        // The server has served it once it has answered a later question on that connection.
        other->pointer().location();
    }

private:
    struct Client {
        std::string entry() const { return name + ".desktop"; }

        std::string name;  // the class of its windows
        std::unique_ptr<SampleClient> program;
        std::map<Window, int> numbers;
        int last = 0;
    };

    void TestBody() override {}
    int numberOf(Pid pid, Window window) { return clients.at(pid).numbers.at(window); }

    std::map<Pid, Client> clients;
    int further = 0;
    std::unique_ptr<X11Platform> other;
    Subscription taken;
};

}  // namespace

std::unique_ptr<DesktopWorld> makeX11World()
{
    return std::make_unique<X11World>();
}

}  // namespace korvane::platform
