// The rules of every port in this folder:
//  * Main thread only. A callback arrives from the run loop, never from inside the call that registered it.
//  * Text is UTF-8. Failure is absence: nullopt, nullptr, false or an empty list. No operation throws an exception.
//  * A Subscription ends its observation when it is destroyed; no callback comes after that.
#pragma once

#include <memory>

namespace korvane::platform {

class SubscriptionBase {
public:
    SubscriptionBase() = default;
    SubscriptionBase(const SubscriptionBase &) = delete;
    SubscriptionBase &operator=(const SubscriptionBase &) = delete;
    virtual ~SubscriptionBase() = default;
};

using Subscription = std::unique_ptr<SubscriptionBase>;

}  // namespace korvane::platform
