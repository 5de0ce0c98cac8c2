#include "Platform/X11/PropertyMirror.h"

#include <algorithm>
#include <utility>
#include <xcb/xfixes.h>

namespace korvane::platform::x11 {
namespace {

const PropertySet every = PropertySet().set();
constexpr std::uint32_t windowEvents = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;

std::optional<Property> propertyOf(std::optional<Atom> atom)
{
    for (std::size_t i = 0; atom && i < propertyCount; ++i)
        if (atomOf(static_cast<Property>(i)) == *atom)
            return static_cast<Property>(i);
    return std::nullopt;
}

PropertySet only(Property property)
{
    return {1ULL << static_cast<unsigned>(property)};
}

}  // namespace

PropertyMirror::PropertyMirror(Connection &server, MainLoop &mainLoop)
    : connection(server), loop(mainLoop), reader(server), pids(server)
{
    connection.join(*this);
    connection.watchRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
    if (connection.extensions().selectionEvent) {
        managerSelection = connection.intern("WM_S" + std::to_string(connection.screenNumber()));
        xcb_xfixes_select_selection_input(connection, connection.ownWindow(), managerSelection,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                                              | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                                              | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
}

PropertyMirror::~PropertyMirror()
{
    connection.leave(*this);
}

void PropertyMirror::fill()
{
    settle();
    found = {};
}

const WindowRecord *PropertyMirror::find(WindowId window) const
{
    const auto known = entries.find(window);
    return known != entries.end() && known->second.listed ? &known->second.record : nullptr;
}

PropertyMirror::Entry *PropertyMirror::entry(WindowId window)
{
    const auto known = entries.find(window);
    return known == entries.end() ? nullptr : &known->second;
}

// Events are selected before the properties are read, so that no change is missed in between.
PropertyMirror::Entry &PropertyMirror::track(WindowId window)
{
    Entry &one = entries[window];
    one.record.id = window;
    pids.hold(window);
    if (window == activeWindow)
        one.record.lastActive = ++activations;
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &windowEvents);
    mark(window, one, every);
    return one;
}

void PropertyMirror::drop(WindowId window)
{
    const auto known = entries.find(window);
    if (known == entries.end())
        return;
    if (known->second.listed)
        found.structure = true;
    entries.erase(known);
    pids.release(window);
    std::erase(listed, window);
    std::erase(stacked, window);
    std::erase(dirtyWindows, window);
}

void PropertyMirror::mark(WindowId window, Entry &one, PropertySet properties)
{
    if (one.dirty.none())
        dirtyWindows.push_back(window);
    one.dirty |= properties;
}

void PropertyMirror::markAllDirty()
{
    for (auto &[window, one] : entries) {
        one.attributes = true;
        mark(window, one, every);
    }
}

void PropertyMirror::handle(const xcb_generic_event_t &event)
{
    switch (typeOf(event)) {
    case XCB_PROPERTY_NOTIFY:
        handleProperty(reinterpret_cast<const xcb_property_notify_event_t &>(event));
        break;
    case XCB_DESTROY_NOTIFY: {
        const WindowId window = reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window;
        rootDirty.manager = rootDirty.manager || window == manager;
        drop(window);
        break;
    }
    default:
        if (connection.extensions().selectionEvent && typeOf(event) == connection.extensions().selectionEvent)
            rootDirty.manager =
                rootDirty.manager
                || reinterpret_cast<const xcb_xfixes_selection_notify_event_t &>(event).selection == managerSelection;
        else if (watchesTree)
            handleTree(event);
    }
}

void PropertyMirror::handleProperty(const xcb_property_notify_event_t &event)
{
    const auto atom = connection.atoms().named(event.atom);
    if (!atom)
        return;
    if (atom == Atom::netSupportingWmCheck)
        rootDirty.manager = true;
    if (event.window == connection.root())
        return handleRootProperty(event.atom);
    Entry *one = entry(event.window);
    if (!one)
        return;
    if (atom == Atom::netWmIcon)
        found.icons.push_back(event.window);
    const auto property = propertyOf(atom);
    // Most programs write both titles. While the newer one exists, the older one is not worth a round trip.
    if (property && !(property == Property::legacyName && one->record.hasName))
        mark(event.window, *one, only(*property));
}

void PropertyMirror::handleRootProperty(xcb_atom_t property)
{
    switch (connection.atoms().named(property).value_or(Atom::count)) {
    case Atom::netClientList:
        rootDirty.list = true;
        break;
    case Atom::netClientListStacking:
        rootDirty.stacking = true;
        break;
    case Atom::netActiveWindow:
        rootDirty.active = true;
        break;
    case Atom::netCurrentDesktop:
        rootDirty.desktop = true;
        break;
    default:
        break;
    }
}

// Without a window manager, the root window's children are watched.
void PropertyMirror::handleTree(const xcb_generic_event_t &event)
{
    WindowId window = XCB_NONE;
    switch (typeOf(event)) {
    case XCB_MAP_NOTIFY:
        window = reinterpret_cast<const xcb_map_notify_event_t &>(event).window;
        break;
    case XCB_UNMAP_NOTIFY:
        window = reinterpret_cast<const xcb_unmap_notify_event_t &>(event).window;
        break;
    case XCB_REPARENT_NOTIFY:
        window = reinterpret_cast<const xcb_reparent_notify_event_t &>(event).window;
        break;
    case XCB_CREATE_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
        break;
    default:
        return;
    }
    rootDirty.tree = true;
    if (Entry *one = entry(window)) {
        one->attributes = true;
        mark(window, *one, only(Property::managerState));
    }
}

void PropertyMirror::settle()
{
    // One round may find windows that the next round has to read. More than a few rounds would be an error in this
    // class.
    for (int round = 0; round < 8 && (dirtyRoot() || !dirtyWindows.empty()); ++round) {
        if (std::exchange(rootDirty.manager, false))
            readManager();
        if (managed())
            readRoot();
        else
            readTree();
        readWindows();
        // A dead connection answers nothing. This does not mean that the windows are gone.
        if (xcb_connection_has_error(connection))
            return;
    }
    report();
}

void PropertyMirror::report()
{
    const auto changes = std::exchange(found, {});
    const bool any =
        changes.structure || changes.active || changes.manager || !changes.content.empty() || !changes.icons.empty();
    if (any && changed)
        changed(changes);
}

void PropertyMirror::readWindows()
{
    if (dirtyWindows.empty())
        return;
    std::vector<PropertyReader::Wanted> wanted;
    std::vector<WindowId> fresh;
    for (const WindowId window : std::exchange(dirtyWindows, {})) {
        Entry &one = entries.at(window);
        wanted.push_back({window, one.dirty, one.attributes});
        if (one.record.pid == 0)
            fresh.push_back(window);
        one.dirty.reset();
        one.attributes = false;
    }
    pids.prepare(fresh);
    std::vector<WindowId> gone;
    reader.read(wanted, {[this](WindowId window, const WindowAttributes &attributes) {
                             WindowRecord &record = entries.at(window).record;
                             record.overrideRedirect = attributes.overrideRedirect;
                             record.viewable = attributes.viewable;
                         },
                         [this](WindowId window, Property property, const PropertyValue &value) {
                             take(window, property, value);
                         },
                         [&](WindowId window) { gone.push_back(window); }});
    if (xcb_connection_has_error(connection))
        return;
    for (const WindowId window : gone)
        drop(window);
    for (const WindowId window : fresh)
        if (Entry *one = entry(window))
            one->record.pid = pids.of(one->record);
    if (!managed())
        listViewable();
    else if (listMissing || keeping)
        relist();
}

void PropertyMirror::take(WindowId window, Property property, const PropertyValue &value)
{
    Entry &one = entries.at(window);
    const bool hadName = one.record.hasName;
    const Change change = one.record.apply(property, value, connection.atoms());
    if (hadName && !one.record.hasName)
        mark(window, one, only(Property::legacyName));
    if (one.record.pid != 0 && (property == Property::pid || property == Property::machine))
        one.record.pid = pids.of(one.record);
    if (!one.listed)
        return;
    if (change == Change::structure)
        found.structure = true;
    else if (change == Change::content && (found.content.empty() || found.content.back() != window))
        found.content.push_back(window);
}

}  // namespace korvane::platform::x11
