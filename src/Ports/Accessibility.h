// Windows and the dock at the level of elements, attributes and actions. The algorithms stay in the core.
//
// What a backend has to answer, for each kind of element:
//  * application: AXWindows (list), AXFocusedWindow (element), AXFrontmost (set only); AXChildren of the dock (list)
//  * window: AXTitle, AXIdentifier (text), AXMinimized (boolean, also set), AXCloseButton (element); action AXRaise
//  * close button: action AXPress
//  * dock item: AXTitle, AXSubrole, AXStatusLabel (text), AXChildren (list)
#pragma once

#include "Ports/Applications.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace korvane::platform {

// The backend's handle of an element. It is not kept after one operation: a window is found again by its identifier.
class ElementBase {
public:
    virtual ~ElementBase() = default;
};
using Element = std::shared_ptr<const ElementBase>;

// An element in a value is never null.
using Value = std::variant<bool, std::int64_t, double, std::string, Element, std::vector<Element>>;

enum class AxStatus { success, noPermission, gone, cannotComplete, unsupported, noValue, failure };

class Accessibility {
public:
    virtual ~Accessibility() = default;

    // Whether single windows may be read and moved.
    virtual bool trusted() = 0;
    // The same. If there is no grant, the system also asks the user.
    virtual bool trustedPrompting() = 0;

    struct ToolResult {
        bool launched = false;
        int status = -1;
        std::string error;  // why it could not be launched
    };
    // Takes the grant back from the program of that identifier and waits for the outcome.
    virtual ToolResult resetGrant(std::string_view bundleIdentifier) = 0;

    // Never null. For a dead process, reading the element's attributes fails.
    virtual Element application(Pid pid) = 0;
    // Writes `out` on success only.
    virtual AxStatus copy(const Element &element, std::string_view attribute, Value &out) = 0;
    virtual AxStatus set(const Element &element, std::string_view attribute, bool value) = 0;
    virtual AxStatus perform(const Element &element, std::string_view action) = 0;
    // Whether two elements denote the same window.
    virtual bool equal(const Element &left, const Element &right) = 0;
    // Stays the same for a window from one read to the next.
    virtual std::uint64_t hash(const Element &element) = 0;

    // A stamp that changes whenever an answer about this application's windows may have changed. While the stamp stays
    // equal, the windows need not be read again. Absent when the backend can't tell.
    virtual std::optional<std::uint64_t> revision(Pid pid) = 0;
};

}  // namespace korvane::platform
