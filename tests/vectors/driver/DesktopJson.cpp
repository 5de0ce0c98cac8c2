#include "tests/vectors/driver/DesktopJson.h"

#include "tests/vectors/driver/RecordJson.h"

#include <algorithm>
#include <stdexcept>

namespace korvane::vectors {

using platform::simulated::CloseButton;
using platform::simulated::DefaultsValue;
using platform::simulated::DockItem;
using platform::simulated::Process;
using platform::simulated::SimulatedDesktop;

namespace {

// An attribute's value, of whatever type.
std::optional<platform::Value> valueOf(const Json &object, const char *key)
{
    const Json json = object.value(key, Json());
    if (json.is_null())
        return std::nullopt;
    if (json.is_string())
        return json.get<std::string>();
    if (json.is_boolean())
        return json.get<bool>();
    if (json.is_number_integer())
        return json.get<std::int64_t>();
    return json.get<double>();
}

platform::simulated::Window windowFrom(const Json &json)
{
    platform::simulated::Window window;
    window.hash = json.at("hash");
    window.title = optionalMember<std::string>(json, "AXTitle");
    window.identifier = valueOf(json, "AXIdentifier");
    window.minimized = optionalMember<bool>(json, "AXMinimized");
    const auto button = optionalMember<std::string>(json, "closeButton");
    if (button && button != "ok" && button != "fails")
        throw std::runtime_error("unknown close button " + *button);
    window.closeButton = !button ? CloseButton::none : button == "ok" ? CloseButton::works : CloseButton::fails;
    return window;
}

platform::ActivationPolicy policyFrom(const std::string &name)
{
    if (name == "regular")
        return platform::ActivationPolicy::regular;
    if (name == "accessory")
        return platform::ActivationPolicy::accessory;
    if (name == "prohibited")
        return platform::ActivationPolicy::prohibited;
    throw std::runtime_error("unknown activation policy " + name);
}

Process processFrom(const Json &json)
{
    Process process;
    process.application.pid = json.at("processIdentifier");
    process.application.localizedName = optionalMember<std::string>(json, "localizedName");
    process.application.bundleIdentifier = optionalMember<std::string>(json, "bundleIdentifier");
    process.application.policy = policyFrom(json.at("activationPolicy"));
    process.application.terminated = json.at("isTerminated");
    process.application.active = json.at("isActive");
    process.application.hidden = json.at("isHidden");
    process.application.bundlePath = optionalMember<std::string>(json, "bundleURL");
    process.windows.reset();
    if (!json.at("AXWindows").is_null()) {
        process.windows.emplace();
        for (const Json &window : json.at("AXWindows"))
            process.windows->push_back(windowFrom(window));
    }
    process.focusedWindow = optionalMember<std::uint64_t>(json, "AXFocusedWindow");
    return process;
}

DockItem dockItemFrom(const Json &json)
{
    DockItem item;
    item.title = valueOf(json, "AXTitle");
    item.subrole = valueOf(json, "AXSubrole");
    item.statusLabel = valueOf(json, "AXStatusLabel");
    if (json.contains("AXChildren") && !json.at("AXChildren").is_null()) {
        item.children.emplace();
        for (const Json &child : json.at("AXChildren"))
            item.children->push_back(dockItemFrom(child));
    }
    return item;
}

// The window server's dictionaries are taken as a system hands them over: a value of another type is an absent one.
std::optional<std::int64_t> wholeNumber(const Json &window, const char *key)
{
    const Json value = window.value(key, Json());
    return value.is_number_integer() ? std::optional(value.get<std::int64_t>()) : std::nullopt;
}

std::optional<std::vector<platform::OnScreenWindow>> windowListFrom(const Json &json)
{
    if (json.is_null())
        return std::nullopt;
    std::vector<platform::OnScreenWindow> windows;
    for (const Json &window : json) {
        const Json name = window.value("kCGWindowName", Json());
        windows.push_back({wholeNumber(window, "kCGWindowLayer"), wholeNumber(window, "kCGWindowOwnerPID"),
                           wholeNumber(window, "kCGWindowNumber"),
                           name.is_string() ? std::optional(name.get<std::string>()) : std::nullopt});
    }
    return windows;
}

bool allText(const Json &container)
{
    return std::all_of(container.begin(), container.end(), [](const Json &each) { return each.is_string(); });
}

std::vector<std::uint8_t> bytesOf(const std::string &text)
{
    return {text.begin(), text.end()};
}

}  // namespace

void changeDesktop(const Json &parts, SimulatedDesktop &desktop)
{
    for (const auto &[part, value] : parts.items()) {
        if (part == "ownPID") {
            desktop.applications.setSelf(value);
        } else if (part == "trusted") {
            desktop.accessibility.setTrusted(value);
        } else if (part == "applications" || part == "setApplications") {
            for (const Json &application : value)
                desktop.applications.put(processFrom(application));
        } else if (part == "removeApplications") {
            for (const Json &pid : value)
                desktop.applications.remove(pid);
        } else if (part == "windowList") {
            desktop.windowList.set(windowListFrom(value));
        } else if (part == "dock") {
            desktop.applications.setDock(value.is_null() ? std::nullopt : std::optional(dockItemFrom(value)));
        } else if (part == "modalResponse") {
            desktop.dialogs.setResponse(value);
        } else if (part == "installed") {
            desktop.launching.uninstallAll();
            for (const auto &[identifier, path] : value.items())
                desktop.launching.install(identifier, path);
        } else if (part != "files" && part != "resolvedPaths") {
            throw std::runtime_error("unknown part of the desktop: " + part);
        }
    }
}

DefaultsValue defaultsValueFrom(const Json &tagged)
{
    if (tagged.size() != 1)
        throw std::runtime_error("a stored value has exactly one tag: " + tagged.dump());
    const auto [tag, value] = *tagged.items().begin();
    if (tag == "bool")
        return value.get<bool>();
    if (tag == "integer")
        return value.get<std::int64_t>();
    if (tag == "double")
        return value.get<double>();
    if (tag == "string")
        return value.get<std::string>();
    if (tag == "dataJSON")
        return bytesOf(value.dump());
    if (tag == "dataText")
        return bytesOf(value.get<std::string>());
    if (tag != "array" && tag != "dictionary")
        throw std::runtime_error("unknown tag of a stored value: " + tag);
    if (!allText(value))
        return platform::simulated::UnreadableValue{tagged.dump()};
    return tag == "array" ? DefaultsValue(value.get<std::vector<std::string>>())
                          : DefaultsValue(value.get<platform::StringMap>());
}

Json jsonOf(const DefaultsValue &value)
{
    struct Tagger {
        Json operator()(bool each) const { return {{"bool", each}}; }
        Json operator()(std::int64_t each) const { return {{"integer", each}}; }
        Json operator()(double each) const { return {{"double", each}}; }
        Json operator()(const std::string &each) const { return {{"string", each}}; }
        Json operator()(const std::vector<std::string> &each) const { return {{"array", each}}; }
        Json operator()(const platform::StringMap &each) const { return {{"dictionary", each}}; }
        Json operator()(const std::vector<std::uint8_t> &each) const
        {
            Json parsed = Json::parse(each, nullptr, false);
            if (parsed.is_discarded())
                return {{"dataText", std::string(each.begin(), each.end())}};
            return {{"dataJSON", std::move(parsed)}};
        }
        Json operator()(const platform::simulated::UnreadableValue &each) const { return Json::parse(each.note); }
    };
    return std::visit(Tagger(), value);
}

Json normalized(const Json &tagged)
{
    return jsonOf(defaultsValueFrom(tagged));
}

Json jsonOf(const platform::simulated::Action &action)
{
    const auto written = []<typename T>(const T &value) {
        if constexpr (std::is_same_v<T, std::monostate>)
            return Json();
        else
            return Json(value);
    };
    Json list = Json::array({action.name});
    for (const platform::simulated::ActionArgument &argument : action.arguments)
        list.push_back(std::visit(written, argument));
    return list;
}

bool notify(const std::string &name, SimulatedDesktop &desktop)
{
    using platform::ApplicationEvent;
    using platform::SessionEvent;
    static const std::map<std::string, std::variant<ApplicationEvent, SessionEvent>> events{
        {"NSWorkspaceDidLaunchApplicationNotification", ApplicationEvent::launched},
        {"NSWorkspaceDidTerminateApplicationNotification", ApplicationEvent::terminated},
        {"NSWorkspaceDidActivateApplicationNotification", ApplicationEvent::activated},
        {"NSWorkspaceDidHideApplicationNotification", ApplicationEvent::hidden},
        {"NSWorkspaceDidUnhideApplicationNotification", ApplicationEvent::unhidden},
        {"NSWorkspaceScreensDidSleepNotification", SessionEvent::screensSlept},
        {"NSWorkspaceScreensDidWakeNotification", SessionEvent::screensWoke},
        {"NSWorkspaceSessionDidResignActiveNotification", SessionEvent::sessionResigned},
        {"NSWorkspaceSessionDidBecomeActiveNotification", SessionEvent::sessionActive},
        {"com.apple.screensaver.didstart", SessionEvent::screensaverStarted},
        {"com.apple.screensaver.didstop", SessionEvent::screensaverStopped},
    };
    const auto found = events.find(name);
    if (found == events.end())
        return false;
    std::visit([&](auto event) { desktop.applications.notify(event); }, found->second);
    desktop.loop.runPosted();
    return true;
}

}  // namespace korvane::vectors
