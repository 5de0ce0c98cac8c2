// What a person does with the mouse anywhere on the desktop, also where other programs are under the pointer.
#pragma once

#include "Ports/Subscription.h"

#include <functional>

namespace korvane::platform {

class Events {
public:
    virtual ~Events() = default;
    // Calls when a mouse button goes down on any window, also while a menu or a drag has the pointer. The press still
    // reaches its target unchanged.
    [[nodiscard]] virtual Subscription observePresses(std::function<void()> callback) = 0;
    // Calls once, at the pointer's next motion. Waiting for it costs nothing while the pointer rests. Null where the
    // system does not report motion.
    [[nodiscard]] virtual Subscription nextMotion(std::function<void()> callback) = 0;
};

}  // namespace korvane::platform
