// The handles that the simulated desktop gives out.
#pragma once

#include "Platform/Simulated/DesktopRecords.h"

#include <memory>
#include <utility>

namespace korvane::platform::simulated {

class ElementNode : public platform::ElementBase {
public:
    enum class Kind { application, window, closeButton, dockItem };

    ElementNode(Kind ownKind, platform::Pid owner) : kind(ownKind), pid(owner) {}

    const Kind kind;
    const platform::Pid pid;
};

class ApplicationNode final : public ElementNode {
public:
    explicit ApplicationNode(platform::Pid owner) : ElementNode(Kind::application, owner) {}
};

// The handle is constant, but the window it stands for can change.
class WindowNode final : public ElementNode {
public:
    WindowNode(platform::Pid owner, Window content)
        : ElementNode(Kind::window, owner), window(std::move(content)), hash(window.hash)
    {}

    mutable Window window;
    mutable bool gone = false;
    mutable std::uint64_t raised = 0;  // the largest number is nearest to the front
    const std::uint64_t hash;
};

using WindowPtr = std::shared_ptr<const WindowNode>;

class CloseButtonNode final : public ElementNode {
public:
    explicit CloseButtonNode(WindowPtr owner) : ElementNode(Kind::closeButton, owner->pid), window(std::move(owner)) {}

    const WindowPtr window;
};

class DockNode final : public ElementNode {
public:
    DockNode(platform::Pid owner, const DockItem &content)
        : ElementNode(Kind::dockItem, owner), title(content.title), subrole(content.subrole),
          statusLabel(content.statusLabel)
    {
        if (!content.children)
            return;
        children.emplace();
        for (const DockItem &child : *content.children)
            children->push_back(std::make_shared<DockNode>(owner, child));
    }

    const std::optional<platform::Value> title, subrole, statusLabel;
    std::optional<std::vector<platform::Element>> children;
};

}  // namespace korvane::platform::simulated
