// A copy of the properties of every window on the desktop. The server's events keep it current, so that readers need
// not ask the server. All changes since the loop last waited cost one round trip together.
#pragma once

#include "Platform/X11/ClientPids.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/PropertyReader.h"
#include "Platform/X11/WindowRecord.h"

#include <functional>
#include <unordered_map>
#include <vector>

namespace korvane::platform::x11 {

// What has changed in one round of reading.
struct MirrorChanges {
    bool structure = false;  // which windows there are, or what they are
    bool active = false;
    bool manager = false;           // a window manager came or went
    std::vector<WindowId> content;  // windows with another title, role or state
    std::vector<WindowId> icons;
};

class PropertyMirror final : public EventListener {
public:
    PropertyMirror(Connection &connection, MainLoop &loop);
    ~PropertyMirror() override;

    // `observer` is called after each round that changed anything. It must be set before the first change is reported.
    void observe(std::function<void(const MirrorChanges &)> observer) { changed = std::move(observer); }
    // Reads everything without calling the observer.
    void fill();

    // Whether a window manager is running that keeps the lists below.
    bool managed() const { return manager != XCB_NONE; }
    // The managed windows in the order in which they appeared. The order stays when the window manager ends. Without a
    // window manager, the windows that look like windows of applications.
    const std::vector<WindowId> &order() const { return listed; }
    // The same windows from bottom to top, if the window manager reports that order.
    const std::vector<WindowId> &stacking() const { return stackMissing ? listed : stacked; }
    // Null for a window that is not listed. A destroyed window is not listed.
    const WindowRecord *find(WindowId window) const;
    // 0 when there is none.
    WindowId active() const { return activeWindow; }
    std::uint32_t currentDesktop() const { return desktop; }

    void handle(const xcb_generic_event_t &event) override;
    void settle() override;

private:
    struct Entry {
        WindowRecord record;
        PropertySet dirty;
        bool attributes = true;  // they must be requested
        bool listed = false;
        Seconds keptUntil{0};  // stays listed until then, even without another reason
    };
    struct RootDirty {
        bool manager = true, list = true, stacking = true, active = true, desktop = true, tree = true;
    };

    void handleProperty(const xcb_property_notify_event_t &event);
    void handleRootProperty(xcb_atom_t property);
    void handleTree(const xcb_generic_event_t &event);
    void readManager();
    void readRoot();
    void readTree();
    void readWindows();
    void applyList(std::optional<std::vector<WindowId>> list);
    void relist();
    bool keeps(Entry &entry);
    void keep(Entry &entry, Seconds time);
    void endKeeping();
    void listViewable();
    void endAdoption();
    void setListed(std::vector<WindowId> windows);
    bool dirtyRoot() const;
    Entry *entry(WindowId window);
    Entry &track(WindowId window);
    void drop(WindowId window);
    void markAllDirty();
    void takeActive(WindowId window);
    void endFocusLoss();
    void setActive(WindowId window);
    void mark(WindowId window, Entry &entry, PropertySet properties);
    void take(WindowId window, Property property, const PropertyValue &value);
    void report();

    Connection &connection;
    MainLoop &loop;
    PropertyReader reader;
    ClientPids pids;
    std::function<void(const MirrorChanges &)> changed;
    MirrorChanges found;

    std::unordered_map<WindowId, Entry> entries;
    std::vector<WindowId> listed, stacked, tree, dirtyWindows;
    RootDirty rootDirty;
    WindowId manager = XCB_NONE;
    xcb_atom_t managerSelection = XCB_ATOM_NONE;
    bool watchesTree = false;
    bool stackMissing = false;
    bool listMissing = false;  // some managers delete the list when it is empty, and all delete it when they end
    WindowId activeWindow = XCB_NONE;
    std::uint32_t desktop = 0;
    std::uint64_t activations = 0;
    std::optional<std::vector<WindowId>> announced;  // what the manager lists
    Subscription adoption;                           // a new manager is still listing the windows
    Seconds adoptionEnd{0};
    Subscription keeping;
    Subscription focusLoss;  // pending since no window has the focus
};

}  // namespace korvane::platform::x11
