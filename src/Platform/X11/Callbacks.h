// The observers of one thing. An observer may leave, or join others, while it is told.
#pragma once

#include "Ports/Subscription.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace korvane::platform::x11 {

template <typename... Arguments> class Callbacks {
public:
    using Callback = std::function<void(Arguments...)>;

    [[nodiscard]] Subscription add(Callback callback)
    {
        slots->push_back(std::make_shared<Callback>(std::move(callback)));
        return std::make_unique<Observation>(slots, slots->back());
    }

    void call(Arguments... arguments)
    {
        // Those who join now are told of the next change; those who have left are empty by their turn.
        const auto list = slots;
        const auto present = *list;
        for (const auto &slot : present)
            if (*slot)
                (Callback(*slot))(arguments...);
    }

private:
    using Slots = std::vector<std::shared_ptr<Callback>>;

    class Observation final : public SubscriptionBase {
    public:
        Observation(const std::shared_ptr<Slots> &observers, std::shared_ptr<Callback> mine)
            : list(observers), slot(std::move(mine))
        {}
        ~Observation() override
        {
            *slot = nullptr;
            if (const auto living = list.lock())
                std::erase(*living, slot);
        }

    private:
        std::weak_ptr<Slots> list;
        std::shared_ptr<Callback> slot;
    };

    std::shared_ptr<Slots> slots = std::make_shared<Slots>();
};

}  // namespace korvane::platform::x11
