// Elements, attributes and actions of the simulated desktop's windows and of its dock.
#pragma once

#include "Platform/Simulated/SimulatedApplications.h"
#include "Ports/Accessibility.h"

namespace korvane::platform::simulated {

class SimulatedAccessibility final : public platform::Accessibility {
public:
    using Element = platform::Element;
    using AxStatus = platform::AxStatus;

    SimulatedAccessibility(SimulatedApplications &owner, ActionLog &actions)
        : applications(owner), log(actions), tellsRevisions(owner.isLive())
    {}

    bool trusted() override { return granted; }
    bool trustedPrompting() override;
    ToolResult resetGrant(std::string_view bundleIdentifier) override;
    Element application(platform::Pid pid) override;
    AxStatus copy(const Element &element, std::string_view attribute, platform::Value &out) override;
    AxStatus set(const Element &element, std::string_view attribute, bool value) override;
    AxStatus perform(const Element &element, std::string_view action) override;
    bool equal(const Element &left, const Element &right) override;
    std::uint64_t hash(const Element &element) override;
    std::optional<std::uint64_t> revision(platform::Pid pid) override;

    // Without the permission every read and every action returns noPermission.
    void setTrusted(bool value);
    // The user's answer to the system's question. If true, the next question gives the permission.
    void setGrantsWhenPrompted(bool grants) { grantsWhenPrompted = grants; }
    void setResetResult(ToolResult result) { resetResult = std::move(result); }
    // Whether revision() gives a number. At first it does only on a live desktop.
    void setRevisionsSupported(bool supported) { tellsRevisions = supported; }
    // How many attributes were read so far.
    std::uint64_t readCount() const { return reads; }

private:
    AxStatus copyOfApplication(const ElementNode &node, std::string_view attribute, platform::Value &out) const;
    AxStatus copyOfWindow(const Element &element, std::string_view attribute, platform::Value &out) const;
    AxStatus copyOfDock(const DockNode &item, std::string_view attribute, platform::Value &out) const;

    SimulatedApplications &applications;
    ActionLog &log;
    bool granted = true, grantsWhenPrompted = false;
    bool tellsRevisions;
    ToolResult resetResult{true, 0, {}};
    std::uint64_t reads = 0;
};

}  // namespace korvane::platform::simulated
