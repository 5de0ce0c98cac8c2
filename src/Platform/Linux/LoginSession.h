// Whether anybody can be in front of the desktop, as logind knows: its session has been left for another one, is
// locked, or the machine is about to sleep.
#pragma once

#include <functional>
#include <memory>

namespace korvane::platform {

class LoginSession {
public:
    // Listens from now on; without logind nobody is ever away. `changed` comes from the run loop, with what isAway()
    // answers then. No call waits for the bus.
    explicit LoginSession(std::function<void(bool away)> changed);
    ~LoginSession();
    LoginSession(const LoginSession &) = delete;
    LoginSession &operator=(const LoginSession &) = delete;

    bool isAway() const;

private:
    class Watcher;
    std::shared_ptr<Watcher> watcher;  // calls of the bus that are still under way hold it weakly
};

}  // namespace korvane::platform
