// The lists on the root window: which windows exist, in which order, and which window manager keeps the lists.
#include "Platform/X11/PropertyMirror.h"

#include "Platform/X11/Reply.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace korvane::platform::x11 {
namespace {

constexpr std::uint32_t longestList = 1 << 16;
// A new window manager may need this time to list the windows that existed before it. The time starts again with each
// window that it adds, but it ends after the second value.
constexpr Seconds adoptionTime{0.3}, longestAdoption{10};
// When a manager ends, a window may be off the screen (first value) or off the list (second value) for this time.
constexpr Seconds lossTime{2}, leavingTime{1};
constexpr std::uint32_t managerEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
constexpr Seconds focusTime{0.016};
constexpr PropertySet managerStateOnly(1ULL << static_cast<unsigned>(Property::managerState));

}  // namespace

bool PropertyMirror::dirtyRoot() const
{
    if (rootDirty.manager)
        return true;
    if (!managed())
        return rootDirty.tree;
    return rootDirty.list || rootDirty.stacking || rootDirty.active || rootDirty.desktop;
}

// The name of a dead window manager may stay on the root window, so the window that it names is checked too.
void PropertyMirror::readManager()
{
    WindowId now = XCB_NONE;
    const auto named = reader.numbers(connection.root(), Atom::netSupportingWmCheck, 1);
    if (named && !named->empty() && named->front() != XCB_NONE && !connection.isOurs(named->front())) {
        const WindowId window = named->front();
        xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &managerEvents);
        const auto itself = reader.numbers(window, Atom::netSupportingWmCheck, 1);
        if (itself && !itself->empty() && itself->front() == window)
            now = window;
    }
    const bool first = manager == XCB_NONE && !watchesTree;
    if (now == manager && !first)
        return;
    manager = now;
    found.manager = true;
    rootDirty = {false, true, true, true, true, true};
    markAllDirty();
    adoption.reset();
    announced.reset();
    if (!managed()) {
        for (const WindowId window : listed)
            keep(entries.at(window), lossTime);
        watchesTree = true;
        connection.watchRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
        focusLoss.reset();
        setActive(XCB_NONE);
        return;
    }
    if (std::exchange(watchesTree, false))
        connection.unwatchRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    if (listed.empty())
        return;
    adoptionEnd = loop.monotonicNow() + longestAdoption;
    adoption = loop.after(adoptionTime, [this] { endAdoption(); });
}

void PropertyMirror::readRoot()
{
    const auto dirty = std::exchange(rootDirty, {false, false, false, false, false, false});
    const auto ask = [this](bool wanted, Atom property, std::uint32_t longest) {
        return wanted ? std::optional(reader.ask(connection.root(), property, longest)) : std::nullopt;
    };
    const auto listCookie = ask(dirty.list, Atom::netClientList, longestList);
    const auto stackCookie = ask(dirty.stacking, Atom::netClientListStacking, longestList);
    const auto activeCookie = ask(dirty.active, Atom::netActiveWindow, 1);
    const auto desktopCookie = ask(dirty.desktop, Atom::netCurrentDesktop, 1);
    if (listCookie) {
        auto list = reader.answer(*listCookie);
        if (!list)
            for (const WindowId window : listed)
                mark(window, entries.at(window), managerStateOnly);
        listMissing = !list;
        if (list || listed.empty())
            applyList(std::move(list));
    }
    if (stackCookie) {
        auto stack = reader.answer(*stackCookie);
        stackMissing = !stack;
        stacked = std::move(stack).value_or(std::vector<WindowId>());
    }
    if (activeCookie) {
        const auto active = reader.answer(*activeCookie);
        takeActive(active && !active->empty() ? active->front() : XCB_NONE);
    }
    if (desktopCookie) {
        const auto current = reader.answer(*desktopCookie);
        desktop = current && !current->empty() ? current->front() : 0;
    }
}

void PropertyMirror::applyList(std::optional<std::vector<WindowId>> list)
{
    const std::size_t before = announced ? announced->size() : 0;
    announced = std::move(list);
    if (announced)
        std::erase_if(*announced, [this](WindowId window) { return window == XCB_NONE || connection.isOurs(window); });
    // The manager is still listing the windows that it found.
    if (adoption && announced && announced->size() > before && loop.monotonicNow() < adoptionEnd)
        adoption = loop.after(adoptionTime, [this] { endAdoption(); });
    relist();
}

// Known windows keep their order, because a new manager lists them in its own order.
void PropertyMirror::relist()
{
    std::unordered_set<WindowId> wanted;
    if (announced)
        wanted.insert(announced->begin(), announced->end());
    std::vector<WindowId> windows;
    for (const WindowId window : listed) {
        Entry &one = entries.at(window);
        const bool named = wanted.contains(window);
        if (named)
            one.keptUntil = Seconds(0);
        if (named || keeps(one))
            windows.push_back(window);
    }
    std::unordered_set<WindowId> seen(windows.begin(), windows.end());
    if (announced)
        for (const WindowId window : *announced)
            if (seen.insert(window).second)
                windows.push_back(window);
    setListed(std::move(windows));
}

// Decides about a window that has left the list, or that the present manager never listed. A withdrawn window loses its
// state. A manager that ends removes one window after the other from the list, but their states remain. These windows
// stay until it is clear whether the manager ends.
bool PropertyMirror::keeps(Entry &one)
{
    if (adoption)
        return true;
    if (one.record.managerState == 0)
        return false;
    if (!announced)
        return true;
    const auto now = loop.monotonicNow();
    if (one.keptUntil == Seconds(0))
        keep(one, leavingTime);
    return now < one.keptUntil;
}

void PropertyMirror::keep(Entry &one, Seconds time)
{
    one.keptUntil = loop.monotonicNow() + time;
    if (!keeping)
        keeping = loop.after(time, [this] { endKeeping(); });
}

void PropertyMirror::endKeeping()
{
    keeping.reset();
    const auto now = loop.monotonicNow();
    for (const WindowId window : listed)
        if (const auto until = entries.at(window).keptUntil; until > now) {
            keeping = loop.after(until - now, [this] { endKeeping(); });
            break;
        }
    (managed() ? rootDirty.list : rootDirty.tree) = true;
    settle();
}

void PropertyMirror::setListed(std::vector<WindowId> windows)
{
    if (windows == listed)
        return;
    found.structure = true;
    const std::unordered_set<WindowId> wanted(windows.begin(), windows.end());
    if (managed()) {
        std::vector<WindowId> dropped;
        for (const auto &[window, one] : entries)
            if (!wanted.contains(window))
                dropped.push_back(window);
        for (const WindowId window : dropped) {
            // While there was no manager, its own window was treated like the others.
            const std::uint32_t mask = window == manager ? managerEvents : 0;
            xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &mask);
            drop(window);
        }
    } else {
        for (auto &[window, one] : entries)
            one.listed = wanted.contains(window);
    }
    for (const WindowId window : windows)
        (entry(window) ? *entry(window) : track(window)).listed = true;
    listed = std::move(windows);
}

void PropertyMirror::endAdoption()
{
    adoption.reset();
    rootDirty.list = true;
    settle();
}

// When the focus moves between windows, often no window has it for a moment. Nobody should see this.
void PropertyMirror::takeActive(WindowId window)
{
    if (window != XCB_NONE || activeWindow == XCB_NONE) {
        focusLoss.reset();
        setActive(window);
    } else if (!focusLoss) {
        focusLoss = loop.after(focusTime, [this] { endFocusLoss(); });
    }
}

void PropertyMirror::endFocusLoss()
{
    focusLoss.reset();
    setActive(XCB_NONE);
    report();
}

void PropertyMirror::setActive(WindowId window)
{
    if (window == activeWindow)
        return;
    activeWindow = window;
    found.active = true;
    if (Entry *one = entry(window))
        one->record.lastActive = ++activations;
}

void PropertyMirror::readTree()
{
    if (!std::exchange(rootDirty.tree, false))
        return;
    const Reply<xcb_query_tree_reply_t> reply{
        xcb_query_tree_reply(connection, xcb_query_tree(connection, connection.root()), nullptr)};
    if (!reply)
        return;
    const auto *children = xcb_query_tree_children(reply.get());
    tree.assign(children, children + xcb_query_tree_children_length(reply.get()));
    for (const WindowId window : tree)
        if (!connection.isOurs(window) && !entry(window))
            track(window);
    listViewable();
}

void PropertyMirror::listViewable()
{
    const auto now = loop.monotonicNow();
    const auto looksManaged = [this, now](WindowId window) {
        const Entry *one = entry(window);
        if (!one)
            return false;
        // While it moves from the manager's frame to the root window, it is not on the screen for a moment.
        return now < one->keptUntil
               || (one->record.pid != 0 && one->record.viewable && !one->record.overrideRedirect
                   && (one->record.hasManagerState || one->record.hasClass));
    };
    std::vector<WindowId> windows;
    std::unordered_set<WindowId> seen;
    for (const auto *source : {&listed, &tree})
        for (const WindowId window : *source)
            if (looksManaged(window) && seen.insert(window).second)
                windows.push_back(window);
    // A window that moves between two parents, for example when a manager ends, is missing in the tree for a moment.
    std::vector<WindowId> stack;
    const std::unordered_set<WindowId> inTree(tree.begin(), tree.end());
    for (const WindowId window : windows)
        if (!inTree.contains(window))
            stack.push_back(window);
    for (const WindowId window : tree)
        if (seen.contains(window))
            stack.push_back(window);
    setListed(std::move(windows));
    stacked = std::move(stack);
    stackMissing = false;
}

}  // namespace korvane::platform::x11
