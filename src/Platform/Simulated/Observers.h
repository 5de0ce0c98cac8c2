// Callbacks that are told of something until their subscription ends.
#pragma once

#include "Ports/Subscription.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace korvane::platform::simulated {

template <typename... Arguments> class Observers {
    struct Slot {
        std::function<void(Arguments...)> callback;
        bool connected = true;
    };
    using Slots = std::vector<std::shared_ptr<Slot>>;

    // May outlive the observers.
    class Registration final : public platform::SubscriptionBase {
    public:
        Registration(const std::shared_ptr<Slots> &list, std::shared_ptr<Slot> own) : slots(list), slot(std::move(own))
        {}
        ~Registration() override
        {
            slot->connected = false;
            if (const auto list = slots.lock())
                std::erase(*list, slot);
        }

    private:
        std::weak_ptr<Slots> slots;
        std::shared_ptr<Slot> slot;
    };

public:
    [[nodiscard]] platform::Subscription add(std::function<void(Arguments...)> callback)
    {
        auto slot = std::make_shared<Slot>(Slot{std::move(callback)});
        slots->push_back(slot);
        return std::make_unique<Registration>(slots, std::move(slot));
    }

    std::size_t count() const { return slots->size(); }

    // Calls the present observers in the order of their coming; one that ends meanwhile is left out.
    void emit(Arguments... arguments) const
    {
        const Slots present = *slots;
        for (const auto &slot : present)
            if (slot->connected)
                slot->callback(arguments...);
    }

private:
    std::shared_ptr<Slots> slots = std::make_shared<Slots>();
};

}  // namespace korvane::platform::simulated
