#include "Platform/X11/ChangeDelivery.h"

#include <utility>

namespace korvane::platform::x11 {
namespace {

// If there are several events, the one with the largest weight stands for all.
int weight(ApplicationEvent event)
{
    switch (event) {
    case ApplicationEvent::launched:
        return 4;
    case ApplicationEvent::terminated:
        return 3;
    case ApplicationEvent::hidden:
        return 2;
    case ApplicationEvent::unhidden:
        return 1;
    case ApplicationEvent::activated:
        break;
    }
    return 0;
}

}  // namespace

ChangeDelivery::ChangeDelivery(MainLoop &mainLoop, std::function<void(ApplicationEvent)> receiver)
    : loop(mainLoop), deliver(std::move(receiver))
{}

void ChangeDelivery::add(ApplicationEvent event)
{
    if (!waiting || weight(event) > weight(*waiting))
        waiting = event;
    if (scheduled)
        return;
    const auto now = loop.monotonicNow();
    const auto next = lastTime ? *lastTime + frameTime : now;
    if (next <= now)
        return flush();
    scheduled = true;
    timer = loop.after(next - now, [this] {
        scheduled = false;
        flush();
    });
}

void ChangeDelivery::flush()
{
    const auto event = std::exchange(waiting, std::nullopt);
    lastTime = loop.monotonicNow();
    if (event)
        deliver(*event);
}

}  // namespace korvane::platform::x11
