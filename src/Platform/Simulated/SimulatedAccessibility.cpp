#include "Platform/Simulated/SimulatedAccessibility.h"

#include "Platform/Simulated/Elements.h"

namespace korvane::platform::simulated {

using platform::AxStatus;
using platform::Element;
using platform::Value;

namespace {

// Every element that is passed in here was made here.
const ElementNode &nodeOf(const Element &element)
{
    return static_cast<const ElementNode &>(*element);
}

const WindowNode &windowOf(const ElementNode &node)
{
    return node.kind == ElementNode::Kind::closeButton ? *static_cast<const CloseButtonNode &>(node).window
                                                       : static_cast<const WindowNode &>(node);
}

template <typename T> AxStatus give(const std::optional<T> &value, Value &out)
{
    if (!value)
        return AxStatus::noValue;
    out = *value;
    return AxStatus::success;
}

std::int64_t number(std::uint64_t hash)
{
    return static_cast<std::int64_t>(hash);
}

}  // namespace

bool SimulatedAccessibility::trustedPrompting()
{
    log.add("promptForAccessibility");
    if (!granted && grantsWhenPrompted)
        setTrusted(true);
    return granted;
}

platform::Accessibility::ToolResult SimulatedAccessibility::resetGrant(std::string_view bundleIdentifier)
{
    log.add("resetGrant", {std::string(bundleIdentifier)});
    if (applications.isLive() && resetResult.launched && resetResult.status == 0)
        setTrusted(false);
    return resetResult;
}

void SimulatedAccessibility::setTrusted(bool value)
{
    if (granted == value)
        return;
    granted = value;
    applications.touchAll();
}

Element SimulatedAccessibility::application(platform::Pid pid)
{
    const auto *process = applications.process(pid);
    return process ? process->element : std::make_shared<const ApplicationNode>(pid);
}

AxStatus SimulatedAccessibility::copy(const Element &element, std::string_view attribute, Value &out)
{
    ++reads;
    if (!granted)
        return AxStatus::noPermission;
    const ElementNode &node = nodeOf(element);
    const auto *process = applications.process(node.pid);
    if (!process)
        return AxStatus::gone;
    if (process->readStatus != AxStatus::success)
        return process->readStatus;
    switch (node.kind) {
    case ElementNode::Kind::application:
        return copyOfApplication(node, attribute, out);
    case ElementNode::Kind::window:
        return copyOfWindow(element, attribute, out);
    case ElementNode::Kind::dockItem:
        return copyOfDock(static_cast<const DockNode &>(node), attribute, out);
    case ElementNode::Kind::closeButton:
        break;
    }
    return AxStatus::unsupported;
}

AxStatus SimulatedAccessibility::copyOfApplication(const ElementNode &node, std::string_view attribute,
                                                   Value &out) const
{
    const auto &process = *applications.process(node.pid);
    if (process.dock)
        return copyOfDock(*process.dock, attribute, out);
    if (attribute == "AXWindows") {
        if (!process.windows)
            return AxStatus::cannotComplete;
        out = std::vector<Element>(process.windows->begin(), process.windows->end());
        return AxStatus::success;
    }
    if (attribute == "AXFocusedWindow") {
        if (!process.focused)
            return AxStatus::noValue;
        const auto focused = process.byHash.find(*process.focused);
        if (focused == process.byHash.end())
            return AxStatus::noValue;
        out = Element(focused->second);
        return AxStatus::success;
    }
    return AxStatus::unsupported;
}

AxStatus SimulatedAccessibility::copyOfWindow(const Element &element, std::string_view attribute, Value &out) const
{
    const auto &node = static_cast<const WindowNode &>(*element);
    const Window &window = node.window;
    if (node.gone)
        return AxStatus::gone;
    if (window.readStatus != AxStatus::success)
        return window.readStatus;
    if (attribute == "AXTitle")
        return give(window.title, out);
    if (attribute == "AXIdentifier")
        return give(window.identifier, out);
    if (attribute == "AXMinimized")
        return give(window.minimized, out);
    if (attribute == "AXCloseButton") {
        if (window.closeButton == CloseButton::none)
            return AxStatus::noValue;
        out = Element(std::make_shared<const CloseButtonNode>(std::static_pointer_cast<const WindowNode>(element)));
        return AxStatus::success;
    }
    return AxStatus::unsupported;
}

AxStatus SimulatedAccessibility::copyOfDock(const DockNode &item, std::string_view attribute, Value &out) const
{
    if (attribute == "AXTitle")
        return give(item.title, out);
    if (attribute == "AXSubrole")
        return give(item.subrole, out);
    if (attribute == "AXStatusLabel")
        return give(item.statusLabel, out);
    if (attribute == "AXChildren")
        return give(item.children, out);
    return AxStatus::unsupported;
}

AxStatus SimulatedAccessibility::set(const Element &element, std::string_view attribute, bool value)
{
    const ElementNode &node = nodeOf(element);
    if (node.kind == ElementNode::Kind::application)
        log.add("setApplication", {std::int64_t(node.pid), std::string(attribute), value});
    else if (node.kind == ElementNode::Kind::window)
        log.add("set", {std::int64_t(node.pid), number(windowOf(node).hash), std::string(attribute), value});
    else
        return AxStatus::unsupported;
    if (!granted)
        return AxStatus::noPermission;
    if (!applications.process(node.pid))
        return AxStatus::gone;
    if (node.kind == ElementNode::Kind::application) {
        if (attribute != "AXFrontmost")
            return AxStatus::unsupported;
        if (applications.isLive() && value)
            applications.bringForward(node.pid, false);
        return AxStatus::success;
    }
    if (attribute != "AXMinimized")
        return AxStatus::unsupported;
    if (windowOf(node).gone)
        return AxStatus::gone;
    if (applications.isLive())
        applications.minimize(windowOf(node), value);
    return AxStatus::success;
}

AxStatus SimulatedAccessibility::perform(const Element &element, std::string_view action)
{
    const ElementNode &node = nodeOf(element);
    const bool press = node.kind == ElementNode::Kind::closeButton && action == "AXPress";
    if (press)
        log.add("press", {std::int64_t(node.pid), number(windowOf(node).hash)});
    else if (node.kind == ElementNode::Kind::window)
        log.add("perform", {std::int64_t(node.pid), number(windowOf(node).hash), std::string(action)});
    else
        return AxStatus::unsupported;
    if (!granted)
        return AxStatus::noPermission;
    const WindowNode &window = windowOf(node);
    if (!applications.process(node.pid) || window.gone)
        return AxStatus::gone;
    if (press) {
        if (window.window.closeButton != CloseButton::works)
            return AxStatus::failure;
        if (applications.isLive())
            applications.close(window);
        return AxStatus::success;
    }
    if (action != "AXRaise")
        return AxStatus::unsupported;
    if (applications.isLive())
        applications.raise(window);
    return AxStatus::success;
}

bool SimulatedAccessibility::equal(const Element &left, const Element &right)
{
    const ElementNode &one = nodeOf(left);
    const ElementNode &other = nodeOf(right);
    if (one.kind != other.kind || one.pid != other.pid)
        return false;
    if (one.kind == ElementNode::Kind::application)
        return true;
    return one.kind == ElementNode::Kind::dockItem ? &one == &other : windowOf(one).hash == windowOf(other).hash;
}

std::uint64_t SimulatedAccessibility::hash(const Element &element)
{
    const ElementNode &node = nodeOf(element);
    switch (node.kind) {
    case ElementNode::Kind::window:
    case ElementNode::Kind::closeButton:
        return windowOf(node).hash;
    case ElementNode::Kind::application:
        break;
    case ElementNode::Kind::dockItem:
        return reinterpret_cast<std::uintptr_t>(&node);
    }
    return static_cast<std::uint64_t>(node.pid);
}

std::optional<std::uint64_t> SimulatedAccessibility::revision(platform::Pid pid)
{
    const auto *process = applications.process(pid);
    return tellsRevisions && granted && process ? std::optional(process->revision) : std::nullopt;
}

}  // namespace korvane::platform::simulated
