#include "Platform/Simulated/SimulatedSurroundings.h"

#include <algorithm>
#include <functional>

namespace korvane::platform::simulated {

// ---------------------------------------------------------------------------------------------------- windows

std::optional<SimulatedWindowList::Windows> SimulatedWindowList::onScreen()
{
    if (fixed)
        return *fixed;
    Windows windows;
    if (applications.isLive())
        for (const WindowPtr &window : applications.onScreen())
            windows.push_back({0, window->pid, static_cast<std::int64_t>(window->hash), window->window.title});
    return windows;
}

// ---------------------------------------------------------------------------------------------------- screens

std::optional<std::size_t> SimulatedScreens::main()
{
    if (screens.empty())
        return std::nullopt;
    return std::min(mainIndex, screens.size() - 1);
}

platform::Rect SimulatedScreens::displayBounds(std::uint32_t number)
{
    for (const platform::Screen &screen : screens)
        if (screen.number == number) {
            const platform::Rect &frame = screen.frame;
            const platform::Point corner = flipped({frame.x, frame.y + frame.height});
            return {corner.x, corner.y, frame.width, frame.height};
        }
    return {};
}

platform::Point SimulatedScreens::flipped(platform::Point point) const
{
    const double top = screens.empty() ? 0 : screens.front().frame.y + screens.front().frame.height;
    return {point.x, top - point.y};
}

void SimulatedEvents::press()
{
    loop.post([list = std::weak_ptr(presses)] {
        if (const auto living = list.lock())
            living->notify();
    });
}

void SimulatedEvents::move()
{
    loop.post([told = std::exchange(motions, std::make_shared<platform::ObserverList<>>())] { told->notify(); });
}

void SimulatedPanels::setTranslucencyAvailable(bool available)
{
    translucent = available;
    loop.post([list = std::weak_ptr(observers)] {
        if (const auto present = list.lock())
            present->notify();
    });
}

platform::Subscription SimulatedScreens::observeChanges(std::function<void()> callback)
{
    return observers->add(std::move(callback));
}

void SimulatedScreens::set(std::vector<platform::Screen> list)
{
    screens = std::move(list);
    loop.post([list = std::weak_ptr(observers)] {
        if (const auto present = list.lock())
            present->notify();
    });
}

void SimulatedPointer::warp(platform::Point display)
{
    log.add("warp", {display.x, display.y});
    place = screens.flipped(display);
}

// ---------------------------------------------------------------------------------------------------- keys

platform::Subscription SimulatedHotKeys::install(std::function<void(std::uint32_t)> handler)
{
    return handlers->add(std::move(handler));
}

platform::Subscription SimulatedHotKeys::add(const platform::HotKey &key)
{
    class Held final : public platform::SubscriptionBase {
    public:
        Held(const std::shared_ptr<std::vector<platform::HotKey>> &list, std::uint32_t number) : keys(list), id(number)
        {}
        ~Held() override
        {
            const auto list = keys.lock();
            if (!list)
                return;
            const auto own =
                std::find_if(list->begin(), list->end(), [this](const auto &each) { return each.id == id; });
            if (own != list->end())
                list->erase(own);
        }

    private:
        std::weak_ptr<std::vector<platform::HotKey>> keys;
        std::uint32_t id;
    };
    // If another program holds the key, this is still a normal subscription, but its handler is never called.
    if (taken.contains({key.keyCode, key.modifiers}))
        return std::make_unique<platform::SubscriptionBase>();
    keys->push_back(key);
    return std::make_unique<Held>(keys, key.id);
}

bool SimulatedHotKeys::holds(std::uint32_t id) const
{
    return std::any_of(keys->begin(), keys->end(), [id](const auto &key) { return key.id == id; });
}

bool SimulatedHotKeys::press(std::uint32_t id)
{
    if (!holds(id))
        return false;
    loop.post([list = std::weak_ptr(handlers), id] {
        if (const auto present = list.lock())
            present->notify(id);
    });
    return true;
}

std::optional<std::string> SimulatedLoginItem::enable()
{
    if (!error)
        present = true;
    return error;
}

// ---------------------------------------------------------------------------------------------------- launching

void SimulatedLaunching::install(std::string bundleIdentifier, std::string path)
{
    identifiers.insert_or_assign(path, bundleIdentifier);
    paths.insert_or_assign(std::move(bundleIdentifier), std::move(path));
}

void SimulatedLaunching::uninstallAll()
{
    paths.clear();
    identifiers.clear();
}

std::optional<std::string> SimulatedLaunching::applicationPath(std::string_view bundleIdentifier)
{
    const auto found = paths.find(bundleIdentifier);
    return found == paths.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string> SimulatedLaunching::bundleIdentifier(std::string_view applicationPath)
{
    const auto found = identifiers.find(applicationPath);
    return found == identifiers.end() ? std::nullopt : std::optional(found->second);
}

void SimulatedLaunching::openApplication(std::string_view applicationPath, bool activates)
{
    log.add("openApplicationAtURL", {std::string(applicationPath)});
    const auto &running = applications.running();
    const auto known = std::find_if(running.begin(), running.end(),
                                    [&](const auto &each) { return each.bundlePath == applicationPath; });
    if (known == running.end() && !identifiers.contains(applicationPath))
        return;
    ++openings[std::string(applicationPath)];
    if (!applications.isLive())
        return;
    if (known != running.end()) {
        if (activates)
            applications.bringForward(known->pid, true);
        return;
    }
    std::string_view name = applicationPath.substr(applicationPath.find_last_of('/') + 1);
    name = name.substr(0, name.find_last_of('.'));
    Process process;
    process.application.pid = nextPid++;
    process.application.active = activates;
    process.application.localizedName = std::string(name);
    process.application.bundleIdentifier = bundleIdentifier(applicationPath);
    process.application.bundlePath = std::string(applicationPath);
    Window window;
    window.hash = static_cast<std::uint64_t>(process.application.pid) * 1000;
    window.title = std::string(name);
    process.windows->push_back(window);
    process.focusedWindow = window.hash;
    process.icon = SimulatedIcons::picture(name);
    applications.put(std::move(process));
}

bool SimulatedLaunching::openUrl(std::string_view url)
{
    log.add("openURL", {std::string(url)});
    const auto colon = url.find(':');
    const bool opens = colon != std::string_view::npos && schemes.contains(url.substr(0, colon));
    openedUrls += opens;
    return opens;
}

int SimulatedLaunching::openCount(std::string_view path) const
{
    const auto found = openings.find(path);
    return found == openings.end() ? 0 : found->second;
}

// ---------------------------------------------------------------------------------------------------- pictures

SimulatedIcons::SimulatedIcons() : own(picture("korvane"))
{
    addSymbol("app");
}

platform::ImagePtr SimulatedIcons::symbol(std::string_view name)
{
    const auto found = symbols.find(name);
    return found == symbols.end() ? nullptr : found->second;
}

void SimulatedIcons::addSymbol(const std::string &name)
{
    symbols.try_emplace(name, picture(name));
}

platform::ImagePtr SimulatedIcons::picture(std::string_view text, int side)
{
    const std::size_t color = std::hash<std::string_view>{}(text);
    const auto count = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
    auto image = std::make_shared<platform::Image>();
    image->width = image->height = side;
    image->pixels.resize(count * 4);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t channel = 0; channel < 3; ++channel)
            image->pixels[i * 4 + channel] = static_cast<std::uint8_t>(color >> (8 * channel));
        image->pixels[i * 4 + 3] = 255;
    }
    return image;
}

// ---------------------------------------------------------------------------------------------------- alerts

int SimulatedDialogs::runModal(const platform::Alert &alert, double horizontalCenterFraction)
{
    log.add("alert", {alert.message, alert.informative.empty() ? ActionArgument() : ActionArgument(alert.informative),
                      alert.buttons});
    alerts.push_back({alert, horizontalCenterFraction});
    if (whileOpen)
        whileOpen(alert);
    if (queued.empty())
        return usual;
    const int response = queued.front();
    queued.pop_front();
    return response;
}

}  // namespace korvane::platform::simulated
