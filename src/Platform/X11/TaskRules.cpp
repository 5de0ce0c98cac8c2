#include "Platform/X11/TaskRules.h"

namespace korvane::platform::x11 {
namespace {

// Dialogs of dialogs are rare. If windows name each other by mistake, the search ends after this many steps.
constexpr int longestOwnerChain = 8;

const WindowRecord *ownerOf(const WindowRecord &window, const FindWindow &find)
{
    return window.transientFor != 0 && window.transientFor != window.id ? find(window.transientFor) : nullptr;
}

bool isTask(const WindowRecord &window, const FindWindow &find, int chain)
{
    if (window.kind != WindowKind::ordinary || window.skipsTaskbar)
        return false;
    if (!window.modal || chain == 0)
        return true;
    const WindowRecord *owner = ownerOf(window, find);
    return !owner || !isTask(*owner, find, chain - 1);
}

}  // namespace

bool isTask(const WindowRecord &window, const FindWindow &find)
{
    return isTask(window, find, longestOwnerChain);
}

const WindowRecord *taskFor(WindowId id, const FindWindow &find)
{
    const WindowRecord *window = find(id);
    for (int chain = longestOwnerChain; window && chain >= 0; --chain) {
        if (isTask(*window, find))
            return window;
        window = ownerOf(*window, find);
    }
    return nullptr;
}

}  // namespace korvane::platform::x11
