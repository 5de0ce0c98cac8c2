// What surrounds the windows of the simulated desktop: screens, pointer, panels, keys, launching, pictures, alerts.
#pragma once

#include "Platform/Simulated/ActionLog.h"
#include "Platform/Simulated/SimulatedApplications.h"
#include "Platform/Simulated/VirtualLoop.h"
#include "Ports/Audio.h"
#include "Ports/Brightness.h"
#include "Ports/Dialogs.h"
#include "Ports/Events.h"
#include "Ports/HotKeys.h"
#include "Ports/Icons.h"
#include "Ports/Launching.h"
#include "Ports/LoginItem.h"
#include "Ports/ObserverList.h"
#include "Ports/Panels.h"
#include "Ports/Pointer.h"
#include "Ports/Screens.h"
#include "Ports/WindowList.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace korvane::platform::simulated {

class SimulatedWindowList final : public platform::WindowList {
public:
    using Windows = std::vector<platform::OnScreenWindow>;

    explicit SimulatedWindowList(const SimulatedApplications &owner) : applications(owner) {}

    std::optional<Windows> onScreen() override;
    // From now on this is the answer; absent: the server does not answer. Without this call, a live desktop lists its
    // windows and a passive one lists nothing.
    void set(std::optional<Windows> windows) { fixed = std::move(windows); }

private:
    const SimulatedApplications &applications;
    std::optional<std::optional<Windows>> fixed;
};

class SimulatedScreens final : public platform::Screens {
public:
    explicit SimulatedScreens(VirtualLoop &mainLoop) : loop(mainLoop) {}

    std::vector<platform::Screen> all() override { return screens; }
    std::optional<std::size_t> main() override;
    platform::Rect displayBounds(std::uint32_t number) override;
    [[nodiscard]] platform::Subscription observeChanges(std::function<void()> callback) override;

    // Replaces the screens. At first there is one screen of 1440 × 900. The observers are told at the next turn of the
    // loop.
    void set(std::vector<platform::Screen> list);
    void setMain(std::size_t index) { mainIndex = index; }
    // Converts the displays' top-left coordinates to the desktop's bottom-left coordinates, and back.
    platform::Point flipped(platform::Point point) const;

private:
    VirtualLoop &loop;
    std::vector<platform::Screen> screens{{1, {0, 0, 1440, 900}, 1}};
    std::size_t mainIndex = 0;
    std::shared_ptr<platform::ObserverList<>> observers = std::make_shared<platform::ObserverList<>>();
};

class SimulatedPointer final : public platform::Pointer {
public:
    SimulatedPointer(const SimulatedScreens &owner, ActionLog &actions) : screens(owner), log(actions) {}

    platform::Point location() override { return place; }
    void warp(platform::Point display) override;
    void moveTo(platform::Point desktop) { place = desktop; }

private:
    const SimulatedScreens &screens;
    ActionLog &log;
    platform::Point place;
};

// What the person does with the mouse. Observers are told at the next turn of the loop.
class SimulatedEvents final : public platform::Events {
public:
    explicit SimulatedEvents(VirtualLoop &mainLoop) : loop(mainLoop) {}

    [[nodiscard]] platform::Subscription observePresses(std::function<void()> callback) override
    {
        return presses->add(std::move(callback));
    }
    [[nodiscard]] platform::Subscription nextMotion(std::function<void()> callback) override
    {
        return tellsMotion ? motions->add(std::move(callback)) : nullptr;
    }

    void press();
    // Tells the observers who wait for a motion. Each of them is told once.
    void move();
    // Whether the system reports motions at all.
    void setTellsMotion(bool tells) { tellsMotion = tells; }
    std::size_t waitingForMotion() const { return motions->count(); }
    std::size_t watchingPresses() const { return presses->count(); }

private:
    VirtualLoop &loop;
    bool tellsMotion = true;
    std::shared_ptr<platform::ObserverList<>> presses = std::make_shared<platform::ObserverList<>>(),
                                              motions = std::make_shared<platform::ObserverList<>>();
};

class SimulatedPanels final : public platform::Panels {
public:
    explicit SimulatedPanels(VirtualLoop &mainLoop) : loop(mainLoop) {}

    void apply(platform::NativeView view, const platform::PanelTraits &traits) override { applied[view] = traits; }
    void orderFrontRegardless(platform::NativeView view) override { orderedFront.push_back(view); }
    void makeKeyAndOrderFront(platform::NativeView view) override
    {
        orderedFront.push_back(view);
        key = view;
    }
    bool translucencyAvailable() override
    {
        ++translucencyReads;
        return translucent;
    }
    [[nodiscard]] platform::Subscription observeTranslucency(std::function<void()> callback) override
    {
        return observers->add(std::move(callback));
    }

    void setShape(platform::NativeView view, const platform::PanelShape &shape) override { shapes[view] = shape; }
    void setIgnoresMouse(platform::NativeView view, bool ignores) override { ignoring[view] = ignores; }
    void reserveStrip(platform::NativeView view, const std::optional<platform::Rect> &strip) override
    {
        if (strip)
            strips[view] = *strip;
        else
            strips.erase(view);
    }

    // A compositor comes or goes; the observers are told at the next turn of the loop.
    void setTranslucencyAvailable(bool available);
    std::map<platform::NativeView, platform::PanelTraits> applied;
    std::vector<platform::NativeView> orderedFront;  // in the order of the requests
    platform::NativeView key = 0;                    // the panel that last got the keyboard
    int translucencyReads = 0;
    std::map<platform::NativeView, platform::PanelShape> shapes;
    std::map<platform::NativeView, bool> ignoring;
    std::map<platform::NativeView, platform::Rect> strips;

private:
    VirtualLoop &loop;
    bool translucent = true;
    std::shared_ptr<platform::ObserverList<>> observers = std::make_shared<platform::ObserverList<>>();
};

class SimulatedHotKeys final : public platform::HotKeys {
public:
    explicit SimulatedHotKeys(VirtualLoop &mainLoop) : loop(mainLoop) {}

    [[nodiscard]] platform::Subscription install(std::function<void(std::uint32_t id)> handler) override;
    [[nodiscard]] platform::Subscription add(const platform::HotKey &key) override;

    // The person presses the key with that id. The handler is called at the next turn. Returns false when nobody holds
    // the key.
    bool press(std::uint32_t id);
    // Another program holds the key from now on.
    void take(std::uint32_t keyCode, std::uint32_t modifiers) { taken.insert({keyCode, modifiers}); }
    bool holds(std::uint32_t id) const;

private:
    VirtualLoop &loop;
    std::set<std::pair<std::uint32_t, std::uint32_t>> taken;
    std::shared_ptr<std::vector<platform::HotKey>> keys = std::make_shared<std::vector<platform::HotKey>>();
    std::shared_ptr<platform::ObserverList<std::uint32_t>> handlers =
        std::make_shared<platform::ObserverList<std::uint32_t>>();
};

class SimulatedLoginItem final : public platform::LoginItem {
public:
    bool enabled() override { return present; }
    std::optional<std::string> enable() override;

    void setEnabled(bool enabled) { present = enabled; }
    // From now on enable() fails with this text; absent: it succeeds.
    void setError(std::optional<std::string> text) { error = std::move(text); }

private:
    bool present = false;
    std::optional<std::string> error;
};

class SimulatedLaunching final : public platform::Launching {
public:
    SimulatedLaunching(SimulatedApplications &owner, ActionLog &actions) : applications(owner), log(actions) {}

    std::optional<std::string> applicationPath(std::string_view bundleIdentifier) override;
    std::optional<std::string> bundleIdentifier(std::string_view applicationPath) override;
    // On a live desktop, a running application comes to the front, and an installed one starts with one window.
    void openApplication(std::string_view applicationPath, bool activates) override;
    bool openUrl(std::string_view url) override;

    void install(std::string bundleIdentifier, std::string path);
    void uninstallAll();
    // From now on addresses with that scheme open. At first only those of the web and of the settings do.
    void addScheme(std::string scheme) { schemes.insert(std::move(scheme)); }
    void removeAllSchemes() { schemes.clear(); }
    // How often the application at that path was opened, whether it was running or not.
    int openCount(std::string_view path) const;
    int openedUrlCount() const { return openedUrls; }

private:
    SimulatedApplications &applications;
    ActionLog &log;
    std::map<std::string, std::string, std::less<>> paths, identifiers;
    std::map<std::string, int, std::less<>> openings;
    std::set<std::string, std::less<>> schemes{"http", "https", "x-apple.systempreferences"};
    int openedUrls = 0;
    platform::Pid nextPid = 20000;
};

class SimulatedIcons final : public platform::Icons {
public:
    SimulatedIcons();

    platform::ImagePtr ownIcon() override { return own; }
    platform::ImagePtr symbol(std::string_view name) override;
    void addSymbol(const std::string &name);
    // A picture of one colour that depends on the text. Different texts rarely give the same colour.
    static platform::ImagePtr picture(std::string_view text, int side = 16);

private:
    platform::ImagePtr own;
    std::map<std::string, platform::ImagePtr, std::less<>> symbols;
};

// Audio outputs with a volume for each element; at first there are none.
class SimulatedAudio final : public platform::AudioProperties {
public:
    explicit SimulatedAudio(VirtualLoop &mainLoop) : loop(mainLoop) {}

    std::optional<std::uint32_t> defaultOutput() override { return output; }
    bool hasVolume(std::uint32_t device, std::uint32_t element) override { return volumes.contains({device, element}); }
    std::optional<float> volume(std::uint32_t device, std::uint32_t element) override
    {
        const auto found = volumes.find({device, element});
        return found == volumes.end() || unreadable.contains(element) ? std::nullopt : std::optional(found->second);
    }
    bool setVolume(std::uint32_t device, std::uint32_t element, float volume) override
    {
        const auto found = volumes.find({device, element});
        if (found == volumes.end() || fixed.contains(element))
            return false;
        found->second = volume;
        return true;
    }
    [[nodiscard]] platform::Subscription observeChanges(std::function<void()> callback) override
    {
        return observers->add(std::move(callback));
    }

    // Call this after a change from outside. The observers are told at the next turn.
    void announceChange()
    {
        loop.post([told = observers] { told->notify(); });
    }

    std::size_t observing() const { return observers->count(); }

    std::optional<std::uint32_t> output;
    std::map<std::pair<std::uint32_t, std::uint32_t>, float> volumes;  // by device and element
    std::set<std::uint32_t> unreadable, fixed;                         // elements

private:
    VirtualLoop &loop;
    std::shared_ptr<platform::ObserverList<>> observers = std::make_shared<platform::ObserverList<>>();
};

class SimulatedBrightness final : public platform::Brightness {
public:
    std::optional<float> current() override { return level; }
    bool set(float brightness) override
    {
        if (!level)
            return false;
        level = brightness;
        return true;
    }

    std::optional<float> level;  // absent: there is no level that can be set
};

class SimulatedDialogs final : public platform::Dialogs {
public:
    explicit SimulatedDialogs(ActionLog &actions) : log(actions) {}

    int runModal(const platform::Alert &alert, double horizontalCenterFraction) override;

    void openColorPanel(const std::optional<platform::Rgb> &initial,
                        std::function<void(const platform::Rgb &)> changed) override
    {
        panels.push_back({initial, std::move(changed)});
    }

    // The answer of every alert that has no queued answer. At first it is 1000, the first button.
    void setResponse(int response) { usual = response; }
    void queueResponse(int response) { queued.push_back(response); }
    // The callback runs while an alert is open. A test uses it for changes behind the alert.
    void setWhileOpen(std::function<void(const platform::Alert &)> callback) { whileOpen = std::move(callback); }

    struct Shown {
        platform::Alert alert;
        double horizontalCenterFraction;
    };
    const std::vector<Shown> &shown() const { return alerts; }
    struct ColorPanel {
        std::optional<platform::Rgb> initial;
        std::function<void(const platform::Rgb &)> changed;  // belongs to the open panel, which is the last one
    };
    // In the order of the requests.
    const std::vector<ColorPanel> &colorPanels() const { return panels; }

private:
    ActionLog &log;
    int usual = 1000;
    std::deque<int> queued;
    std::function<void(const platform::Alert &)> whileOpen;
    std::vector<Shown> alerts;
    std::vector<ColorPanel> panels;
};

}  // namespace korvane::platform::simulated
