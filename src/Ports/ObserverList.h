// The observers of one event. A class that can be observed has one such list for each of its events.
#pragma once

#include "Ports/Subscription.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace korvane::platform {

template <typename... Arguments> class ObserverList {
public:
    using Observer = std::function<void(Arguments...)>;

    ObserverList() = default;
    ObserverList(const ObserverList &) = delete;
    ObserverList &operator=(const ObserverList &) = delete;

    // The observer is called until the subscription is destroyed. The subscription may outlive the list.
    [[nodiscard]] Subscription add(Observer observer)
    {
        entries->push_back(std::make_shared<Entry>(Entry{std::move(observer)}));
        return std::make_unique<Observation>(entries, entries->back());
    }

    // Calls the observers in the order in which they were added. An observer that ends during the calls is not called
    // any more. An observer that is added during the calls is called only the next time. If the list itself is
    // destroyed during the calls, no further observer is called.
    void notify(Arguments... arguments) const
    {
        const Entries present = *entries;
        const std::weak_ptr<Entries> list = entries;
        for (const auto &entry : present) {
            if (list.expired())
                return;
            if (entry->observes)
                entry->observer(arguments...);
        }
    }

    std::size_t count() const { return entries->size(); }

private:
    struct Entry {
        Observer observer;
        bool observes = true;
    };
    using Entries = std::vector<std::shared_ptr<Entry>>;

    class Observation final : public SubscriptionBase {
    public:
        Observation(const std::shared_ptr<Entries> &entries, std::shared_ptr<Entry> own)
            : list(entries), entry(std::move(own))
        {}
        ~Observation() override
        {
            entry->observes = false;
            if (const auto living = list.lock())
                std::erase(*living, entry);
        }

    private:
        std::weak_ptr<Entries> list;
        std::shared_ptr<Entry> entry;
    };

    std::shared_ptr<Entries> entries = std::make_shared<Entries>();
};

}  // namespace korvane::platform
