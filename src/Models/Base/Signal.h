// Observers of a value or an event, with connections that end by themselves.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace korvane {

// Keeps an observer connected for as long as it lives. It may outlive the signal.
class Connection {
public:
    Connection() = default;
    explicit Connection(std::shared_ptr<void> slot) : token(std::move(slot)) {}

private:
    std::shared_ptr<void> token;
};

template <typename... Arguments> class Signal {
public:
    using Slot = std::function<void(Arguments...)>;

    // The slot is called at each emission until the connection is destroyed.
    [[nodiscard]] Connection connect(Slot slot)
    {
        auto shared = std::make_shared<Slot>(std::move(slot));
        slots.push_back(shared);
        return Connection(shared);
    }

    // Calls the observers in the order of their connecting. One that is disconnected meanwhile is not called any more;
    // one that is connected meanwhile waits for the next emission.
    void emit(Arguments... arguments)
    {
        bool expired = false;
        const auto count = slots.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (const auto slot = slots[i].lock())
                (*slot)(arguments...);
            else
                expired = true;
        }
        if (expired)
            std::erase_if(slots, [](const auto &slot) { return slot.expired(); });
    }

private:
    std::vector<std::weak_ptr<Slot>> slots;
};

}  // namespace korvane
